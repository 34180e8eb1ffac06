#include "store/twips.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

TEST(Twips, AreFifteenthsOfAPixel) {
    EXPECT_EQ(TwipsOf(41), 615.0F);
    EXPECT_EQ(TwipsOf(-10), -150.0F);
    EXPECT_EQ(PixelsOf(615.0F), 41);
    EXPECT_EQ(PixelsOf(-150.0F), -10);
}

TEST(Twips, BetweenPixels_HalvesGoToTheEvenOne) {
    EXPECT_EQ(PixelsOf(22.0F), 1);
    EXPECT_EQ(PixelsOf(22.5F), 2);
    EXPECT_EQ(PixelsOf(23.0F), 2);
    EXPECT_EQ(PixelsOf(37.5F), 2);
}

TEST(Twips, Beyond32Bits_AreAnOverflow) {
    EXPECT_EQ(FailureOf([] { PixelsOf(1e30F); }), FailureKind::kOverflow);
}

}  // namespace
}  // namespace spellwick
