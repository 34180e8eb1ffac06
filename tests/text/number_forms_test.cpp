#include "text/number_forms.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr i32 kLeast = std::numeric_limits<i32>::min();
constexpr i32 kMost = std::numeric_limits<i32>::max();

struct PrefixRow {
    const char* name;
    const char* text;
    double value;
};

TEST(NumericPrefix, Table_ReadsTheNumberAtTheStart) {
    const PrefixRow rows[] = {
        {"empty", "", 0},
        {"blanks alone", "   ", 0},
        {"letters", "abc", 0},
        {"zero", "0", 0},
        {"digits", "12345", 12345},
        {"leading zeros", "007", 7},
        {"plus sign", "+10", 10},
        {"minus sign", "-3", -3},
        {"sign alone, plus", "+", 0},
        {"sign alone, minus", "-", 0},
        {"two signs", "+-5", 0},
        {"two minus signs", "--5", 0},
        {"leading blanks", "  \t 42", 42},
        {"blank before the sign", " -7", -7},
        {"blank behind the sign", "- 7", 0},
        {"blank between digits", "1 2", 1},
        {"letters behind", "12abc", 12},
        {"sum", "12+3", 12},
        {"percent sign", "50%", 50},
        {"decimal point", "2.5", 2.5},
        {"point first", ".5", 0.5},
        {"point last", "5.", 5},
        {"point alone", ".", 0},
        {"two points", "1.2.3", 1.2},
        {"decimal comma", "2,5", 2},
        {"exponent", "1e3", 1000},
        {"capital exponent", "1E3", 1000},
        {"negative exponent", "15e-1", 1.5},
        {"positive exponent", "2e+2", 200},
        {"exponent without digits", "7e", 7},
        {"exponent with a sign alone", "7e+", 7},
        {"exponent alone", "e5", 0},
        {"fraction and exponent", "1.25e2x", 125},
        {"no hexadecimal", "0x10", 0},
        {"no infinity", "inf", 0},
        {"no word for no number", "nan", 0},
        {"group mark", "1'000", 1},
        {"byte above 127", "5\xC3\xA4", 5},
        {"32 bits and more", "99999999999", 99999999999.0},
        {"too large for any cell", "1e400", kInfinity},
        {"negative and too large", "-1e400", -kInfinity},
        {"exponent of ten digits", "1e9999999999", kInfinity},
        {"exponent of many digits", "1e99999999999999999999999", kInfinity},
        {"zero with a huge exponent", "0e9999999999", 0},
        {"too small", "1e-400", 0},
        {"tiny exponent of many digits", "1e-99999999999999999999999", 0},
    };
    for (const PrefixRow& row : rows) {
        EXPECT_EQ(NumericPrefix(row.text), row.value) << row.name;
    }
}

TEST(NumericPrefix, LongTextOfDigits_IsSizedByItsFirstDigit) {
    const std::string zeros(1000, '0');
    EXPECT_EQ(NumericPrefix("0." + zeros + "1"), 0.0);
    EXPECT_EQ(NumericPrefix("1" + zeros), kInfinity);
    EXPECT_EQ(NumericPrefix("1" + zeros + "e-5"), kInfinity);
    EXPECT_EQ(NumericPrefix("1" + zeros + "e-1000"), 1.0);
    EXPECT_EQ(NumericPrefix("0." + zeros + "1e5"), 0.0);
    EXPECT_EQ(NumericPrefix("0." + zeros + "1e1001"), 1.0);
    EXPECT_EQ(NumericPrefix(zeros + "12"), 12.0);
}

TEST(NumericPrefix, NulByte_EndsTheNumber) {
    EXPECT_EQ(NumericPrefix(std::string("12\0"
                                        "34",
                                        5)),
              12.0);
}

