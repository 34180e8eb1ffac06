#include "text/windows_1252.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

TEST(Windows1252, UpperTable_IsTheCodePage) {
    // 0x80 to 0x9f; the five without a meaning stay the control characters of their numbers.
    const char* const expected =
        "\u20ac\u0081\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039\u0152\u008d"
        "\u017d\u008f\u0090\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122\u0161\u203a"
        "\u0153\u009d\u017e\u0178";
    std::string bytes;
    for (int byte = 0x80; byte < 0xa0; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    EXPECT_EQ(Utf8FromWindows1252(bytes), expected);
    EXPECT_EQ(Utf8FromWindows1252("\xa0\xe9\xff"), "\u00a0\u00e9\u00ff");
}

TEST(Windows1252, EveryByte_ComesBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    EXPECT_EQ(Windows1252FromUtf8(Utf8FromWindows1252(bytes)), bytes);
}

TEST(Windows1252, CharacterOutsideTheCodePage_IsAQuestionMark) {
    EXPECT_EQ(Windows1252FromUtf8("a\u0416b\U0001f600c\u0080"), "a?b?c?");
}

TEST(Windows1252, UpperCase_EveryByteAgainstItsLetter) {
    for (int byte = 0; byte < 256; ++byte) {
        int expected = byte;
        if ((byte >= 'a' && byte <= 'z') || (byte >= 0xe0 && byte <= 0xfe && byte != 0xf7)) {
            expected = byte - 0x20;
        }
        if (byte == 0x9a || byte == 0x9c || byte == 0x9e) {
            expected = byte - 0x10;
        }
        if (byte == 0xff) {
            expected = 0x9f;
        }
        EXPECT_EQ(UpperCaseWindows1252(static_cast<unsigned char>(byte)), expected) << byte;
    }
}

}  // namespace
}  // namespace spellwick
