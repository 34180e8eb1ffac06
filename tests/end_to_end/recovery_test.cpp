// Counters survive a kill, the end of the display, and an end that cannot save.
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

class Recovery : public PlayerDesk {
  protected:
    void PrepareMira() {
        PrepareMage(kMira, 10);
        Prepare(kGlobal, {{"CurrentPlayerName", kMira}});
    }
    std::filesystem::path JournalFile() const { return StoreFile().parent_path() / "journal"; }
    // 0 too while there is no file.
    std::uintmax_t JournalSize() const {
        std::error_code ignored;
        const std::uintmax_t size = std::filesystem::file_size(JournalFile(), ignored);
        return ignored ? 0 : size;
    }
    // Nothing else can write the store until the result is closed.
    sqlite3* LockStore() const {
        sqlite3* lock = nullptr;
        EXPECT_EQ(sqlite3_open(StoreFile().c_str(), &lock), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(lock, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
        return lock;
    }
    int Silk() const { return std::stoi(Stored(kMira, "SS 0")); }
};

// SPELLWICK_KILLS in the environment sets another number of kills.
TEST_F(Recovery, KilledAtRandomMoments_LosesNoMoreThanTheLastSecond) {
    const char* wanted = std::getenv("SPELLWICK_KILLS");
    const int kills = wanted != nullptr ? std::atoi(wanted) : 8;
    std::minstd_rand random(static_cast<unsigned>(steady_clock::now().time_since_epoch().count()));
    PrepareMira();
    StartSpellwick();
    int silk = 10;
    for (int kill = 0; kill < kills; ++kill) {
        std::vector<steady_clock::time_point> credits;
        const auto end = steady_clock::now() + std::chrono::milliseconds(random() % 2500);
        m_desk->Hold(XKB_KEY_Control_L, true);
        while (steady_clock::now() < end) {
            ClickSpell(kHeal);
            credits.push_back(steady_clock::now());
            std::this_thread::sleep_for(std::chrono::milliseconds(random() % 400));
        }
        Spellwick().Signal(SIGKILL);
        const auto killed = steady_clock::now();
        m_desk->Hold(XKB_KEY_Control_L, false);
        ASSERT_TRUE(Spellwick().WaitForEnd(5s));
        StartSpellwick();
        int safe = 0;
        for (const auto credit : credits) {
            safe += killed - credit > 1s ? 1 : 0;
        }
        const int now = Silk();
        ASSERT_GE(now, silk + safe) << "kill " << kill << ", " << credits.size() << " credits";
        ASSERT_LE(now, silk + static_cast<int>(credits.size())) << "kill " << kill;
        ASSERT_EQ(Stored(kMira, "GA 0"), std::to_string(now)) << "kill " << kill;
        ASSERT_EQ(Stored(kMira, "GI 0"), std::to_string(now)) << "kill " << kill;
        ASSERT_EQ(JournalSize(), 0U) << "kill " << kill;
        silk = now;
    }
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Silk(), silk);
}

TEST_F(Recovery, AtRest_WritesNothing) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    std::this_thread::sleep_for(5500ms);
    const auto changed = std::filesystem::last_write_time(JournalFile());
    const auto size = JournalSize();
    EXPECT_GT(size, 0U);
    std::this_thread::sleep_for(2500ms);
    EXPECT_EQ(std::filesystem::last_write_time(JournalFile()), changed);
    EXPECT_EQ(JournalSize(), size);
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(JournalSize(), 0U);
}

TEST_F(Recovery, EndOfTheDisplay_SavesAsARegularEnd) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    m_desk->Session().KillServer();
    EXPECT_EQ(Spellwick().WaitForEnd(10s), 1) << Spellwick().Output();
    EXPECT_EQ(Silk(), 11);
    EXPECT_EQ(Stored(kGlobal, "WindowTop"), "600");
    EXPECT_EQ(JournalSize(), 0U);
    // TearDown looks at a keyboard that is gone.
    m_desk.reset();
}

