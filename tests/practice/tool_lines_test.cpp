#include "practice/tool_lines.h"

#include <gtest/gtest.h>

namespace spellwick::practice {
namespace {

TEST(ParseToolLine, Send_IsAMessage) {
    struct Row {
        const char* name = "";
        const char* line = "";
        ToolMessage message;
    };
    for (const Row& row : {
             Row{"count", "send 1125 0 0", {1125, 0, 0}},
             Row{"negative values", "send 1329 -1 -32769", {1329, -1, -32769}},
             Row{"without sign", "send 1224 4294967295 2147483648", {1224, -1, -2147483647 - 1}},
             Row{"lowest", "send 0 -2147483648 0", {0, -2147483647 - 1, 0}},
         }) {
        const auto parsed = ParseToolLine(row.line);
        ASSERT_TRUE(parsed && std::holds_alternative<ToolMessage>(*parsed)) << row.name;
        EXPECT_EQ(std::get<ToolMessage>(*parsed), row.message) << row.name;
    }
}

TEST(ParseToolLine, Result_IsAnAnswer) {
    for (const auto& [line, number] :
         {std::pair{"result 0", 0}, {"result 1", 1}, {"result -7", -7}}) {
        const auto parsed = ParseToolLine(line);
        ASSERT_TRUE(parsed && std::holds_alternative<ToolResult>(*parsed)) << line;
        EXPECT_EQ(std::get<ToolResult>(*parsed).number, number) << line;
    }
}

TEST(ParseToolLine, AnythingElse_IsNothing) {
    for (const char* line : {"",
                             "send",
                             "send ",
                             "send 1",
                             "send 1 2",
                             "send 1 2 ",
                             "send 1 2 3 ",
                             "send 1 2 3 4",
                             "send 1  2 3",
                             "send -1 2 3",
                             "send +1 2 3",
                             "send 1 2 4294967296",
                             "send 1 -2147483649 0",
                             "send x 2 3",
                             "send 1 2 3x",
                             "Send 1 2 3",
                             " send 1 2 3",
                             "result",
                             "result ",
                             "result x",
                             "result 1 2",
                             "title x",
                             "send 1 2 3\r"}) {
        EXPECT_EQ(ParseToolLine(line), std::nullopt) << '"' << line << '"';
    }
}

TEST(WrittenLines, EachKind_HasItsForm) {
    EXPECT_EQ(WrittenTitle("a b"), "title a b");
    EXPECT_EQ(WrittenMessage({1325, 200, 40000}), "send 1325 200 40000");
    EXPECT_EQ(WrittenMessage({1329, 10, -1}), "send 1329 10 -1");
    EXPECT_EQ(WrittenResult(2), "result 2");
}

}  // namespace
}  // namespace spellwick::practice
