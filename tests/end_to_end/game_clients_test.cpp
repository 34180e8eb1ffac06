// Windows of today's clients in front of the real program: each is found, its character and shard
// come out of the title, and what changes in it makes no profile.
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/sqlite_settings_store.h"
#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

class GameClientsInTheProgram : public PlayerDesk {
  protected:
    bool WaitCaption(const std::string& character, const std::string& server) {
        const std::string expected =
            CaptionStart() + "   Character: " + character + "   Server: " + server;
        return WaitUntil([&] { return m_desk->Session().WindowName(Window()) == expected; });
    }

    // The sections of all characters.
    std::vector<std::string> Profiles() const {
        std::vector<std::string> profiles;
        SqliteSettingsStore store(StoreFile());
        EXPECT_EQ(store.Connect(), StoreState::kReady);
        for (const std::string& section : store.Sections()) {
            if (section.starts_with("Ultima Online - ")) {
                profiles.push_back(section);
            }
        }
        return profiles;
    }
};

TEST_F(GameClientsInTheProgram, EveryForm_IsFoundWithNameAndShard) {
    const struct {
        const char* windowClass;
        const char* title;
        const char* character;
        const char* shard;
    } rows[] = {
        {"client.exe", "Ultima Online - Lady Miranda of Trinsic (Oak Hill)",
         "Lady Miranda of Trinsic", "Oak Hill"},
        {"orionuo.exe", "Ultima Online - Bran Ash (Oak Hill)", "Bran Ash", "Oak Hill"},
        {"crossuo", "Ultima Online - Mira (Atlantic)", "Mira", "Atlantic"},
        {"ClassicUO", "Lady Miranda of Trinsic - ClassicUO - 1.0.0.0", "Lady Miranda of Trinsic",
         "ClassicUO"},
        {"ClassicUO", "Bran - the Bold (Oak Hill) - ClassicUO - 1.0.0.0", "Bran - the Bold",
         "Oak Hill"},
        {"ClassicUO", "UO - Zoe - ClassicUO - 1.0.0.0", "Zoe", "ClassicUO"},
        {"classicuo.exe", "Wil - ClassicUO [dev] - 1.0.0.0", "Wil", "ClassicUO"},
        {"ClassicUO", "Ash - HP 85/100, MP 42/50, SP 95/100 - [TazUO 4.1.0]", "Ash", "TazUO"},
    };
    StartSpellwick();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title);
        const xcb_window_t game =
            m_desk->Session().MakeWindow(row.windowClass, row.windowClass, row.title);
        EXPECT_TRUE(WaitCaption(row.character, row.shard))
            << m_desk->Session().WindowName(Window());
        m_desk->Session().DestroyWindow(game);
    }
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(GameClientsInTheProgram, StatisticsAndLogin_MakeNoProfile) {
    const auto title = [](int points) {
        const std::string hits = std::to_string(points);
        return "Ash - HP " + hits + "/100, MP 42/50, SP 95/100 - [TazUO 4.1.0]";
    };
    XSession& session = m_desk->Session();
    const xcb_window_t game = session.MakeWindow("ClassicUO", "ClassicUO", "[TazUO 4.1.0]");
    StartSpellwick();
    session.SetWindowName(game, title(100));
    ASSERT_TRUE(WaitCaption("Ash", "TazUO"));
    // The watch looks once a second; what it does not see makes no profile either.
    for (int change = 0; change < 100; ++change) {
        session.SetWindowName(game, title(change));
        std::this_thread::sleep_for(std::chrono::milliseconds(80));
    }
    session.SetWindowName(game, "[TazUO 4.1.0]");
    ASSERT_TRUE(WaitCaption("?", "?"));
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_THAT(Profiles(), testing::ElementsAre("Ultima Online - Ash (TazUO)"));
}

TEST_F(GameClientsInTheProgram, OwnTableWithAFault_IsToldOnceAndTheProgramGoesOn) {
    std::filesystem::create_directories(StoreFile().parent_path());
    std::ofstream(StoreFile().parent_path() / "GameClients.txt")
        << "x, 1\nMine, mine, Mine, {name - Mine, Mine, Home, yes\n";
    XSession& session = m_desk->Session();
    const xcb_window_t other = session.MakeWindow("mine", "mine", "Bran - Mine");
    ASSERT_NE(other, 0U);
    StartSpellwickOverBox();
    session.MakeWindow("Ultima Online", "Ultima Online", "Ultima Online - Mira (Oak)");
    EXPECT_TRUE(WaitCaption("Mira", "Oak"));
    EXPECT_EQ(CloseSpellwick(), 0);
}

}  // namespace
}  // namespace spellwick::testing_support