// strtod also accepts hexadecimal numbers, infinity and words, which this alphabet cannot spell.
TEST(NumericPrefix, RandomTexts_AgreeWithTheStandardLibrary) {
    std::mt19937 random(7);
    const std::string alphabet = "0123456789012345678901+-.eE ";
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> length(0, 12);
    int numbers = 0;
    for (int round = 0; round < 200'000; ++round) {
        std::string text;
        for (int left = length(random); left > 0; --left) {
            text.push_back(alphabet[pick(random)]);
        }
        const double expected = std::strtod(text.c_str(), nullptr);
        numbers += expected != 0.0 ? 1 : 0;
        if (std::fpclassify(expected) != FP_SUBNORMAL) {
            ASSERT_EQ(NumericPrefix(text), expected) << '"' << text << '"';
        }
    }
    EXPECT_GT(numbers, 50'000);
}

TEST(FirstFour, Table_ReadsFourCharacters) {
    const PrefixRow rows[] = {
        {"empty", "", 0},
        {"three digits", "123", 123},
        {"four digits", "1234", 1234},
        {"five digits", "12345", 1234},
        {"sign and three digits", "-1234", -123},
        {"blank counts", " 1234", 123},
        {"fraction", "1.239", 1.23},
        {"letter behind three", "123x9", 123},
        {"character of two bytes",
         "1\xC3\xA4"
         "234",
         1},
        {"four characters of which the first is wide",
         "\xE2\x82\xAC"
         "123",
         0},
    };
    for (const PrefixRow& row : rows) {
        EXPECT_EQ(FirstFour(row.text), row.value) << row.name;
    }
}

TEST(RoundHalfEven, Table_HalvesGoToTheEvenNeighbour) {
    const struct {
        double value;
        double whole;
    } rows[] = {
        {0.0, 0},
        {0.4, 0},
        {0.5, 0},
        {0.6, 1},
        {1.4, 1},
        {1.5, 2},
        {2.5, 2},
        {3.5, 4},
        {16.5, 16},
        {49.5, 50},
        {-0.4, 0},
        {-0.5, 0},
        {-0.6, -1},
        {-1.5, -2},
        {-2.5, -2},
        {-3.5, -4},
        {2.475, 2},
        {32766.5, 32766},
        {32767.5, 32768},
        {-32768.5, -32768},
        {0.49999999999999994, 0},
        {2147483647.5, 2147483648.0},
        {1e300, 1e300},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(RoundHalfEven(row.value), row.whole) << row.value;
    }
    EXPECT_EQ(RoundHalfEven(kInfinity), kInfinity);
}

TEST(RoundHalfEven, RandomValues_AgreeWithTheProcessor) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> quarters(-1'000'000, 1'000'000);
    for (int round = 0; round < 100'000; ++round) {
        const double value = quarters(random) / 4.0;
        ASSERT_EQ(RoundHalfEven(value), std::nearbyint(value)) << value;
    }
}