TEST_F(Recovery, EndOfTheDisplayBehindTheBoxOfTheEnd_SavesAll) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    sqlite3* lock = LockStore();
    m_desk->AskToClose(Window());
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U) << "it asks whether to try again";
    // A toolkit that is still drawing the box may not live through the end of the display.
    m_desk->RestingPicture(box);
    sqlite3_close(lock);
    m_desk->Session().KillServer();
    EXPECT_EQ(Spellwick().WaitForEnd(10s), 1) << Spellwick().Output();
    EXPECT_EQ(Silk(), 11);
    EXPECT_EQ(JournalSize(), 0U);
    m_desk.reset();
}

TEST_F(Recovery, EndOfTheDisplayWhileTheEndIsSaving_SavesAll) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    sqlite3* lock = LockStore();
    Spellwick().Signal(SIGTERM);
    // By now the end waits for the store.
    ASSERT_TRUE(WaitUntil([this] { return m_desk->FindWindow(CaptionStart()) == 0; }));
    m_desk->Session().KillServer();
    sqlite3_close(lock);
    ASSERT_TRUE(Spellwick().WaitForEnd(10s)) << Spellwick().Output();
    EXPECT_EQ(Silk(), 11);
    EXPECT_EQ(JournalSize(), 0U);
    m_desk.reset();
}

TEST_F(Recovery, HintOfTheStart_StandsBesideTheMainWindowAndLeavesTheFocus) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    ASSERT_TRUE(WaitUntil([this] { return JournalSize() > 0; }));
    Spellwick().Signal(SIGKILL);
    ASSERT_TRUE(Spellwick().WaitForEnd(5s));
    StartSpellwick();
    std::vector<xcb_window_t> hints;
    ASSERT_TRUE(WaitUntil([&] {
        hints = Hints();
        return hints.size() == 1;
    }));
    m_desk->RestingPicture(hints[0]);
    const Area main = m_desk->AreaOf(Window());
    const Area hint = m_desk->AreaOf(hints[0]);
    EXPECT_GT(hint.width, 100);
    const int across = std::max(hint.x - main.x - main.width, main.x - hint.x - hint.width);
    const int along = std::max(hint.y - main.y - main.height, main.y - hint.y - hint.height);
    EXPECT_GE(std::max(across, along), 0) << "it covers none of the window";
    constexpr int kFrameAndGap = 60;
    EXPECT_LE(across, kFrameAndGap);
    EXPECT_LE(along, kFrameAndGap);
    EXPECT_NE(m_desk->Session().FocusedWindow(), hints[0]);
    m_desk->Click(hints[0], {10, 10});
    EXPECT_TRUE(WaitUntil([this] { return Hints().empty(); }));
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(Recovery, NoteUnderLoad_IsInTheJournalWithinASecond) {
    PrepareMira();
    StartSpellwick();
    std::array<std::unique_ptr<ChildProcess>, 4> load;
    for (auto& busy : load) {
        busy = m_desk->Session().Spawn({"sh", "-c", "while :; do :; done"});
    }
    m_desk->Hold(XKB_KEY_Control_L, true);
    ClickSpell(kHeal);
    m_desk->Hold(XKB_KEY_Control_L, false);
    // Half a second until the note, and what the programs beside it take.
    EXPECT_TRUE(WaitUntil([this] { return JournalSize() > 0; }, 1s));
    for (const auto& busy : load) {
        busy->Signal(SIGKILL);
        busy->WaitForEnd(5s);
    }
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Silk(), 11);
}

TEST_F(Recovery, DiskThatTakesSecondsForASync_HoldsNoClickUp) {
    PrepareMira();
    setenv("LD_PRELOAD", SLOW_DISK, 1);
    StartSpellwick();
    unsetenv("LD_PRELOAD");
    Credit(kHeal);
    const auto isMarked = [this](const char* mark) {
        return std::filesystem::exists(JournalFile().string() + mark);
    };
    ASSERT_TRUE(WaitUntil([&] { return isMarked(".begun"); }, 10s));
    const std::uintmax_t before = JournalSize();
    m_desk->Hold(XKB_KEY_Control_L, true);
    ClickSpell(kHeal);
    m_desk->Hold(XKB_KEY_Control_L, false);
    EXPECT_TRUE(WaitUntil([&] { return JournalSize() > before; }, 2s));
    EXPECT_TRUE(WaitUntil([&] { return isMarked(".folder"); }, 10s)) << "the name is new in it";
    Spellwick().Signal(SIGKILL);
    ASSERT_TRUE(Spellwick().WaitForEnd(10s));
    StartSpellwick();
    EXPECT_EQ(Silk(), 12);
}

