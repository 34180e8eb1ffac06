// Numbers and texts under a locale with a decimal comma.
#include <cstdio>
#include <sstream>

#include <gtest/gtest.h>

#include "model/formula_text.h"
#include "model/spell_description.h"
#include "tests/support/comma_locale.h"
#include "tests/support/failures.h"
#include "text/number_forms.h"

namespace spellwick {
namespace {

class NumberLocaleTest : public testing::Test {
  protected:
    NumberLocaleTest() {
        char printed[16] = {};
        static_cast<void>(std::snprintf(printed, sizeof printed, "%.1f", 1.5));
        EXPECT_STREQ(printed, "1,5");
        std::ostringstream streamed;
        streamed << 1234.5;
        EXPECT_EQ(streamed.str(), "1.234,5");
    }

    CommaLocale m_locale;
};

TEST_F(NumberLocaleTest, NumbersToText_KeepTheirPoint) {
    EXPECT_EQ(PlainText(2.475), "2.475");
    EXPECT_EQ(PlainText(-1234567.5), "-1234567.5");
    EXPECT_EQ(PlainText(200.0 / 3.0), "66.6666666666667");
    EXPECT_EQ(StandardText(1234.5), " 1234.5");
    EXPECT_EQ(StandardText(i32{1'234'567}), " 1234567");
}

TEST_F(NumberLocaleTest, TextsToNumber_TakeThePointAlone) {
    EXPECT_EQ(NumericPrefix("2.5"), 2.5);
    EXPECT_EQ(NumericPrefix("2,5"), 2.0);
    EXPECT_EQ(NumericPrefix("1.234,5"), 1.234);
    EXPECT_EQ(FirstFour("1.23"), 1.23);
    EXPECT_EQ(FailureOf([] { RequiredNumber("2,5"); }), FailureKind::kTypeMismatch);
}

TEST_F(NumberLocaleTest, Figures_AreTheSameInEveryLocale) {
    const FormulaTexts figures = BuildFormulaTexts(
        {.magery = 65, .evalInt = 70, .intelligence = 80, .spiritSpeak = 55, .targetResist = 67},
        8);
    EXPECT_EQ(figures(25), " 1.73333333333333");
    EXPECT_EQ(figures(26), " 39.52");
    EXPECT_EQ(figures(27), " 7.85");
    EXPECT_EQ(figures(28), " 19.76");
    EXPECT_EQ(figures(29), "Base damage= 3.5 to  6.5");
    EXPECT_EQ(figures(30), " 13.6666666666667");
    EXPECT_EQ(figures(31), " 18% chance");
    EXPECT_EQ(figures(32), " 29.88");
    EXPECT_EQ(ExpandFormulas("#Formula28; seconds", figures), "19.76 seconds");
    EXPECT_EQ(EnteredValue("49.5"), 50);
}

}  // namespace
}  // namespace spellwick
