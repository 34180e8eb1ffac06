#include "platform/linux/assist_line.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct LineRow {
    const char* line;
    AssistLine expected;
};

TEST(AssistLine, GoodLines_AreRead) {
    const LineRow rows[] = {
        {"title UOAssist", TitleLine{"UOAssist"}},
        {"title ", TitleLine{""}},
        {"title  two  blanks ", TitleLine{" two  blanks "}},
        {"title W\xc3\xbcrde", TitleLine{"W\xc3\xbcrde"}},
        {"send 1325 1 80", SendLine{{1325, 1, 80}}},
        {"send 0 0 0", SendLine{{0, 0, 0}}},
        {"send 1329 -1 -32768", SendLine{{1329, -1, -32768}}},
        {"send 4294967295 2147483647 -2147483648",
         SendLine{{4294967295U, 2147483647, -2147483647 - 1}}},
        {"send 1327 4294967295 2147483648", SendLine{{1327, -1, -2147483647 - 1}}},
        {"send 1325 007 80", SendLine{{1325, 7, 80}}},
        {"result 1", ResultLine{1}},
        {"result -1", ResultLine{-1}},
        {"result 4294967295", ResultLine{-1}},
    };
    for (const LineRow& row : rows) {
        EXPECT_EQ(ParseAssistLine(row.line), row.expected) << row.line;
    }
}

TEST(AssistLine, BadLines_AreNone) {
    using std::string_literals::operator""s;
    const std::vector<std::string> rows{
        "",
        " ",
        "title",
        "Title UOAssist",
        "title\tUOAssist",
        "title \xff\xfe",
        "title \xc3",
        "title UOAssist\0"s,
        "\0"s,
        "send",
        "send ",
        "send 1325",
        "send 1325 1",
        "send 1325 1 ",
        "send 1325 1 80 ",
        "send 1325 1 80 9",
        "send  1325 1 80",
        "send 1325  1 80",
        "send 1325 1  80",
        " send 1325 1 80",
        "send 1325 1 80\r",
        "send -1325 1 80",
        "send +1325 1 80",
        "send 1325 +1 80",
        "send 1325 1 8.0",
        "send 1325 1 8e1",
        "send 0x52D 1 80",
        "send 1325 one 80",
        "send 1325 - 80",
        "send 1325 1 -",
        "send 1325 1 4294967296",
        "send 1325 1 -2147483649",
        "send 1325 99999999999999999999 1",
        "send 1325 1\0002 80"s,
        "send 1325\t1 80",
        "result",
        "result ",
        "result x",
        "result 1 2",
        "result 1 ",
        "result --1",
        "RESULT 1",
        "quit",
    };
    for (const std::string& row : rows) {
        EXPECT_EQ(ParseAssistLine(row), std::nullopt) << row;
    }
}

TEST(AssistLine, WrittenLines_AreReadBack) {
    EXPECT_EQ(WrittenSend({1224, 37748743, -5}), "send 1224 37748743 -5\n");
    EXPECT_EQ(WrittenResult(0), "result 0\n");
    const WindowMessage message{4294967295U, -2147483647 - 1, 2147483647};
    std::string line = WrittenSend(message);
    line.pop_back();
    EXPECT_EQ(ParseAssistLine(line), AssistLine(SendLine{message}));
}

std::vector<std::string> TakeAll(AssistLineReader& reader) {
    std::vector<std::string> lines;
    while (auto line = reader.TakeLine()) {
        lines.push_back(*line);
    }
    return lines;
}

TEST(AssistLineReader, Lines_ComeWholeHoweverTheyAreCut) {
    const std::string stream = "title UOAssist\n\nsend 1 2 3\nresult 0\nhalf";
    for (std::size_t piece = 1; piece <= stream.size(); ++piece) {
        AssistLineReader reader;
        std::vector<std::string> lines;
        for (std::size_t at = 0; at < stream.size(); at += piece) {
            reader.Append(stream.substr(at, piece));
            for (const std::string& line : TakeAll(reader)) {
                lines.push_back(line);
            }
        }
        EXPECT_THAT(lines, ElementsAre("title UOAssist", "", "send 1 2 3", "result 0"));
        EXPECT_FALSE(reader.HasLine());
        EXPECT_FALSE(reader.Broken());
    }
}

TEST(AssistLineReader, LongestLine_IsFiveHundredAndTwelveBytesWithItsEnd) {
    AssistLineReader reader;
    const std::string longest(511, 'x');
    reader.Append(longest);
    EXPECT_FALSE(reader.Broken());
    reader.Append("\n");
    EXPECT_THAT(TakeAll(reader), ElementsAre(longest));
    EXPECT_FALSE(reader.Broken());
}

TEST(AssistLineReader, LongerLine_BreaksTheStreamAfterTheLinesBefore) {
    AssistLineReader reader;
    reader.Append("result 1\n" + std::string(512, 'x') + "\nresult 2\n");
    EXPECT_FALSE(reader.Broken());
    EXPECT_THAT(TakeAll(reader), ElementsAre("result 1"));
    EXPECT_TRUE(reader.Broken());
    reader.Append("\nresult 3\n");
    EXPECT_THAT(TakeAll(reader), IsEmpty());
}

TEST(AssistLineReader, EndlessLine_BreaksTheStreamAtOnce) {
    AssistLineReader reader;
    reader.Append(std::string(512, 'x'));
    EXPECT_TRUE(reader.Broken());
}

}  // namespace
}  // namespace spellwick
