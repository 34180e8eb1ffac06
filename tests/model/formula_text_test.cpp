// Markers in texts, well-formed and broken.
#include "model/formula_text.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"
#include "tests/support/pace.h"

namespace spellwick {
namespace {

// Figure 7 is 12, figure 29 contains blanks, and 33 is "4 rounds".
FormulaTexts Figures() {
    return BuildFormulaTexts({.magery = 50, .spiritSpeak = 20}, 1);
}

std::string Expanded(std::string_view text) {
    return ExpandFormulas(text, Figures());
}

struct TextRow {
    const char* name;
    const char* text;
    const char* expanded;
};

TEST(FormulaText, Markers_AreReplacedAndTheirSeparatorIsSwallowed) {
    constexpr TextRow kRows[] = {
        {"no marker", "instant", "instant"},
        {"no marker keeps its blanks", "  instant ", "  instant "},
        {"empty", "", ""},
        {"marker alone, nothing behind", "#Formula07", "12"},
        {"marker alone with separator", "#Formula07;", "12"},
        {"at the beginning", "#Formula07; points", "12 points"},
        {"at the end", "points: #Formula07", "points: 12"},
        {"at both ends", "#Formula07; to #Formula10;", "12 to 29"},
        {"two in a row", "#Formula07;#Formula07;", "1212"},
        {"blanks at the ends go", "  #Formula07;  ", "12"},
        {"inner blanks of a figure stay", "#Formula29; a round", "Base damage= 0 to  3 a round"},
        {"a separator of several bytes goes whole", "#Formula07\xC3\xA9!", "12!"},
        {"an empty figure", "a#Formula34;b", "ab"},
        {"the last empty figure", "a#Formula40;b", "ab"},
        {"an empty figure joins a marker", "#For#Formula34;mula07;!", "12!"},
        {"two joints", "#F#Formula34;or#Formula34;mula07; x", "12 x"},
        {"a joint that is none", "#For#Formula34;m07;", "#Form07;"},
        {"the empty text remains", "#Formula34;", ""},
        {"number of one digit", "#Formula7 ;x", "12x"},
        {"number with a blank before it", "#Formula 7;x", "12x"},
        {"number with a sign", "#Formula+7;x", "12x"},
        {"a fraction is rounded", "#Formula.9;x", "6x"},
        {"cut after one digit", "#Formula7", "12"},
        {"other case is no marker", "#formula07;", "#formula07;"},
    };
    for (const TextRow& row : kRows) {
        EXPECT_EQ(Expanded(row.text), row.expanded) << row.name;
    }
}

// covers ODDITY(marker-swallows)
TEST(FormulaText, Marker_Oddity_SwallowsTheBlankBehindIt) {
    EXPECT_EQ(Expanded("x#Formula07 y"), "x12y");
}

TEST(FormulaText, BadNumber_FailsAsSubscript) {
    for (const char* text :
         {"#Formula00;", "#Formula41;", "#Formula99;", "#Formula", "a #Formula", "#Formula;x",
          "#Formulaab;", "#Formula-1;", "#Formula.5;", "#Formula\xC3\xA9\x37;"}) {
        EXPECT_EQ(FailureOf([&] { Expanded(text); }), FailureKind::kSubscript) << text;
    }
}

TEST(FormulaText, BadNumberBehindAGoodOne_FailsToo) {
    EXPECT_EQ(FailureOf([] { Expanded("#Formula07; and #Formula00;"); }), FailureKind::kSubscript);
}

TEST(FormulaText, Megabyte_WithTenThousandMarkers_TakesLessThanASecond) {
    constexpr int kMarkers = 10'000;
    const std::string filling(94, 'x');
    std::string text;
    std::string expected;
    for (int i = 0; i < kMarkers; ++i) {
        text += (i % 2 == 0 ? "#Formula07;" : "#Formula34;") + filling;
        expected += (i % 2 == 0 ? "12" : "") + filling;
    }
    ASSERT_GT(text.size(), std::size_t{1'000'000});
    const FormulaTexts figures = Figures();
    const testing_support::ProcessorTime time;
    const std::string expanded = ExpandFormulas(text, figures);
    const double taken = time.Seconds();
    EXPECT_TRUE(expanded == expected);
    EXPECT_LT(taken, 1.0);
}

TEST(FormulaText, MegabyteOfJoints_TakesLessThanASecond) {
    std::string text;
    for (int i = 0; i < 50'000; ++i) {
        text += "#Formul#Formula34;";
    }
    const FormulaTexts figures = Figures();
    const testing_support::ProcessorTime time;
    const std::string expanded = ExpandFormulas(text, figures);
    EXPECT_LT(time.Seconds(), 1.0);
    EXPECT_EQ(expanded.size(), std::size_t{50'000} * 7);
}

TEST(FormulaText, TrimBlanks_TakesBlanksAlone) {
    EXPECT_EQ(TrimBlanks("  a b "), "a b");
    EXPECT_EQ(TrimBlanks("   "), "");
    EXPECT_EQ(TrimBlanks(""), "");
    EXPECT_EQ(TrimBlanks("\t a\n"), "\t a\n");
}

}  // namespace
}  // namespace spellwick