TEST(ToI16, Bounds_FitAndBeyondOverflows) {
    EXPECT_EQ(ToI16(32767), 32767);
    EXPECT_EQ(ToI16(-32768), -32768);
    EXPECT_EQ(ToI16(32767.4), 32767);
    EXPECT_EQ(ToI16(-32768.5), -32768);
    EXPECT_EQ(ToI16(2.5), 2);
    EXPECT_EQ(ToI16(3.5), 4);
    for (const i32 value : {32768, -32769, kMost, kLeast}) {
        EXPECT_EQ(FailureOf([&] { ToI16(value); }), FailureKind::kOverflow) << value;
    }
    for (const double value : {32767.5, 32768.0, -32768.6, 1e300, kInfinity, -kInfinity,
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(FailureOf([&] { ToI16(value); }), FailureKind::kOverflow) << value;
    }
}

TEST(ToI32, Bounds_FitAndBeyondOverflows) {
    EXPECT_EQ(ToI32(2147483647.0), kMost);
    EXPECT_EQ(ToI32(2147483647.4), kMost);
    EXPECT_EQ(ToI32(-2147483648.0), kLeast);
    EXPECT_EQ(ToI32(-2147483648.5), kLeast);
    for (const double value : {2147483647.5, 2147483648.0, -2147483649.0, 1e300, kInfinity,
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(FailureOf([&] { ToI32(value); }), FailureKind::kOverflow) << value;
    }
}

TEST(ToByte, Bounds_FitAndBeyondOverflows) {
    EXPECT_EQ(ToByte(0), 0);
    EXPECT_EQ(ToByte(255), 255);
    for (const i32 value : {-1, 256, 300, kMost, kLeast}) {
        EXPECT_EQ(FailureOf([&] { ToByte(value); }), FailureKind::kOverflow) << value;
    }
}

TEST(TruncatingDivide, Table_CutsTowardZero) {
    const struct {
        i32 dividend;
        i32 divisor;
        i32 quotient;
    } rows[] = {
        {0, 5, 0},   {7, 2, 3},   {-7, 2, -3},         {7, -2, -3},       {-7, -2, 3},
        {19, 20, 0}, {39, 20, 1}, {40, 20, 2},         {kMost, 1, kMost}, {kLeast, 1, kLeast},
        {-1, 8, 0},  {95, 8, 11}, {kMost, -1, -kMost},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TruncatingDivide(row.dividend, row.divisor), row.quotient)
            << row.dividend << " by " << row.divisor;
    }
}

TEST(TruncatingDivide, RandomNumbers_QuotientAndRestMakeTheDividend) {
    std::mt19937 random(5);
    std::uniform_int_distribution<i32> any(kLeast, kMost);
    std::uniform_int_distribution<i32> small(-300, 300);
    for (int round = 0; round < 100'000; ++round) {
        const std::int64_t dividend = any(random);
        const std::int64_t divisor = round % 2 == 0 ? small(random) : any(random);
        if (divisor == 0 || (dividend == kLeast && divisor == -1)) {
            continue;
        }
        const std::int64_t quotient =
            TruncatingDivide(static_cast<i32>(dividend), static_cast<i32>(divisor));
        const std::int64_t rest = dividend - quotient * divisor;
        ASSERT_LT(std::abs(rest), std::abs(divisor));
        ASSERT_TRUE(rest == 0 || (rest < 0) == (dividend < 0)) << dividend << " by " << divisor;
    }
}

TEST(TruncatingDivide, ZeroAndTheOneQuotientThatDoesNotFit_Fail) {
    EXPECT_EQ(FailureOf([] { TruncatingDivide(1, 0); }), FailureKind::kDivision);
    EXPECT_EQ(FailureOf([] { TruncatingDivide(0, 0); }), FailureKind::kDivision);
    EXPECT_EQ(FailureOf([] { TruncatingDivide(kLeast, -1); }), FailureKind::kOverflow);
}

TEST(RequiredNumber, Table_TakesNumbersAlone) {
    EXPECT_EQ(RequiredNumber("12"), 12.0);
    EXPECT_EQ(RequiredNumber(" 12 \r\n"), 12.0);
    EXPECT_EQ(RequiredNumber("-2.5e1"), -25.0);
    for (const char* text : {"", " ", "abc", "12x", "1 2", "-", "0x10", "1e", "12 x"}) {
        EXPECT_EQ(FailureOf([&] { RequiredNumber(text); }), FailureKind::kTypeMismatch) << text;
    }
}

TEST(NumberText, WholeNumbers_HaveAPlainAndAStandardForm) {
    const struct {
        i32 value;
        const char* plain;
        const char* standard;
    } rows[] = {
        {0, "0", " 0"},
        {12, "12", " 12"},
        {-1, "-1", "-1"},
        {32767, "32767", " 32767"},
        {kMost, "2147483647", " 2147483647"},
        {kLeast, "-2147483648", "-2147483648"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PlainText(row.value), row.plain);
        EXPECT_EQ(StandardText(row.value), row.standard);
        EXPECT_EQ(PlainText(double{static_cast<double>(row.value)}), row.plain);
        EXPECT_EQ(StandardText(double{static_cast<double>(row.value)}), row.standard);
    }
}

TEST(NumberText, Fractions_HaveFifteenDigitsAtMost) {
    const struct {
        double value;
        const char* plain;
    } rows[] = {
        {0.5, "0.5"},
        {-0.5, "-0.5"},
        {-0.0, "0"},
        {2.475, "2.475"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 3.0, "0.333333333333333"},
        {200.0 / 3.0, "66.6666666666667"},
        {0.001, "0.001"},
        {999999999999999.0, "999999999999999"},
        {1e15, "1000000000000000"},
        {1e20, "100000000000000000000"},
        {-1e20, "-100000000000000000000"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PlainText(row.value), row.plain);
    }
    EXPECT_EQ(StandardText(0.5), " 0.5");
    EXPECT_EQ(StandardText(-0.5), "-0.5");
}

TEST(NumberText, RandomWholeNumbers_ReadBackAsTheyWere) {
    std::mt19937 random(13);
    std::uniform_int_distribution<i32> any(kLeast, kMost);
    for (int round = 0; round < 50'000; ++round) {
        const i32 value = any(random);
        ASSERT_EQ(NumericPrefix(PlainText(value)), value);
        ASSERT_EQ(NumericPrefix(StandardText(value)), value);
        ASSERT_EQ(PlainText(static_cast<double>(value)), PlainText(value));
    }
}

TEST(FailureName, EveryKind_HasItsWords) {
    EXPECT_STREQ(FailureName(FailureKind::kOverflow), "Overflow");
    EXPECT_STREQ(FailureName(FailureKind::kSubscript), "Subscript out of range");
    EXPECT_STREQ(FailureName(FailureKind::kInvalidCall), "Invalid call or argument");
    EXPECT_STREQ(FailureName(FailureKind::kTypeMismatch), "Type mismatch");
    EXPECT_STREQ(FailureName(FailureKind::kDivision), "Division by zero");
    EXPECT_STREQ(FailureName(FailureKind::kFile), "File error");
}

}  // namespace
}  // namespace spellwick
