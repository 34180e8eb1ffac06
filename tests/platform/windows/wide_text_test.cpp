#include "platform/windows/wide_text.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

TEST(WideText, EveryCodePoint_ComesBack) {
    for (char32_t code = 0; code <= 0x10ffff; ++code) {
        if (code < 0xd800 || code > 0xdfff) {
            std::wstring wide;
            if (code < 0x10000) {
                wide.push_back(static_cast<wchar_t>(code));
            } else {
                wide.push_back(static_cast<wchar_t>(0xd7c0 + (code >> 10)));
                wide.push_back(static_cast<wchar_t>(0xdc00 + (code & 0x3ff)));
            }
            ASSERT_EQ(WideFromUtf8(Utf8FromWide(wide)), wide) << static_cast<unsigned>(code);
        }
    }
}

TEST(WideText, Texts_AreThoseOfTheOtherForm) {
    EXPECT_EQ(WideFromUtf8("Mira \u00c4\u0142\u05e9 \U0001f525"),
              L"Mira \u00c4\u0142\u05e9 \xd83d\xdd25");
    EXPECT_EQ(Utf8FromWide(L"Mira \u00c4\u0142\u05e9 \xd83d\xdd25"),
              "Mira \u00c4\u0142\u05e9 \U0001f525");
    EXPECT_EQ(WideFromUtf8({}), L"");
    EXPECT_EQ(Utf8FromWide({}), "");
    EXPECT_EQ(Utf8FromWide(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(WideText, HalfPairsAndStrayBytes_BecomeReplacementCharacters) {
    EXPECT_EQ(Utf8FromWide(L"a\xd83d"
                           L"b"),
              "a\ufffdb");
    EXPECT_EQ(Utf8FromWide(L"\xdd25\xd83d"), "\ufffd\ufffd");
    EXPECT_EQ(WideFromUtf8("a\xff"
                           "b\xc3"),
              L"a\ufffdb\ufffd");
}

TEST(WideText, Handles_KeepTheirThirtyTwoBits) {
    for (const WindowHandle handle : {0U, 1U, 0x10044U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        EXPECT_EQ(HandleOf(HwndOf(handle)), handle);
    }
}

}  // namespace
}  // namespace spellwick
