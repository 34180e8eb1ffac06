#include "link/client_report.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using testing::ElementsAre;

std::vector<GameClient> Delivered() {
    return LoadGameClients().rows;
}

TEST(NothingFound, CountsTheWindowsOfEachKnownClass) {
    const std::vector<GameClient> clients = Delivered();
    const auto text = [&](const std::vector<TopLevelWindow>& windows, WindowClassKind kind) {
        return NothingFoundText(clients, windows, kind);
    };
    EXPECT_EQ(text({}, WindowClassKind::kX11), "No window is of a known client's class.");
    EXPECT_EQ(text({{1, "XTerm", "xterm", "Bran - ClassicUO - 1"}}, WindowClassKind::kX11),
              "No window is of a known client's class.");
    EXPECT_EQ(text({{1, "SDL_app", "", "a"}, {2, "SDL_app", "", "b"}, {3, "SDL_app", "", "c"}},
                   WindowClassKind::kWindows),
              "3 windows of class SDL_app, none with a title of a known form.");
    EXPECT_EQ(text({{1, "ClassicUO", "ClassicUO", "My server"}}, WindowClassKind::kX11),
              "1 window of class ClassicUO, its title of no known form.");
    EXPECT_EQ(
        text({{1, "ClassicUO", "", "a"}, {2, "crossuo", "", "b"}}, WindowClassKind::kX11),
        "1 window of class crossuo, 1 window of class ClassicUO, none with a title of a known "
        "form.");
}

struct ProposalRow {
    const char* name;
    TopLevelWindow window;
    TableRow row;
};

TEST(ProposeRow, Table) {
    const std::vector<ProposalRow> rows{
        {"a known client under another class",
         {1, "MyUO", "myuo", "Bran - ClassicUO - 1.0.0.0"},
         {"ClassicUO", "MyUO", "", "{name} - ClassicUO - {any}", "", "ClassicUO", "no"}},
        {"known, with Enter",
         {1, "myuo.exe", "myuo.exe", "Ultima Online - Bran (Oak)"},
         {"OrionUO", "myuo.exe", "", "Ultima Online - {name} ({shard})", "", "OrionUO", "yes"}},
        {"a title of a player's own",
         {1, "ClassicUO", "ClassicUO", "Bran (Oak) HP 85/100 - My Shard 2 - ClassicUO"},
         {"My game", "ClassicUO", "", "{name} - My Shard {any} - ClassicUO", "", "My game", "no"}},
        {"statistics become one",
         {1, "game", "game", "Bran - 85/100 42/50 - Game"},
         {"My game", "game", "", "{name} - {any} - Game", "", "My game", "no"}},
        {"a title without a divider",
         {1, "game", "game", "Bran (Oak)"},
         {"My game", "game", "", "{name} ({shard})", "", "My game", "no"}},
        {"braces, bars and quotes are no fixed text",
         {1, "ga|\"me", "x", "Bran - {x} y|z \"q\" - Game"},
         {"My game", "game", "", "{name} - {any} - Game", "", "My game", "no"}},
        {"a desktop of Wine's own",
         {1, "explorer.exe", "explorer.exe", "Game - Wine desktop"},
         {"Wine desktop", "explorer.exe", "", "{name} - Wine desktop", "", "Wine desktop", "no"}},
    };
    for (const ProposalRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ProposeRow(Delivered(), row.window, WindowClassKind::kX11), row.row);
    }
}

TEST(ProposeRow, OnWindows_FillsTheOtherColumn) {
    EXPECT_THAT(ProposeRow({}, {1, "SDL_app", {}, "Bran - Game"}, WindowClassKind::kWindows),
                ElementsAre("My game", "", "SDL_app", "{name} - Game", "", "My game", "no"));
}

// Whatever the title, the row can be read back and knows the window that it is made for.
TEST(ProposeRow, KnowsItsOwnWindow) {
    for (const char* title :
         {"Bran - Game", "Bran", "Bran (Oak) - Game 3.1 beta", "a - b - c 1 2 3 - d",
          "Game - Wine desktop", "Bran - {name} | \"x\" - Game", "Ultima Online - Bran (Oak)",
          "Bran - HP 85/100, MP 42/50 - [G 4.1]", " - Game", "1 - 2", "x (y"}) {
        SCOPED_TRACE(title);
        const TopLevelWindow window{1, "game", {}, title};
        const std::string table =
            WithFirstRow("x, 0", ProposeRow(Delivered(), window, WindowClassKind::kX11));
        std::istringstream input(table);
        const GameClients read = ReadGameClients(input);
        ASSERT_FALSE(read.fault) << table << read.fault->what;
        const auto known = FindGameClient(read.rows, window, WindowClassKind::kX11);
        ASSERT_TRUE(known) << table;
        EXPECT_TRUE(known->inGame);
    }
}

}  // namespace
}  // namespace spellwick
