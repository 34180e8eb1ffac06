#include "practice/commands.h"

#include <gtest/gtest.h>

namespace spellwick::practice {
namespace {

using GameKind = GameCommand::Kind;

TEST(ParseCommand, EachWord_GivesItsCommand) {
    EXPECT_EQ(ParseCommand("login 1"), (GameCommand{.kind = GameKind::kLogin, .character = 1}));
    EXPECT_EQ(ParseCommand("login 3"), (GameCommand{.kind = GameKind::kLogin, .character = 3}));
    EXPECT_EQ(ParseCommand("logout"), GameCommand{.kind = GameKind::kLogout});
    EXPECT_EQ(ParseCommand("raise"), GameCommand{.kind = GameKind::kRaise});
    EXPECT_EQ(ParseCommand("quit"), GameCommand{.kind = GameKind::kQuit});
}

TEST(ParseCommand, Title_KeepsTheRestAsItStands) {
    EXPECT_EQ(ParseCommand("title  a (b) "),
              (GameCommand{.kind = GameKind::kTitle, .title = " a (b) "}));
    EXPECT_EQ(ParseCommand("title "), (GameCommand{.kind = GameKind::kTitle, .title = ""}));
    EXPECT_EQ(ParseCommand("title"), (GameCommand{.kind = GameKind::kTitle, .title = ""}));
}

TEST(ParseCommand, AnythingElse_GivesNothing) {
    for (const char* line : {"", "login", "login 0", "login 4", "login x", "login 11", "Quit",
                             "quit now", "titles x", " raise"}) {
        EXPECT_EQ(ParseCommand(line), std::nullopt) << '"' << line << '"';
    }
}

}  // namespace
}  // namespace spellwick::practice
