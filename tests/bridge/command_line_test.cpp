// The command line of the bridge.
#include "bridge/command_line.h"

#include <gmock/gmock.h>

namespace spellwick::bridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(BridgeCommandLineTest, Nothing_ServesAllPrefixes) {
    const BridgeCommandLine line = ReadCommandLine({});
    EXPECT_TRUE(line.answer.empty() && line.trouble.empty());
    EXPECT_FALSE(line.options.once || line.options.verbose || line.options.endsWithInput);
    EXPECT_TRUE(line.options.prefixes.empty());
}

TEST(BridgeCommandLineTest, Options_AreTakenInAnyOrder) {
    const BridgeCommandLine line = ReadCommandLine(
        {"--verbose", "--prefix", "/a", "--end-with-input", "--prefix", "/b c", "--once"});
    EXPECT_TRUE(line.trouble.empty()) << line.trouble;
    EXPECT_TRUE(line.options.once && line.options.verbose && line.options.endsWithInput);
    EXPECT_THAT(line.options.prefixes, ElementsAre("/a", "/b c"));
}

TEST(BridgeCommandLineTest, WhatIsUnknown_IsNamed) {
    EXPECT_EQ(ReadCommandLine({"--oops"}).trouble, "unknown option --oops");
    EXPECT_EQ(ReadCommandLine({"word"}).trouble, "unknown option word");
    EXPECT_EQ(ReadCommandLine({"--prefix"}).trouble, "--prefix needs a folder");
}

TEST(BridgeCommandLineTest, HelpAndVersion_AreAnswered) {
    EXPECT_THAT(ReadCommandLine({"--help"}).answer, HasSubstr("--end-with-input"));
    EXPECT_THAT(ReadCommandLine({"--version"}).answer, HasSubstr("spellwick-bridge "));
}

}  // namespace
}  // namespace spellwick::bridge
