#include "text/lower_case.h"

#include <algorithm>
#include <iterator>

#include <gtest/gtest.h>
#include <lower_case_pairs.h>

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

TEST(LowerCase, EveryCodePoint_IsLoweredIfItIsALetterOfItsScripts_Long) {
    ASSERT_GT(std::size(kPairs), 800U);
    for (char32_t code = 0; code <= 0x10ffff; ++code) {
        const LetterPair* const pair =
            std::ranges::lower_bound(kPairs, code, {}, &LetterPair::capital);
        const bool isCapital = pair != std::end(kPairs) && pair->capital == code;
        ASSERT_EQ(LowerCase(code), isCapital ? pair->small : code)
            << "U+" << std::hex << static_cast<unsigned>(code);
    }
}

}  // namespace
}  // namespace spellwick
