// The table in use, the player's own, and what the player is told about the clients.
#include "companion/game_choice.h"

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/client_watch.h"
#include "tests/support/file_bytes.h"
#include "tests/support/recording_client_windows.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class GameChoiceTest : public testing::Test {
  protected:
    void WriteOwn(const std::string& text) {
        std::ofstream(*m_choice.OwnTable(), std::ios::binary) << text;
    }
    std::string Own() const { return BytesOf(*m_choice.OwnTable()); }
    void Show(const std::string& windowClass, const std::string& title) {
        m_real.windows = {{.handle = 8, .windowClass = windowClass, .title = title}};
        m_watch.ReadClient();
        m_watch.ParseClientTitle();
    }

    TemporaryFolder m_folder;
    RecordingClientWindows m_real;
    TranslatedWindows m_windows{m_real, {}};
    SharedState m_state;
    ClientWatch m_watch{m_state, m_windows};
    GameChoice m_choice{
        m_state, m_windows, {.folder = m_folder.Path() / "settings", .wayland = false}};
};

constexpr const char* kMine = "x, 1\nMine, mine, Mine, {name} - Mine, Mine, Home, yes\n";

TEST_F(GameChoiceTest, WithoutAnOwnTable_TheDeliveredOneCounts) {
    EXPECT_EQ(m_choice.LoadTable(), "");
    EXPECT_EQ(m_windows.Clients().size(), 4U);
    EXPECT_FALSE(std::filesystem::exists(*m_choice.OwnTable()));
}

TEST_F(GameChoiceTest, OwnTable_CountsInstead) {
    std::filesystem::create_directories(m_folder.Path() / "settings");
    WriteOwn(kMine);
    EXPECT_EQ(m_choice.LoadTable(), "");
    ASSERT_EQ(m_windows.Clients().size(), 1U);
    EXPECT_EQ(m_windows.Clients()[0].name, "Mine");
}

TEST_F(GameChoiceTest, OwnTableWithAFault_LeavesTheClassicClientAlone) {
    std::filesystem::create_directories(m_folder.Path() / "settings");
    WriteOwn("x, 1\nMine, mine, Mine, {name} - Mine, Mine, Home, perhaps");
    EXPECT_EQ(m_choice.LoadTable(),
              "GameClients.txt, row 1, column 7 (\"Enter\"): \"perhaps\" is neither yes nor no.");
    EXPECT_THAT(m_windows.Clients(), IsEmpty());
    Show("mine", "Bran - Mine");
    EXPECT_THAT(m_choice.FoundText(), HasSubstr("column 7"));
    WriteOwn(kMine);
    EXPECT_EQ(m_choice.LoadTable(), "");
}

TEST_F(GameChoiceTest, OwnTableThatIsNoFile_IsAFault) {
    std::filesystem::create_directories(*m_choice.OwnTable());
    EXPECT_EQ(m_choice.LoadTable(), "GameClients.txt: it is no file of a table's size.");
    EXPECT_THAT(m_windows.Clients(), IsEmpty());
}

TEST_F(GameChoiceTest, Found_SaysWhichClientAndWhoIsLoggedIn) {
    m_choice.LoadTable();
    Show("ClassicUO", "Bran - ClassicUO - 1.0");
    EXPECT_EQ(m_choice.FoundText(),
              "ClassicUO\nTitle: Bran - ClassicUO - 1.0\nCharacter: Bran   Shard: ClassicUO");
    Show("ClassicUO", "ClassicUO - 1.0");
    EXPECT_EQ(m_choice.FoundText(), "ClassicUO\nTitle: ClassicUO - 1.0\nNobody is logged in.");
    Show("Ultima Online", "Ultima Online - Mira (Oak)");
    EXPECT_EQ(m_choice.FoundText(),
              "Classic client\nTitle: Ultima Online - Mira (Oak)\nCharacter: Mira   Shard: Oak");
    Show("Ultima Online", "Ultima Online");
    EXPECT_THAT(m_choice.FoundText(), EndsWith("Nobody is logged in."));
}

