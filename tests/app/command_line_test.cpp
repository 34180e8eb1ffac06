#include "app/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/shared_state.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct Taken {
    CommandLine line;
    std::vector<std::string> left;
};

Taken Take(std::vector<std::string> words) {
    words.insert(words.begin(), "spellwick");
    std::vector<char*> arguments;
    arguments.reserve(words.size());
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    Taken taken{.line = TakeOptions(arguments), .left = {}};
    for (const char* argument : arguments) {
        taken.left.emplace_back(argument);
    }
    return taken;
}

TEST(CommandLine, Nothing_StartsAsUsual) {
    const Taken taken = Take({});
    EXPECT_FALSE(taken.line.options.data);
    EXPECT_EQ(taken.line.answer + taken.line.trouble, "");
    EXPECT_THAT(taken.left, ElementsAre("spellwick"));
}

TEST(CommandLine, Data_IsTheSettingsFolder) {
    for (const auto& words : {std::vector<std::string>{"--data", "/a b/c"}, {"--data=/a b/c"}}) {
        const Taken taken = Take(words);
        EXPECT_EQ(taken.line.options.data, std::filesystem::path("/a b/c"));
        EXPECT_EQ(taken.line.trouble, "");
        EXPECT_THAT(taken.left, ElementsAre("spellwick"));
    }
}

TEST(CommandLine, Log_IsAFileOrStandardOutput) {
    EXPECT_FALSE(Take({}).line.log.file);
    for (const auto& words : {std::vector<std::string>{"--log", "/a/b c"}, {"--log=/a/b c"}}) {
        const Taken taken = Take(words);
        EXPECT_EQ(taken.line.log.file, std::filesystem::path("/a/b c"));
        EXPECT_FALSE(taken.line.log.details);
        EXPECT_THAT(taken.left, ElementsAre("spellwick"));
    }
    EXPECT_EQ(Take({"--log", "-"}).line.log.file, std::filesystem::path("-"));
    EXPECT_EQ(Take({"--log"}).line.trouble, "--log needs a file, or - for standard output.");
}

TEST(CommandLine, Debug_IsALogWithDetails) {
    EXPECT_TRUE(Take({"--debug"}).line.log.details);
    EXPECT_EQ(Take({"--debug"}).line.log.file, std::filesystem::path("-"));
    const Taken both = Take({"--debug", "--log", "/a"});
    EXPECT_TRUE(both.line.log.details);
    EXPECT_EQ(both.line.log.file, std::filesystem::path("/a"));
}

TEST(CommandLine, DataWithoutAFolder_IsRefused) {
    for (const auto& words : {std::vector<std::string>{"--data"}, {"--data="}, {"--data", ""}}) {
        EXPECT_EQ(Take(words).line.trouble, "--data needs a folder.");
    }
}

TEST(CommandLine, ShortOptions_AreLeftForTheToolkit) {
    EXPECT_THAT(Take({"-style", "fusion", "--data", "/a", "-x"}).left,
                ElementsAre("spellwick", "-style", "fusion", "-x"));
}

TEST(CommandLine, UnknownOption_IsNamed) {
    EXPECT_EQ(Take({"--dataa", "/a", "--other"}).line.trouble,
              "There is no option \"--dataa\"; --help lists them.");
    std::string program = "spellwick";
    std::string word = "-x";
    char* arguments[] = {program.data(), word.data()};
    EXPECT_EQ(UnknownArgument(2, arguments), "There is no option \"-x\"; --help lists them.");
    EXPECT_EQ(UnknownArgument(1, arguments), "");
}

TEST(CommandLine, HelpAndVersion_AreAnswered) {
    for (const char* option : {"--data DIR", "--log FILE", "--debug", "--version", "--help"}) {
        EXPECT_THAT(Take({"--help"}).line.answer, HasSubstr(option));
    }
    EXPECT_EQ(Take({"--version"}).line.answer, std::string("Spellwick ") + kVersion + "\n");
}

}  // namespace
}  // namespace spellwick
