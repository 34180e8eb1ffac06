#include "store/text_forms.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

TEST(TextForms, Bool_IsWrittenAsAWord) {
    EXPECT_EQ(BoolText(true), "True");
    EXPECT_EQ(BoolText(false), "False");
}

TEST(TextForms, Bool_IsReadAsWordInAnyCaseOrAsNumber) {
    for (const char* text : {"True", "true", "TRUE", "tRuE", "1", "-1", " 2 ", "0.5"}) {
        EXPECT_TRUE(ReadBool(text)) << text;
    }
    for (const char* text : {"False", "false", "FALSE", "0", " 0", "0.0", "-0"}) {
        EXPECT_FALSE(ReadBool(text)) << text;
    }
}

TEST(TextForms, Bool_OtherTextIsATypeMismatch) {
    for (const char* text : {"", " ", "yes", "Truer", "Tru", "Fals", "1x", "\xC3\xA4"}) {
        EXPECT_EQ(FailureOf([&] { ReadBool(text); }), FailureKind::kTypeMismatch) << text;
    }
}

TEST(TextForms, Float_IsTheShortestDecimalText) {
    EXPECT_EQ(FloatText(0.0F), "0");
    EXPECT_EQ(FloatText(-0.0F), "0");
    EXPECT_EQ(FloatText(1500.0F), "1500");
    EXPECT_EQ(FloatText(1500.5F), "1500.5");
    EXPECT_EQ(FloatText(-15.0F), "-15");
    EXPECT_EQ(FloatText(0.1F), "0.1");
    EXPECT_EQ(FloatText(40000.0F), "40000");
    EXPECT_EQ(FloatText(1e10F), "10000000000");
}

TEST(TextForms, Float_ComesBackAsItWas) {
    for (const float value : {0.0F, 0.1F, -123.456F, 39999.99F, 3.4e38F, 1.2e-38F, 1e-45F}) {
        EXPECT_EQ(ReadFloat(FloatText(value)), value);
    }
}

TEST(TextForms, Float_BadTextFails) {
    EXPECT_EQ(FailureOf([] { ReadFloat("left"); }), FailureKind::kTypeMismatch);
    EXPECT_EQ(FailureOf([] { ReadFloat(""); }), FailureKind::kTypeMismatch);
    EXPECT_EQ(FailureOf([] { ReadFloat("1e39"); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { ReadFloat("1e999"); }), FailureKind::kOverflow);
}

TEST(TextForms, Number_IsStrict) {
    EXPECT_EQ(ReadI16("32767"), 32767);
    EXPECT_EQ(ReadI16(" -32768"), -32768);
    EXPECT_EQ(ReadI16("16.5"), 16);
    EXPECT_EQ(ReadI32("2147483647"), 2147483647);
    EXPECT_EQ(ReadByte("255"), 255);
    EXPECT_EQ(FailureOf([] { ReadI16("32768"); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { ReadI32("2147483648"); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { ReadByte("256"); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { ReadByte("-1"); }), FailureKind::kOverflow);
    for (const char* text : {"", " ", "x", "7x", "True", "1,5"}) {
        EXPECT_EQ(FailureOf([&] { ReadI16(text); }), FailureKind::kTypeMismatch) << text;
        EXPECT_EQ(FailureOf([&] { ReadByte(text); }), FailureKind::kTypeMismatch) << text;
    }
}

TEST(TextForms, StockAndTithing_AreTolerant) {
    struct Row {
        const char* text;
        i16 value;
    };
    for (const Row& row : {Row{" 12", 12},
                           {"12", 12},
                           {"12 apples", 12},
                           {"", 0},
                           {"none", 0},
                           {"-5", -5},
                           {"2.5", 2},
                           {"3.5", 4},
                           {" 32767", 32767}}) {
        EXPECT_EQ(ReadStock(row.text), row.value) << row.text;
        EXPECT_EQ(ReadTithing(row.text), row.value) << row.text;
    }
    EXPECT_EQ(ReadTithing(" 100000"), 100000);
    EXPECT_EQ(FailureOf([] { ReadStock("32768"); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { ReadTithing("2147483648"); }), FailureKind::kOverflow);
}

}  // namespace
}  // namespace spellwick
