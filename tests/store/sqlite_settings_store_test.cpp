#include "platform/linux/sqlite_settings_store.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "store/section_name.h"
#include "store/settings_io.h"
#include "tests/store/sqlite_test_tools.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class SqliteStoreTest : public testing::Test {
  protected:
    std::filesystem::path File() const { return folder.Path() / "settings.db"; }

    TemporaryFolder folder;
    RecordingView view;
};

TEST_F(SqliteStoreTest, NewStore_HasTheOneTableThatOthersRead) {
    const auto store = OpenWell(folder.Path());
    ASSERT_TRUE(store->Apply({{"Settings", "RegYellow", "3"}}).ok);
    RawDatabase raw(File());
    EXPECT_EQ(raw.Query("SELECT application, section, key, value FROM setting"),
              (Rows{{"Spellwick", "Settings", "RegYellow", "3"}}));
    EXPECT_EQ(raw.Query("SELECT name, type, pk FROM pragma_table_info('setting') ORDER BY cid"),
              (Rows{{"application", "TEXT", "1"},
                    {"section", "TEXT", "2"},
                    {"key", "TEXT", "3"},
                    {"value", "TEXT", "0"}}));
    EXPECT_EQ(raw.Query("SELECT name FROM sqlite_master"), (Rows{{"setting"}}));
    EXPECT_EQ(raw.Query("PRAGMA journal_mode"), (Rows{{"wal"}}));
}

TEST_F(SqliteStoreTest, TableMadeByHand_IsUsedAsItIs) {
    {
        RawDatabase raw(File());
        raw.Run(
            "CREATE TABLE setting(application TEXT, section TEXT, key TEXT, value TEXT, "
            "PRIMARY KEY(application, section, key))");
        raw.Run(
            "INSERT INTO setting VALUES('Spellwick', 'Settings', 'URL Mira', 'x'), "
            "('Another', 'Settings', 'URL Mira', 'y'), ('Spellwick', 'Mira', 'Magery', 77)");
    }
    const auto store = OpenWell(folder.Path());
    EXPECT_EQ(store->Read("Settings", "URL Mira"), "x");
    EXPECT_EQ(store->Read("Mira", "Magery"), "77");
    ASSERT_TRUE(
        store->Apply({{"Mira", "Magery", "78"}, {"Settings", "URL Mira", std::nullopt}}).ok);
    EXPECT_EQ(store->Read("Mira", "Magery"), "78");
    EXPECT_FALSE(store->Read("Settings", "URL Mira").has_value());
    EXPECT_EQ(RawDatabase(File()).Query("SELECT value FROM setting WHERE application = 'Another'"),
              (Rows{{"y"}}));
}

TEST_F(SqliteStoreTest, SavedState_ComesBackFromTheFile) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        SharedState saved = StartedState();
        FillPlayer(saved, seed);
        FillGlobals(saved, seed);
        saved.CurrentPlayerName = "player " + std::to_string(seed);
        SaveAll(saved, *OpenWell(folder.Path()), view);
        SharedState loaded = StartedState();
        const auto store = OpenWell(folder.Path());
        SettingsIo(loaded, *store, view).LoadGlobalSettings();
        ASSERT_EQ(PlayerDifferences(saved, loaded), "") << "seed " << seed;
        ASSERT_EQ(GlobalDifferences(saved, loaded), "") << "seed " << seed;
    }
}

TEST_F(SqliteStoreTest, AnyText_ComesBackByteForByte) {
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
    }
    const std::vector<std::string> texts{"",
                                         " ",
                                         "it's \"quoted\" [here]",
                                         "'; DROP TABLE setting; --",
                                         "\xF0\x9F\x94\xA5\xF0\x9F\xA7\x99\xE2\x80\x8D",
                                         "two\nlines\r\n",
                                         std::string("a\0b\0", 4),
                                         std::string(1, '\0'),
                                         "\xFF\xC0\xAF\xED\xA0\x80",
                                         allBytes,
                                         std::string(300, '/'),
                                         std::string(5000, '('),
                                         std::string(1000000, 'x')};
    {
        const auto store = OpenWell(folder.Path());
        for (const std::string& text : texts) {
            ASSERT_TRUE(store->Apply({{"value", "k" + text, text}, {"s" + text, "key", "v"}}).ok);
        }
    }
    const auto store = OpenWell(folder.Path());
    EXPECT_EQ(store->ReadSection("value").size(), texts.size());
    for (const std::string& text : texts) {
        EXPECT_EQ(store->Read("value", "k" + text), text);
        EXPECT_EQ(store->Read("s" + text, "key"), "v");
    }
    EXPECT_EQ(store->Sections().size(), texts.size() + 1);
}

