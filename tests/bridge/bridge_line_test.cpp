// The lines between the two halves of the bridge.
#include "bridge/bridge_line.h"

#include <gtest/gtest.h>

namespace spellwick::bridge {
namespace {

TEST(BridgeLines, Written_AreReadBack) {
    const std::pair<BridgeLine, const char*> rows[] = {
        {{0, BridgeVerb::kReady, {}, {}}, "0 ready\n"},
        {{7, BridgeVerb::kTitle, {}, "UOAssist 2003"}, "7 title UOAssist 2003\n"},
        {{7, BridgeVerb::kTitle, {}, ""}, "7 title \n"},
        {{7, BridgeVerb::kGone, {}, {}}, "7 gone\n"},
        {{1, BridgeVerb::kOpen, {7}, {}}, "1 open 7\n"},
        {{1, BridgeVerb::kClose, {}, {}}, "1 close\n"},
        {{1, BridgeVerb::kSend, {1325, 1, -5}, {}}, "1 send 1325 1 -5\n"},
        {{4294967295U, BridgeVerb::kSend, {4294967295, 4294967295, -2147483648LL}, {}},
         "4294967295 send 4294967295 4294967295 -2147483648\n"},
        {{1, BridgeVerb::kResult, {-1}, {}}, "1 result -1\n"},
    };
    for (const auto& [line, text] : rows) {
        EXPECT_EQ(WrittenBridgeLine(line), text);
        const std::string written = text;
        EXPECT_EQ(ParseBridgeLine(written.substr(0, written.size() - 1)), line) << text;
    }
}

TEST(BridgeLines, OtherTexts_AreNone) {
    for (const char* text : {"",
                             "ready",
                             "0",
                             "0 ",
                             "0  ready",
                             "x ready",
                             "-1 ready",
                             "4294967296 ready",
                             "0 ready ",
                             "0 readyness",
                             "1 open",
                             "1 open x",
                             "1 open 7 8",
                             "1 send 1 2",
                             "1 send 1 2 3 4",
                             "1 send 1  2 3",
                             "1 send 4294967296 2 3",
                             "1 send 1 2 -2147483649",
                             "1 result",
                             "1 title",
                             "1 titleX",
                             "1 Title x",
                             " 1 close",
                             "wine: could not load"}) {
        EXPECT_FALSE(ParseBridgeLine(text)) << text;
    }
}

TEST(BridgeLines, LongTitle_IsCutBetweenLettersAndFits) {
    std::string title(kLongestBridgeTitle - 1, 'a');
    title += "\u00e4\u00e4";
    const std::string written = WrittenBridgeLine({4294967295U, BridgeVerb::kTitle, {}, title});
    EXPECT_LE(written.size(), kLongestBridgeLine);
    const auto line = ParseBridgeLine(written.substr(0, written.size() - 1));
    ASSERT_TRUE(line);
    EXPECT_EQ(line->text, std::string(kLongestBridgeTitle - 1, 'a'));
}

TEST(BridgeLines, LineFeedsInATitle_BecomeBlanks) {
    EXPECT_EQ(WrittenBridgeLine({1, BridgeVerb::kTitle, {}, "UO\nAssist\t"}),
              "1 title UO Assist \n");
}

}  // namespace
}  // namespace spellwick::bridge