TEST_F(GameChoiceTest, NothingFound_SaysWhy) {
    m_choice.LoadTable();
    Show("ClassicUO", "A server of its own");
    EXPECT_EQ(m_choice.FoundText(),
              "No game is found. 1 window of class ClassicUO, its title of no known form.");
}

TEST_F(GameChoiceTest, WineDesktop_IsNoticed) {
    m_choice.LoadTable();
    Show("XTerm", "a shell");
    EXPECT_EQ(m_choice.NoticeText(), "");
    Show("explorer.exe", "Game - Wine desktop");
    EXPECT_THAT(m_choice.NoticeText(),
                StartsWith("\"Game - Wine desktop\" is a desktop of Wine's own"));
    EXPECT_EQ(m_choice.AddRow(m_choice.Propose(m_choice.Windows()[0])), "");
    Show("explorer.exe", "Game - Wine desktop");
    EXPECT_EQ(m_state.ClientTitle, "Ultima Online - Game (Wine desktop)");
}

TEST_F(GameChoiceTest, Wayland_IsNoticedWhenNoGameIsThere) {
    GameChoice choice(m_state, m_windows, {.folder = std::nullopt, .wayland = true});
    choice.LoadTable();
    Show("XTerm", "a shell");
    EXPECT_THAT(choice.NoticeText(), HasSubstr("SDL_VIDEO_DRIVER=x11"));
    Show("ClassicUO", "Bran - ClassicUO - 1.0");
    EXPECT_EQ(choice.NoticeText(), "");
}

TEST_F(GameChoiceTest, Windows_AreAllButOurOwnAndThoseWithoutATitle) {
    m_state.MainWindowHandle = 70;
    m_real.windows = {{.handle = 70, .windowClass = "spellwick", .title = "Spellwick"},
                      {.handle = 8, .windowClass = "game", .title = "Game"},
                      {.handle = 9, .windowClass = "panel", .title = ""}};
    const auto windows = m_choice.Windows();
    ASSERT_EQ(windows.size(), 1U);
    EXPECT_EQ(windows[0].handle, 8U);
}

TEST_F(GameChoiceTest, AddRow_BeginsWithACopyAndCountsAtOnce) {
    m_choice.LoadTable();
    EXPECT_EQ(m_choice.AddRow({"Mine", "game", "", "{name}, the {any}", "", "Home", "yes"}), "");
    EXPECT_EQ(m_windows.Clients().size(), 5U);
    EXPECT_THAT(Own(), HasSubstr("TazUO"));
    Show("game", "Bran, the 3rd");
    EXPECT_EQ(m_state.ClientTitle, "Ultima Online - Bran (Home)");
    ASSERT_NE(m_windows.Current(), nullptr);
    EXPECT_TRUE(m_windows.Current()->enterBehindMacro);
    EXPECT_EQ(m_choice.AddRow({"Two", "two", "", "{name} - Two", "", "Home", "no"}), "");
    EXPECT_EQ(m_windows.Clients().size(), 6U);
    EXPECT_FALSE(std::filesystem::exists(m_choice.OwnTable()->string() + ".new"));
}

TEST_F(GameChoiceTest, AddRow_WithAFault_ChangesNothing) {
    m_choice.LoadTable();
    EXPECT_EQ(m_choice.AddRow({"Mine", "game", "", "no field", "", "Home", "yes"}),
              "GameClients.txt, row 1, column 4 (\"title in the game\"): there is no {name} in "
              "\"no field\".");
    EXPECT_EQ(Own(), DeliveredGameClients());
    WriteOwn("x, 7");
    EXPECT_THAT(m_choice.AddRow({"Mine", "game", "", "{name} - x", "", "Home", "yes"}),
                HasSubstr("row 1, column 1"));
    EXPECT_EQ(Own(), "x, 7");
}

TEST_F(GameChoiceTest, WithoutAFolder_NothingIsWritten) {
    GameChoice choice(m_state, m_windows, {});
    EXPECT_EQ(choice.LoadTable(), "");
    EXPECT_EQ(choice.AddRow({"Mine", "game", "", "{name} - x", "", "Home", "yes"}),
              "There is no folder for the settings.");
}

}  // namespace
}  // namespace spellwick