TEST_F(SqliteStoreTest, OddPlayerNames_ComeBackAsTheyWere) {
    const std::vector<std::string> names{"Settings",
                                         "=Settings",
                                         "a/b\\c '\"[](",
                                         "\xF0\x9F\xA7\x99 \xD7\xA9\xD7\x9C",
                                         std::string(300, 'n'),
                                         std::string(5000, ')')};
    SharedState state = StartedState();
    const auto store = OpenWell(folder.Path());
    SettingsIo io(state, *store, view);
    for (std::size_t i = 0; i < names.size(); ++i) {
        state.Magery = static_cast<i16>(i + 1);
        ASSERT_TRUE(io.SavePlayerSettings(names[i]).ok);
    }
    EXPECT_THAT(PlayerNames(*store), testing::UnorderedElementsAreArray(names));
    for (std::size_t i = 0; i < names.size(); ++i) {
        io.LoadPlayerSettings(names[i]);
        EXPECT_EQ(state.Magery, static_cast<i16>(i + 1)) << names[i];
    }
}

TEST_F(SqliteStoreTest, KeysAndSections_CompareExactly) {
    const auto store = OpenWell(folder.Path());
    ASSERT_TRUE(store
                    ->Apply({{"Mira", "Magery", "1"},
                             {"mira", "Magery", "2"},
                             {"Mira ", "Magery", "3"},
                             {"Mira", "magery", "4"}})
                    .ok);
    EXPECT_EQ(store->Read("Mira", "Magery"), "1");
    EXPECT_EQ(store->Read("mira", "Magery"), "2");
    EXPECT_EQ(store->Read("Mira ", "Magery"), "3");
    EXPECT_FALSE(store->Read("MIRA", "Magery").has_value());
    EXPECT_EQ(store->ReadSection("Mira"), (SectionValues{{"Magery", "1"}, {"magery", "4"}}));
}

TEST_F(SqliteStoreTest, RemovedKeysAndSections_AreGone) {
    const auto store = OpenWell(folder.Path());
    ASSERT_TRUE(
        store->Apply({{"a", "1", "x"}, {"a", "2", "x"}, {"b", "1", "x"}, {"c", "1", "x"}}).ok);
    ASSERT_TRUE(store->Apply({{"a", "1", std::nullopt}, {"a", "never", std::nullopt}}).ok);
    ASSERT_TRUE(store->RemoveSection("b").ok);
    ASSERT_TRUE(store->RemoveSection("never").ok);
    EXPECT_EQ(store->ReadSection("a"), (SectionValues{{"2", "x"}}));
    EXPECT_THAT(store->Sections(), ElementsAre("a", "c"));
}

TEST_F(SqliteStoreTest, LockedByAnother_SaysSoKeepsTheOldDataAndSavesTheNextTime_Long) {
    const auto store = OpenWell(folder.Path());
    ASSERT_TRUE(store->Apply({{"Mira", "Magery", "1"}}).ok);
    RawDatabase other(File());
    other.Run("BEGIN IMMEDIATE");
    const StoreResult locked = store->Apply({{"Mira", "Magery", "2"}});
    EXPECT_FALSE(locked.ok);
    EXPECT_THAT(locked.trouble, HasSubstr("Another program is using the settings"));
    EXPECT_EQ(store->Read("Mira", "Magery"), "1");  // reading goes on meanwhile
    EXPECT_FALSE(store->RemoveSection("Mira").ok);
    other.Run("ROLLBACK");
    EXPECT_TRUE(store->Apply({{"Mira", "Magery", "3"}}).ok);
    EXPECT_EQ(store->Read("Mira", "Magery"), "3");
}

TEST_F(SqliteStoreTest, BrieflyLocked_WaitsAndSaves) {
    const auto store = OpenWell(folder.Path());
    RawDatabase other(File());
    other.Run("BEGIN IMMEDIATE");
    std::thread release([&other] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        other.Run("ROLLBACK");
    });
    EXPECT_TRUE(store->Apply({{"Mira", "Magery", "2"}}).ok);
    release.join();
}

TEST_F(SqliteStoreTest, TwoProcesses_WriteTheSameStore_Long) {
    constexpr int kSaves = 150;
    const auto work = [this](const std::string& player) -> std::string {
        const OpenedStore opened =
            OpenSettingsStore(folder.Path(), std::chrono::system_clock::now());
        SharedState state = StartedState();
        SettingsIo io(state, *opened.store, view);
        for (int save = 1; save <= kSaves; ++save) {
            FillPlayer(state, static_cast<unsigned>(save));
            const StoreResult result = io.SavePlayerSettings(player);
            if (!result.ok) {
                return result.trouble;
            }
        }
        return opened.trouble;
    };
    const auto there = StartChild([&] { return work("there"); });
    const auto here = StartChild([&] { return work("here"); });
    EXPECT_EQ(here(), "");
    EXPECT_EQ(there(), "");
    SharedState last = StartedState();
    FillPlayer(last, kSaves);
    const auto store = OpenWell(folder.Path());
    for (const char* player : {"here", "there"}) {
        SharedState loaded = StartedState();
        SettingsIo(loaded, *store, view).LoadPlayerSettings(player);
        EXPECT_EQ(PlayerDifferences(last, loaded), "") << player;
    }
}

