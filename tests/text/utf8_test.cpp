#include "text/utf8.h"

#include <vector>

#include <gtest/gtest.h>

namespace spellwick {
namespace {

std::vector<char32_t> CodePoints(std::string_view text) {
    std::vector<char32_t> codes;
    while (!text.empty()) {
        codes.push_back(TakeCodePoint(text));
    }
    return codes;
}

TEST(PathOfText, EveryText_ComesBackAsItWas) {
    const std::string name = "Mira \u0141\u00e4 \u05e9 \U0001f9d9.txt";
    const std::filesystem::path path = PathFromUtf8(name);
    EXPECT_TRUE(path.u8string() == std::u8string(name.begin(), name.end()));
    EXPECT_EQ(path.string(), name);
    EXPECT_EQ(PathFromUtf8("folder") / PathFromUtf8(name), PathFromUtf8("folder/" + name));
    EXPECT_TRUE(PathFromUtf8({}).empty());
}

TEST(Utf8, WellFormedText_ComesBackWhole) {
    const std::string text = "a\u00e4\u20ac\u05d0\U0001f600\U0010ffff";
    EXPECT_EQ(ValidUtf8(text), text);
    EXPECT_EQ(CodePoints(text),
              (std::vector<char32_t>{U'a', 0xe4, 0x20ac, 0x5d0, 0x1f600, 0x10ffff}));
}

TEST(Utf8, BytesThatDoNotBelong_AreReplacedOneByOne) {
    EXPECT_EQ(ValidUtf8("\xff"), "\ufffd");
    EXPECT_EQ(ValidUtf8("a\xe4z"), "a\ufffdz");
    EXPECT_EQ(ValidUtf8("\xe2\x82"), "\ufffd\ufffd");
    EXPECT_EQ(ValidUtf8("\xe2\x82 a"), "\ufffd\ufffd a");
    EXPECT_EQ(ValidUtf8("\x80"), "\ufffd");
}

TEST(Utf8, OverlongFormsSurrogatesAndTooLargeNumbers_AreReplaced) {
    EXPECT_EQ(ValidUtf8("\xc0\xaf"), "\ufffd\ufffd");
    EXPECT_EQ(ValidUtf8("\xe0\x80\xaf"), "\ufffd\ufffd\ufffd");
    EXPECT_EQ(ValidUtf8("\xed\xa0\x80"), "\ufffd\ufffd\ufffd");
    EXPECT_EQ(ValidUtf8("\xf4\x90\x80\x80"), "\ufffd\ufffd\ufffd\ufffd");
    std::string written;
    AppendUtf8(written, 0xd800);
    AppendUtf8(written, 0x110000);
    EXPECT_EQ(written, "\ufffd\ufffd");
}

TEST(Utf8, EveryScalarValue_ComesBack) {
    for (char32_t code = 0; code <= 0x10ffff; ++code) {
        if (code >= 0xd800 && code <= 0xdfff) {
            continue;
        }
        std::string written;
        AppendUtf8(written, code);
        std::string_view rest = written;
        ASSERT_EQ(TakeCodePoint(rest), code);
        ASSERT_TRUE(rest.empty());
    }
}

}  // namespace
}  // namespace spellwick