TEST_F(Recovery, EndSignalThatCannotSave_EndsWithin5SecondsAndKeepsTheJournal) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    sqlite3* lock = LockStore();
    const auto asked = steady_clock::now();
    Spellwick().Signal(SIGTERM);
    EXPECT_EQ(Spellwick().WaitForEnd(10s), 3);
    EXPECT_LT(steady_clock::now() - asked, 5s);
    EXPECT_EQ(m_desk->FindWindow("Spellwick"), 0U);
    EXPECT_THAT(Spellwick().Output(), testing::HasSubstr("without saving"));
    sqlite3_close(lock);
    EXPECT_EQ(Silk(), 10);
    StartSpellwick();
    EXPECT_EQ(Silk(), 11);
}

TEST_F(Recovery, SecondEndSignal_EndsTheProgramAtOnce) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    sqlite3* lock = LockStore();
    Spellwick().Signal(SIGTERM);
    std::this_thread::sleep_for(300ms);
    EXPECT_TRUE(Spellwick().Runs()) << "it waits for the store";
    const auto asked = steady_clock::now();
    Spellwick().Signal(SIGTERM);
    EXPECT_EQ(Spellwick().WaitForEnd(10s), 128 + SIGTERM);
    EXPECT_LT(steady_clock::now() - asked, 500ms);
    sqlite3_close(lock);
    StartSpellwick();
    EXPECT_EQ(Silk(), 11) << "the journal had it";
}

TEST_F(Recovery, ClosedWhileTheStoreIsLocked_TryAgainSaves) {
    PrepareMira();
    StartSpellwick();
    Credit(kHeal);
    sqlite3* lock = LockStore();
    m_desk->AskToClose(Window());
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U);
    m_desk->RestingPicture(box);
    sqlite3_close(lock);
    m_desk->Tap(XKB_KEY_Return);
    EXPECT_EQ(Spellwick().WaitForEnd(10s), 0);
    EXPECT_EQ(Silk(), 11);
}

TEST_F(Recovery, EndSignalWhileABoxOfTheStartStands_EndsAndSavesNothing) {
    PrepareMira();
    const std::filesystem::path folder = m_desk->Session().Folder() / "elsewhere";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(Programs() / "spellwick", folder / "spellwick");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const auto program = m_desk->Session().Spawn({(folder / "spellwick").string()});
        const xcb_window_t box = m_desk->Session().WaitForWindow("Missing File!");
        ASSERT_NE(box, 0U) << program->Output();
        program->Signal(signal);
        EXPECT_EQ(program->WaitForEnd(5s), 0) << signal;
    }
    EXPECT_EQ(StoredSection(kGlobal).size(), 3U) << "what was prepared";
}

TEST_F(Recovery, SpellTableThatIsAPipe_IsABadTable) {
    const std::filesystem::path folder = m_desk->Session().Folder() / "elsewhere";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(Programs() / "spellwick", folder / "spellwick");
    ASSERT_EQ(mkfifo((folder / "SpellData.txt").c_str(), 0600), 0);
    const auto program = m_desk->Session().Spawn({(folder / "spellwick").string()});
    const xcb_window_t box = m_desk->Session().WaitForWindow("Missing File");
    ASSERT_NE(box, 0U) << program->Output();
    m_desk->RestingPicture(box);
    m_desk->Tap(XKB_KEY_Return);
    EXPECT_EQ(program->WaitForEnd(5s), 2);
}

}  // namespace
}  // namespace spellwick::testing_support