TEST_F(SqliteStoreTest, SecondProcess_SeesWhatTheFirstSaved) {
    const auto store = OpenWell(folder.Path());
    ASSERT_TRUE(store->Apply({{"Mira", "Magery", "1"}}).ok);
    const std::string seen = InChild([this] {
        const OpenedStore opened =
            OpenSettingsStore(folder.Path(), std::chrono::system_clock::now());
        if (!opened.store->Apply({{"Mira", "Necro", "2"}}).ok) {
            return std::string("not saved");
        }
        return opened.store->Read("Mira", "Magery").value_or("nothing");
    });
    EXPECT_EQ(seen, "1");
    EXPECT_EQ(store->Read("Mira", "Necro"), "2");
}

TEST_F(SqliteStoreTest, NoSpaceForTheFile_SaysSoKeepsTheOldDataAndSavesTheNextTime) {
    const std::string report = InChild([this]() -> std::string {
        signal(SIGXFSZ, SIG_IGN);
        const OpenedStore opened =
            OpenSettingsStore(folder.Path(), std::chrono::system_clock::now());
        SettingsStore& store = *opened.store;
        if (!opened.trouble.empty() || !store.Apply({{"Mira", "Magery", "1"}}).ok) {
            return "no store";
        }
        const std::string large(3000000, 'x');
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlim_t before = limit.rlim_cur;
        limit.rlim_cur = 500000;
        setrlimit(RLIMIT_FSIZE, &limit);
        std::string answer;
        for (int attempt = 0; attempt < 2; ++attempt) {
            const StoreResult full =
                store.Apply({{"Mira", "Magery", "2"}, {"Mira", "Bag 0", large}});
            answer += full.ok ? "saved;" : "refused;";
            answer += full.trouble.find("unharmed") != std::string::npos ? "told;" : "untold;";
            answer += store.Read("Mira", "Magery").value_or("none") + ";";
        }
        limit.rlim_cur = before;
        setrlimit(RLIMIT_FSIZE, &limit);
        answer += store.Apply({{"Mira", "Magery", "3"}, {"Mira", "Bag 0", large}}).ok ? "saved"
                                                                                      : "refused";
        return answer;
    });
    EXPECT_EQ(report, "refused;told;1;refused;told;1;saved");
    EXPECT_EQ(OpenWell(folder.Path())->Read("Mira", "Magery"), "3");
}

TEST_F(SqliteStoreTest, FileTakenAwayMeanwhile_TheNextSaveMakesANewOne) {
    const auto store = OpenWell(folder.Path());
    ASSERT_TRUE(store->Apply({{"Mira", "Magery", "1"}}).ok);
    std::filesystem::rename(File(), folder.Path() / "elsewhere.db");
    ASSERT_TRUE(store->Apply({{"Mira", "Magery", "2"}}).ok);
    EXPECT_EQ(RawDatabase(File()).Query("SELECT value FROM setting"), (Rows{{"2"}}));
}

TEST_F(SqliteStoreTest, SectionThatCannotBeRead_IsNotOverwritten) {
    {
        const auto store = OpenWell(folder.Path());
        SharedState state = StartedState();
        FillPlayer(state, 1);
        ASSERT_TRUE(SettingsIo(state, *store, view).SavePlayerSettings("player").ok);
    }
    RawDatabase(File()).Run(
        "WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 999) "
        "INSERT INTO setting SELECT application, section || i, key, value || zeroblob(30) "
        "FROM n, setting");
    std::string bytes = BytesOf(File());
    for (std::size_t at = 8192; at < bytes.size(); ++at) {
        bytes[at] = '\xEE';
    }
    WriteFile(File(), bytes);
    // Too large to be checked completely at the start.
    const auto store = OpenWell(folder.Path());
    SharedState state = StartedState();
    SettingsIo io(state, *store, view);
    io.LoadPlayerSettings("player550");
    const StoreResult result = io.SavePlayerSettings("player550");
    EXPECT_FALSE(result.ok);
    EXPECT_THAT(result.trouble, HasSubstr("not overwritten"));
    EXPECT_TRUE(BytesOf(File()) == bytes);
}

