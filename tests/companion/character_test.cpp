// Which character is in the game, and where the client keeps its files.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/companion_fixture.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/write_time.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;

class CharacterTest : public CompanionFixture {
  protected:
    fs::path Make(const char* below) const {
        fs::path folder = m_game.Path() / "Data" / "Profiles" / below;
        fs::create_directories(folder);
        return folder;
    }
    TemporaryFolder m_game;
};

TEST_F(CharacterTest, InGame_OnlyWhileAWindowShowsACharacterAndItsServer) {
    StartWithMira();
    EXPECT_EQ(Program().CharacterInGame(), "Mira Talon");
    for (const char* title : {"Ultima Online - ? (?)", ""}) {
        OpenClient(title);
        Tick(1);
        EXPECT_EQ(Program().CharacterInGame(), "") << title;
    }
    TakeLog();
}

TEST_F(CharacterTest, Folder_IsThatOfItsShard_ElseTheOneOfItsName) {
    StartWithMira();
    m_clients.programFolders = {m_game.Path()};
    EXPECT_EQ(Program().CharacterFolder(), "");
    const fs::path elsewhere = Make("me/Sonoma/Mira Talon");
    EXPECT_EQ(Program().CharacterFolder(), elsewhere);
    const fs::path atlantic = Make("me/Atlantic/Mira Talon");
    Make("me/Atlantic/Bran");
    SetWriteTime(elsewhere, fs::last_write_time(atlantic) + std::chrono::hours(1));
    EXPECT_EQ(Program().CharacterFolder(), atlantic);
    TakeLog();
}

TEST_F(CharacterTest, Folder_IsStillKnownBehindTheLogoutAndTheClientsEnd) {
    StartWithMira();
    const fs::path folder = Make("me/Atlantic/Mira Talon");
    m_clients.programFolders = {m_game.Path()};
    OpenClient("Ultima Online - ? (?)");
    Tick(1);
    EXPECT_EQ(Program().CharacterFolder(), folder);
    OpenClient("");
    m_clients.programFolders.clear();
    Tick(1);
    EXPECT_EQ(Program().CharacterFolder(), folder);
    TakeLog();
}

TEST_F(CharacterTest, Folder_WithoutAClient_IsUnknown) {
    StartWithMira();
    Make("me/Atlantic/Mira Talon");
    OpenClient("");
    Tick(1);
    m_clients.programFolders = {m_game.Path()};
    EXPECT_EQ(Program().CharacterFolder(), "");
    TakeLog();
}

}  // namespace
}  // namespace spellwick
