// The table of clients: what it may hold, which faults it names, and which titles the delivered
// rows know.
#include "link/game_clients.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using testing::ElementsAre;

GameClients Read(const std::string& text) {
    std::istringstream input(text);
    return ReadGameClients(input);
}

std::vector<GameClient> DeliveredRows() {
    const GameClients read = Read(std::string(DeliveredGameClients()));
    EXPECT_FALSE(read.fault);
    return read.rows;
}

constexpr const char* kRow = "Mine, mine, Mine, {name} - Mine, Mine, Home, yes\n";

TEST(GameClients, Delivered_HasARowForEachClient) {
    std::vector<std::string> names;
    for (const GameClient& client : DeliveredRows()) {
        names.push_back(client.name + (client.enterBehindMacro ? " yes" : " no"));
    }
    EXPECT_THAT(names, ElementsAre("OrionUO yes", "CrossUO yes", "ClassicUO no", "TazUO no"));
}

TEST(GameClients, Row_IsTakenWhole) {
    const GameClients read = Read(
        "any text, 1\nMine, mine | mine.exe, Mine, {name} - M | {name} = M, M | M{any}, Home, no");
    ASSERT_FALSE(read.fault);
    ASSERT_EQ(read.rows.size(), 1U);
    const GameClient& client = read.rows[0];
    EXPECT_EQ(client.name, "Mine");
    EXPECT_THAT(client.x11Classes, ElementsAre("mine", "mine.exe"));
    EXPECT_THAT(client.windowsClasses, ElementsAre("Mine"));
    EXPECT_EQ(client.inGame.size(), 2U);
    EXPECT_EQ(client.atLogin.size(), 2U);
    EXPECT_EQ(client.shard, "Home");
    EXPECT_FALSE(client.enterBehindMacro);
}

TEST(GameClients, Rows_MayBeBrokenOverLinesOrMayBeNone) {
    EXPECT_EQ(Read("x, 0").rows.size(), 0U);
    EXPECT_FALSE(Read("x, 0").fault);
    EXPECT_EQ(Read("x\n1\nMine\nmine\nMine\n{name} - Mine\nMine\nHome\nyes\n\n\n").rows.size(), 1U);
    EXPECT_EQ(Read("\xEF\xBB\xBFx, 1\r\nMine, mine, Mine, {name} - Mine, Mine, Home, yes\r\n")
                  .rows.size(),
              1U);
}

