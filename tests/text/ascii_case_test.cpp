#include "text/ascii_case.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

TEST(AsciiCase, LettersAtoZ_AreTheSameInBothCases_OthersAreNot) {
    EXPECT_TRUE(SameWithoutCase("Client.EXE az", "cLIENT.exe AZ"));
    EXPECT_TRUE(SameWithoutCase("", ""));
    EXPECT_FALSE(SameWithoutCase("client", "clients"));
    EXPECT_FALSE(SameWithoutCase("[", "{"));  // which lie beside the letters
    EXPECT_FALSE(SameWithoutCase("@", "`"));
    EXPECT_FALSE(SameWithoutCase("\u00c4", "\u00e4"));
}

TEST(AsciiCase, End_IsThatOfTheText) {
    EXPECT_TRUE(EndsInExe("client.Exe"));
    EXPECT_TRUE(EndsInExe(".exe"));
    EXPECT_FALSE(EndsInExe("exe"));
    EXPECT_FALSE(EndsInExe("client.exe.txt"));
    EXPECT_TRUE(EndsWithoutCase("anything", ""));
}

}  // namespace
}  // namespace spellwick
