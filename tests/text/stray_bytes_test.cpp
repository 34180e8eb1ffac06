// Malformed UTF-8 is the same to every function: each stray byte is one character.
#include <string>

#include <gtest/gtest.h>

#include "text/characters.h"
#include "text/lower_case.h"
#include "text/utf8.h"
#include "text/windows_1252.h"

namespace spellwick {
namespace {

constexpr char32_t kStray = kReplacementCharacter;

struct StrayRow {
    const char* name;
    std::string text;
    std::u32string characters;
};

void PrintTo(const StrayRow& row, std::ostream* out) {
    *out << row.name;
}

class StrayBytes : public testing::TestWithParam<StrayRow> {};

TEST_P(StrayBytes, AreReadAlike) {
    const auto& [name, text, characters] = GetParam();
    std::u32string read;
    std::string valid;
    std::string lower;
    std::string bytes;
    std::string_view rest = text;
    const std::size_t count = characters.size();
    EXPECT_EQ(CountCharacters(text), count);
    while (!rest.empty()) {
        const std::size_t before = read.size();
        EXPECT_EQ(SkipCharacters(text, before), rest);
        EXPECT_EQ(std::string(FirstCharacters(text, before)).append(rest), text);
        EXPECT_EQ(LastCharacters(text, count - before), rest);
        const char32_t character = TakeCodePoint(rest);
        read.push_back(character);
        std::string alone;
        AppendUtf8(alone, character);
        valid += alone;
        AppendUtf8(lower, LowerCase(character));
        bytes += character == kStray ? "?" : Windows1252FromUtf8(alone);
    }
    EXPECT_EQ(read, characters);
    EXPECT_EQ(ValidUtf8(text), valid);
    EXPECT_EQ(ValidUtf8(valid), valid);
    EXPECT_EQ(CountCharacters(valid), count);
    EXPECT_EQ(LowerCase(text), lower);
    EXPECT_EQ(Windows1252FromUtf8(text), bytes);
}

constexpr std::u32string_view kSix = U"\ufffd\ufffd\ufffd\ufffd\ufffd\ufffd";

std::u32string Strays(std::size_t count, std::u32string_view behind = {}) {
    return std::u32string(kSix.substr(0, count)).append(behind);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StrayBytes,
    testing::Values(StrayRow{"Empty", "", U""}, StrayRow{"LettersAlone", "ABC", U"ABC"},
                    StrayRow{"ZeroByte", std::string("A\0B", 3), std::u32string(U"A\0B", 3)},
                    StrayRow{"Continuation", "\x80", Strays(1)},
                    StrayRow{"Continuations", "\x80\xBF\x80\xBF Z", Strays(4, U" Z")},
                    StrayRow{"LeadOfTwoAlone", "\xC3", Strays(1)},
                    StrayRow{"LeadOfTwoBeforeALetter", "\xC3Z", Strays(1, U"Z")},
                    StrayRow{"LeadOfThreeAlone", "\xE2", Strays(1)},
                    StrayRow{"LeadOfThreeCutAfterTwo", "\xE2\x82", Strays(2)},
                    StrayRow{"LeadOfThreeCutByALetter", "\xE2\x82Z", Strays(2, U"Z")},
                    StrayRow{"LeadOfFourCutAfterThree", "\xF0\x9F\x94", Strays(3)},
                    StrayRow{"LeadOfFourCutByALetter", "\xF0\x9F\x94Z", Strays(3, U"Z")},
                    StrayRow{"CutByALead", "\xE2\x82\xE2\x82\xAC", Strays(2, U"\u20ac")},
                    StrayRow{"OverlongTwo", "\xC0\x80Z", Strays(2, U"Z")},
                    StrayRow{"OverlongLetter", "\xC1\x81", Strays(2)},
                    StrayRow{"OverlongThree", "\xE0\x80\x80 abc", Strays(3, U" abc")},
                    StrayRow{"OverlongThreeAtItsLimit", "\xE0\x9F\xBF", Strays(3)},
                    StrayRow{"ShortestThree", "\xE0\xA0\x80", U"\u0800"},
                    StrayRow{"OverlongFour", "\xF0\x8F\xBF\xBF", Strays(4)},
                    StrayRow{"ShortestFour", "\xF0\x90\x80\x80", U"\U00010000"},
                    StrayRow{"BeforeTheSurrogates", "\xED\x9F\xBF", U"\ud7ff"},
                    StrayRow{"Surrogate", "\xED\xA0\x80", Strays(3)},
                    StrayRow{"SurrogatePair", "\xED\xA0\xBD\xED\xB4\xA5", Strays(6)},
                    StrayRow{"BehindTheSurrogates", "\xEE\x80\x80", U"\ue000"},
                    StrayRow{"NoCharacterButWellFormed", "\xEF\xBF\xBF", U"\uffff"},
                    StrayRow{"LastCodePoint", "\xF4\x8F\xBF\xBF", U"\U0010ffff"},
                    StrayRow{"BeyondTheLastCodePoint", "\xF4\x90\x80\x80", Strays(4)},
                    StrayRow{"LeadsThatAreNeverUsed", "\xF5\xF8\xFC\xFE\xFF", Strays(5)},
                    StrayRow{"FiveBytes", "\xF8\x88\x80\x80\x80", Strays(5)},
                    StrayRow{"BetweenLetters", "A\xFFZ\xC3", U"A\ufffdZ\ufffd"},
                    StrayRow{"TheReplacementItself", "\xEF\xBF\xBD", Strays(1)}),
    [](const testing::TestParamInfo<StrayRow>& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace spellwick
