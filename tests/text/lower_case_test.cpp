#include "text/lower_case.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

TEST(LowerCase, LettersOfKeyboards_AreLoweredAndOthersStay) {
    EXPECT_EQ(LowerCase("ABCXYZ[]{}@1"), "abcxyz[]{}@1");
    EXPECT_EQ(LowerCase("ÀÖ×ØÞß÷ÿ"), "àö×øþß÷ÿ");
    EXPECT_EQ(LowerCase("ĀāĹĺŁłŊŸŽžŠ"), "āāĺĺłłŋÿžžš");
    EXPECT_EQ(LowerCase("ΆΈΌΏΑΩΫ"), "άέόώαωϋ");
    EXPECT_EQ(LowerCase("ЀЏАЯЪҐӁ"), "ѐџаяъґӂ");
    EXPECT_EQ(LowerCase("ԱՖ"), "աֆ");
    EXPECT_EQ(LowerCase("日本😀"), "日本😀");
}

}  // namespace
}  // namespace spellwick