TEST(GameClients, Fault_NamesRowColumnAndWhatIsWrong) {
    const struct {
        const char* text;
        const char* fault;
    } rows[] = {
        {"", "GameClients.txt, first line, column 1: the file ends too early."},
        {"x", "GameClients.txt, first line, column 2: the file ends too early."},
        {"x, many", "GameClients.txt, first line, column 2: "},
        {"x, -1", "GameClients.txt, first line, column 2: no table has this count of rows."},
        {"x, 1001", "GameClients.txt, first line, column 2: no table has this count of rows."},
        {"x, 1\n", "GameClients.txt, row 1, column 1 (\"name\"): the file ends too early."},
        {"x, 2\nMine, mine, Mine, {name} - Mine, Mine, Home, yes\nOther, o",
         "GameClients.txt, row 2, column 3 (\"Windows class\"): the file ends too early."},
        {"x, 1\nMine, \"mine",
         "GameClients.txt, row 1, column 2 (\"X11 class\"): a quote is not closed."},
        {"x, 1\n, mine, Mine, {name} - M, M, Home, yes",
         "GameClients.txt, row 1, column 1 (\"name\"): the name is missing."},
        {"x, 1\nMine, , , {name} - M, M, Home, yes",
         "GameClients.txt, row 1, column 2 (\"X11 class\"): neither this nor the next column names "
         "a "
         "class."},
        {"x, 1\nMine, mine, Mine, , M, Home, yes",
         "GameClients.txt, row 1, column 4 (\"title in the game\"): the form of the title is "
         "missing."},
        {"x, 1\nMine, mine, Mine, {name - M, M, Home, yes",
         "GameClients.txt, row 1, column 4 (\"title in the game\"): a brace has no partner."},
        {"x, 1\nMine, mine, Mine, Game - {any}, M, Home, yes",
         "GameClients.txt, row 1, column 4 (\"title in the game\"): there is no {name} in \"Game - "
         "{any}\"."},
        {"x, 1\nMine, mine, Mine, {name} - M, {name}, Home, yes",
         "GameClients.txt, row 1, column 5 (\"title at the login\"): nobody is logged in there, so "
         "only "
         "{any} has a meaning."},
        {"x, 1\nMine, mine, Mine, {name} - M, M, , yes",
         "GameClients.txt, row 1, column 6 (\"shard\"): the word for an unknown shard is missing."},
        {"x, 1\nMine, mine, Mine, {name} - M, M, Home, maybe",
         "GameClients.txt, row 1, column 7 (\"Enter\"): \"maybe\" is neither yes nor no."},
        {"x, 1\nMine, mine, Mine, {name} - M, M, Home, yes\nTwo, mine",
         "GameClients.txt, row 2, column 1 (\"name\"): there are more rows than the first line "
         "says."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const GameClients read = Read(row.text);
        EXPECT_EQ(read.rows.size(), 0U) << "a table with a fault counts for nothing";
        ASSERT_TRUE(read.fault);
        EXPECT_THAT(FaultText(kGameClientsFile, *read.fault, kGameClientColumns),
                    testing::StartsWith(row.fault));
    }
}

TEST(GameClients, WithFirstRow_KeepsAllElse) {
    const TableRow more{"New", "new", "", "{name}, new", "", "Home", "no"};
    const std::string tables[] = {std::string("x, 1\n") + kRow,
                                  std::string("\"x, y\" , 1,") + kRow + "\n\n",
                                  "\xEF\xBB\xBFx\r\n1\r\n" + std::string(kRow),
                                  "x, 0",
                                  "x, 0\n",
                                  "\xEF\"x, 0\n"};
    for (const std::string& table : tables) {
        SCOPED_TRACE(table);
        const std::size_t before = Read(table).rows.size();
        const std::string text = WithFirstRow(table, more);
        const GameClients read = Read(text);
        ASSERT_FALSE(read.fault) << text;
        ASSERT_EQ(read.rows.size(), before + 1) << text;
        EXPECT_EQ(read.rows[0].name, "New");
        EXPECT_EQ(read.rows[0].inGame[0].Match("Bran, new"), (TitleFields{"Bran", ""}));
        EXPECT_EQ(before == 0 || read.rows[1].name == "Mine", true);
    }
}

struct KnownRow {
    const char* name;
    const char* x11Class;
    const char* windowsClass;
    const char* title;
    const char* client;  // null: no known client
    const char* shown;   // the common form; null at the login
};

TEST(GameClients, Delivered_KnowsEveryForm) {
    const KnownRow rows[] = {
        {"Orion", "orionuo.exe", "Orion UO Client", "Ultima Online - Bran (Oak Hill)", "OrionUO",
         "Ultima Online - Bran (Oak Hill)"},
        {"Orion, no shard", "orionuo.exe", "Orion UO Client", "Ultima Online - Bran", "OrionUO",
         "Ultima Online - Bran (OrionUO)"},
        {"Orion, list of characters", "orionuo.exe", "Orion UO Client",
         "Ultima Online - account(Oak Hill)", "OrionUO", nullptr},
        {"Orion, login", "OrionUO.exe", "Orion UO Client", "Ultima Online", "OrionUO", nullptr},
        {"Cross", "crossuo", "SDL_app", "Ultima Online - Lady Miranda of Trinsic (Oak)", "CrossUO",
         "Ultima Online - Lady Miranda of Trinsic (Oak)"},
        {"Cross, login", "crossuo", "SDL_app", "Ultima Online v7.0.95", "CrossUO", nullptr},
        {"Cross, a bracket in the name", "crossuo", "SDL_app", "Ultima Online - Bran (x) (Oak)",
         "CrossUO", "Ultima Online - Bran [x] (Oak)"},
        {"Classic", "ClassicUO", "SDL_app", "Lady Miranda of Trinsic - ClassicUO - 1.0.0.0",
         "ClassicUO", "Ultima Online - Lady Miranda of Trinsic (ClassicUO)"},
        {"Classic in Wine", "classicuo.exe", "SDL_app", "Bran - ClassicUO - 1", "ClassicUO",
         "Ultima Online - Bran (ClassicUO)"},
        {"Classic, login", "ClassicUO", "SDL_app", "ClassicUO - 1.0.0.0", "ClassicUO", nullptr},
        {"Classic, development", "ClassicUO", "SDL_app", "Bran - ClassicUO [dev] - 1.0",
         "ClassicUO", "Ultima Online - Bran (ClassicUO)"},
        {"Classic, development, login", "ClassicUO", "SDL_app", "ClassicUO [dev] - 1.0",
         "ClassicUO", nullptr},
        {"Classic with shard", "ClassicUO", "SDL_app", "Bran (Oak Hill) - ClassicUO - 1",
         "ClassicUO", "Ultima Online - Bran (Oak Hill)"},
        {"Classic with shard, development", "ClassicUO", "SDL_app",
         "Bran (Oak) - ClassicUO [dev] - 1", "ClassicUO", "Ultima Online - Bran (Oak)"},
        {"Classic with two brackets", "ClassicUO", "SDL_app", "Bran (x) (Oak) - ClassicUO - 1",
         "ClassicUO", "Ultima Online - Bran [x] (Oak)"},
        {"Classic with Razor", "ClassicUO", "SDL_app", "UO - Bran - ClassicUO - 1", "ClassicUO",
         "Ultima Online - Bran (ClassicUO)"},
        {"Classic with Razor, a divider in the name", "ClassicUO", "SDL_app",
         "UO - Bran - the Bold - ClassicUO - 1", "ClassicUO",
         "Ultima Online - Bran - the Bold (ClassicUO)"},
        {"Classic with Razor, development", "ClassicUO", "SDL_app",
         "UO - Bran - ClassicUO [dev] - 1", "ClassicUO", "Ultima Online - Bran (ClassicUO)"},
        {"a character named as the client", "ClassicUO", "SDL_app", "ClassicUO - ClassicUO - 1",
         "ClassicUO", "Ultima Online - ClassicUO (ClassicUO)"},
        {"a name with a divider, quotes and fire", "ClassicUO", "SDL_app",
         "Bran - \"x\" 🔥 - ClassicUO - 1", "ClassicUO",
         "Ultima Online - Bran - \"x\" 🔥 (ClassicUO)"},
        {"Taz", "ClassicUO", "SDL_app", "Bran - [TazUO 4.1]", "TazUO",
         "Ultima Online - Bran (TazUO)"},
        {"Taz, statistics", "ClassicUO", "SDL_app",
         "Bran - HP 85/100, MP 42/50, SP 95/100 - [TazUO 4.1]", "TazUO",
         "Ultima Online - Bran (TazUO)"},
        {"Taz, statistics and a divider in the name", "ClassicUO", "SDL_app",
         "Bran - the Bold - HP 85/100, MP 42/50, SP 95/100 - [TazUO 4.1]", "TazUO",
         "Ultima Online - Bran - the Bold (TazUO)"},
        {"Taz, login", "ClassicUO", "SDL_app", "[TazUO 4.1]", "TazUO", nullptr},
        {"Taz, at first", "ClassicUO", "SDL_app", "TazUO - 4.1", "TazUO", nullptr},
    };
    const std::vector<GameClient> clients = DeliveredRows();
    for (const KnownRow& row : rows) {
        for (const WindowClassKind kind : {WindowClassKind::kX11, WindowClassKind::kWindows}) {
            SCOPED_TRACE(row.name);
            const char* ours = kind == WindowClassKind::kX11 ? row.x11Class : row.windowsClass;
            const auto known = FindGameClient(clients, {7, ours, {}, row.title}, kind);
            ASSERT_TRUE(known);
            EXPECT_EQ(known->client->name, row.client);
            EXPECT_EQ(known->inGame, row.shown != nullptr);
            if (row.shown != nullptr) {
                EXPECT_EQ(CommonTitle(known->name,
                                      known->shard.empty() ? known->client->shard : known->shard),
                          row.shown);
            }
        }
    }
}

TEST(GameClients, ClassAndTitle_MustBothFit) {
    const std::vector<GameClient> clients = DeliveredRows();
    const auto known = [&](const char* windowClass, const char* title, WindowClassKind kind) {
        return FindGameClient(clients, {7, windowClass, {}, title}, kind).has_value();
    };
    EXPECT_FALSE(known("SDL_app", "Some other game", WindowClassKind::kWindows));
    EXPECT_FALSE(known("SDL_app", "", WindowClassKind::kWindows));
    EXPECT_FALSE(known("SDL_app", "Bran - ClassicUO - 1", WindowClassKind::kX11));
    EXPECT_FALSE(known("XTerm", "Bran - ClassicUO - 1", WindowClassKind::kX11));
    EXPECT_FALSE(known("classicuo", "Bran - ClassicUO - 1", WindowClassKind::kX11));
    EXPECT_FALSE(known("ClassicUO", "Bran", WindowClassKind::kX11));
    EXPECT_TRUE(known("sdl_APP", "Bran - ClassicUO - 1", WindowClassKind::kWindows));
    EXPECT_TRUE(known("ORIONUO.EXE", "Ultima Online - Bran (Oak)", WindowClassKind::kX11));
}

TEST(GameClients, EitherHalfOfAnX11Class_Counts) {
    EXPECT_TRUE(FindGameClient(DeliveredRows(), {7, "Other", "ClassicUO", "Bran - ClassicUO - 1"},
                               WindowClassKind::kX11));
}

TEST(GameClients, HugeTitle_IsNoClients) {
    EXPECT_FALSE(FindGameClient(DeliveredRows(),
                                {7, "ClassicUO", {}, std::string(5000, 'x') + " - ClassicUO - 1"},
                                WindowClassKind::kX11));
}

TEST(GameClients, EqualForms_GoInTheTablesOrder) {
    const GameClients read =
        Read(std::string("x, 2\n") + kRow + "Later, mine, Mine, {name} - Mine, , There, no");
    const auto known =
        FindGameClient(read.rows, {7, "mine", {}, "Bran - Mine"}, WindowClassKind::kX11);
    ASSERT_TRUE(known);
    EXPECT_EQ(known->client->name, "Mine");
}

// The worked example of docs/game-clients.md.
TEST(GameClients, RowOfTheGuide_ReadsAsItSays) {
    const GameClients read = Read(
        "\"my clients\", 1\n"
        "Ironclad, ironclad, , Ironclad {any}: {name} of {shard}, Ironclad {any}, Ironclad, no\n");
    ASSERT_FALSE(read.fault);
    const auto shown = [&](const char* title) {
        const auto known =
            FindGameClient(read.rows, {7, "ironclad", {}, title}, WindowClassKind::kX11);
        return known && known->inGame ? CommonTitle(known->name, known->shard) : "";
    };
    EXPECT_EQ(shown("Ironclad 2.4: Bran of Oak Hill"), "Ultima Online - Bran (Oak Hill)");
    EXPECT_EQ(shown("Ironclad 2.4: Lady Ash of Trinsic of Oak Hill"),
              "Ultima Online - Lady Ash of Trinsic (Oak Hill)");
    EXPECT_EQ(shown("Ironclad 2.4"), "");
}

TEST(Alternatives, AreTrimmedAndNeverEmpty) {
    EXPECT_THAT(Alternatives(" a | b c|| d "), ElementsAre("a", "b c", "d"));
    EXPECT_THAT(Alternatives(" | "), ElementsAre());
}

}  // namespace
}  // namespace spellwick