TEST_F(SqliteStoreTest, NotConnected_ReadsNothing) {
    const SqliteSettingsStore store(File());
    EXPECT_FALSE(store.Read("Mira", "Magery").has_value());
    EXPECT_TRUE(store.ReadSection("Mira").empty());
    EXPECT_TRUE(store.Sections().empty());
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(SqliteStoreTest, TenThousandProfiles_AreListedAndRead) {
    SharedState saved = StartedState();
    FillPlayer(saved, 8);
    const auto store = OpenWell(folder.Path());
    ASSERT_TRUE(SettingsIo(saved, *store, view).SavePlayerSettings("player 10000").ok);
    RawDatabase(File()).Run(
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 9999) "
        "INSERT INTO setting SELECT 'Spellwick', printf('player %05d', i), k.value, '1' "
        "FROM n, json_each('[\"Bag 0\", \"Magery\", \"Spellbook 1\", \"User1\"]') AS k");
    const std::vector<std::string> names = PlayerNames(*store);
    ASSERT_EQ(names.size(), 10001U);
    EXPECT_EQ(names.front(), "player 00000");
    EXPECT_EQ(names[9999], "player 09999");
    SharedState loaded = StartedState();
    SettingsIo io(loaded, *store, view);
    io.LoadPlayerSettings("player 10000");
    EXPECT_EQ(PlayerDifferences(saved, loaded), "");
    io.LoadPlayerSettings("player 00000");
    EXPECT_EQ(loaded.BagName(0), "1");
}

TEST_F(SqliteStoreTest, WriteThatFailsInTheMiddle_LeavesTheStoreOpenToOthers) {
    SqliteSettingsStore store(File());
    ASSERT_EQ(store.Connect(), StoreState::kReady);
    ASSERT_TRUE(store.Apply({{"Bran", "MR 0", "50"}}).ok);
    RawDatabase raw(File());
    raw.Run(
        "CREATE TRIGGER refuse BEFORE INSERT ON setting WHEN NEW.key = 'SA 0' "
        "BEGIN SELECT RAISE(FAIL, 'refused'); END");
    EXPECT_FALSE(store.Apply({{"Bran", "MR 0", "49"}, {"Bran", "SA 0", "1"}}).ok);
    // An open transaction would keep every other writer out.
    raw.Run("INSERT INTO setting VALUES('Spellwick', 'Bran', 'BM 0', '7')");
    EXPECT_EQ(store.Read("Bran", "MR 0"), "50");
    EXPECT_TRUE(store.Apply({{"Bran", "MR 0", "48"}}).ok);
    EXPECT_EQ(store.Read("Bran", "MR 0"), "48");
}

TEST_F(SqliteStoreTest, Copies_HoldEverythingAndFiveAreKept) {
    using namespace std::chrono;
    SqliteSettingsStore store(File());
    ASSERT_EQ(store.Connect(), StoreState::kReady);
    const system_clock::time_point start = sys_days{2026y / 11 / 22} + 12h;
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(store.Apply({{"Bran", "MR 0", std::to_string(i)}}).ok);
        ASSERT_TRUE(store.KeepCopy(start + hours(24 * (i / 2))).ok) << "two of each time";
    }
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        if (entry.path().filename().string().starts_with("settings.db.copy-")) {
            names.push_back(entry.path().string());
        }
    }
    std::ranges::sort(names);
    ASSERT_EQ(names.size(), 5U);
    EXPECT_EQ(RawDatabase(names.back()).Query("SELECT * FROM setting"),
              (Rows{{"Spellwick", "Bran", "MR 0", "7"}}));
    EXPECT_EQ(RawDatabase(names.front()).Query("SELECT value FROM setting"), (Rows{{"3"}}));
    EXPECT_TRUE(names.back().ends_with("-2")) << names.back();
}

TEST_F(SqliteStoreTest, CopyThatCannotBeMade_SaysSo) {
    SqliteSettingsStore store(File());
    ASSERT_EQ(store.Connect(), StoreState::kReady);
    EXPECT_TRUE(SqliteSettingsStore({}).KeepCopy({}).ok) << "in memory there is nothing to copy";
    const std::filesystem::path moved = folder.Path() / "moved";
    std::filesystem::create_directory(moved);
    const std::filesystem::path linked = moved / "settings.db";
    SqliteSettingsStore gone(linked);
    ASSERT_EQ(gone.Connect(), StoreState::kReady);
    std::filesystem::remove_all(moved);
    const StoreResult result = gone.KeepCopy({});
    EXPECT_FALSE(result.ok);
    EXPECT_NE(result.trouble, "");
}

}  // namespace
}  // namespace spellwick
