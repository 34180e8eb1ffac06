#include <gtest/gtest.h>

#include "platform/linux/open_settings_store.h"
#include "platform/linux/sqlite_handles.h"
#include "store/section_name.h"
#include "store/settings_io.h"
#include "store/text_forms.h"
#include "tests/store/store_test_tools.h"

namespace spellwick {
namespace {

using Names = std::vector<std::string>;

std::unique_ptr<SettingsStore> OpenWell(const std::filesystem::path& folder) {
    OpenedStore opened = OpenSettingsStore(folder, std::chrono::system_clock::now());
    EXPECT_EQ(opened.trouble, "");
    EXPECT_FALSE(opened.keptAside.has_value());
    return std::move(opened.store);
}

std::vector<Names> Query(const std::filesystem::path& file, const char* sql) {
    sqlite3* database = nullptr;
    sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
    const SqliteDatabase owner(database);
    int code = SQLITE_OK;
    const SqliteStatement statement = Prepare(database, sql, code);
    EXPECT_EQ(code, SQLITE_OK) << sqlite3_errmsg(database);
    std::vector<Names> rows;
    StatementUse use(statement);
    while (use.Step() == SQLITE_ROW) {
        Names row;
        for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
            row.push_back(use.Column(column).value_or("(null)"));
        }
        rows.push_back(row);
    }
    return rows;
}

TEST(SqliteSettingsStore, NewStore_HasTheOneTableThatOthersRead) {
    const TemporaryFolder home;
    const auto store = OpenWell(home.Path() / "a" / "spellwick");
    ASSERT_TRUE(store->Apply({{"Settings", "RegYellow", "3"}}).ok);
    const auto file = home.Path() / "a" / "spellwick" / "settings.db";
    EXPECT_EQ(Query(file, "SELECT application, section, key, value FROM setting"),
              (std::vector<Names>{{"Spellwick", "Settings", "RegYellow", "3"}}));
    EXPECT_EQ(Query(file, "SELECT name, type, pk FROM pragma_table_info('setting') ORDER BY cid"),
              (std::vector<Names>{{"application", "TEXT", "1"},
                                  {"section", "TEXT", "2"},
                                  {"key", "TEXT", "3"},
                                  {"value", "TEXT", "0"}}));
    EXPECT_EQ(Query(file, "PRAGMA journal_mode"), (std::vector<Names>{{"wal"}}));
}

TEST(SqliteSettingsStore, SavedState_ComesBackFromTheFile) {
    const TemporaryFolder folder;
    SharedState saved = StartedState();
    FillPlayer(saved, 1);
    FillGlobals(saved, 1);
    saved.CurrentPlayerName = "Ultima Online - Mira Talon (Atlantic)";
    RecordingView view;
    {
        const auto store = OpenWell(folder.Path());
        SettingsIo io(saved, *store, view);
        ASSERT_TRUE(io.SaveGlobalSettings({}).ok);
        ASSERT_TRUE(io.SaveMacros({}).ok);
        ASSERT_TRUE(io.SaveOption("DisableCasting", BoolText(saved.DisableCasting)).ok);
        ASSERT_TRUE(io.SaveOption("DisplayVertical", BoolText(saved.DisplayVertical)).ok);
        ASSERT_TRUE(io.SaveOption("AlwaysOnTop", BoolText(saved.AlwaysOnTop)).ok);
        ASSERT_TRUE(io.SaveOption("ShowNecroRegs", BoolText(saved.ShowNecroRegs)).ok);
        ASSERT_TRUE(io.SaveOption("Meditate", BoolText(saved.Meditate)).ok);
        ASSERT_TRUE(io.SaveOption("SpellTimerMode", std::to_string(saved.SpellTimerMode)).ok);
    }
    SharedState loaded = StartedState();
    const auto store = OpenWell(folder.Path());
    SettingsIo(loaded, *store, view).LoadGlobalSettings();
    EXPECT_EQ(PlayerDifferences(saved, loaded), "");
    EXPECT_EQ(GlobalDifferences(saved, loaded), "");
}

}  // namespace
}  // namespace spellwick
