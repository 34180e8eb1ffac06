#include "platform/linux/open_settings_store.h"

#include <chrono>
#include <future>
#include <random>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/file_descriptor.h"
#include "store/section_name.h"
#include "store/settings_io.h"
#include "tests/store/sqlite_test_tools.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

const auto kNow = std::chrono::system_clock::from_time_t(1795275000);

class OpenStoreTest : public testing::Test {
  protected:
    fs::path File() const { return folder.Path() / "settings.db"; }
    OpenedStore Open() const { return OpenSettingsStore(folder.Path(), kNow); }

    void SaveSomePlayers() {
        const auto store = OpenWell(folder.Path());
        for (const char* player : {"Anna", "Bran", "Mira"}) {
            SharedState state = StartedState();
            FillPlayer(state, 5);
            RecordingView view;
            ASSERT_TRUE(SettingsIo(state, *store, view).SavePlayerSettings(player).ok);
        }
    }

    // Checks that the store works: what is saved is there after another start.
    static void ExpectWorks(OpenedStore opened, const fs::path& folder) {
        ASSERT_NE(opened.store, nullptr);
        EXPECT_TRUE(opened.store->Apply({{"works", "key", "value"}}).ok);
        opened.store.reset();
        EXPECT_EQ(OpenWell(folder)->Read("works", "key"), "value");
    }

    // Checks that the program can work with it, although nothing is kept.
    static void ExpectInMemory(const OpenedStore& opened) {
        ASSERT_NE(opened.store, nullptr);
        EXPECT_FALSE(opened.keptAside.has_value());
        EXPECT_THAT(opened.trouble, HasSubstr("nothing is kept"));
        EXPECT_TRUE(opened.store->Apply({{"Mira", "Magery", "1"}}).ok);
        EXPECT_EQ(opened.store->Read("Mira", "Magery"), "1");
    }

    void ExpectKeptAside(const std::string& bytes, const std::string& name) {
        OpenedStore opened = Open();
        ASSERT_TRUE(opened.keptAside.has_value()) << opened.trouble;
        EXPECT_THAT(opened.trouble, HasSubstr(opened.keptAside->string()));
        EXPECT_EQ(opened.keptAside->parent_path(), folder.Path());
        EXPECT_THAT(opened.keptAside->filename().string(),
                    testing::StartsWith("settings.db.unreadable-2026"))
            << name;
        EXPECT_TRUE(BytesOf(*opened.keptAside) == bytes) << name;
        EXPECT_TRUE(opened.store->Sections().empty()) << name;
        ExpectWorks(std::move(opened), folder.Path());
    }

    TemporaryFolder folder;
};

TEST(SettingsFolder, FollowsTheEnvironment) {
    EXPECT_EQ(SettingsFolder("/data", "/home/mira"), "/data/spellwick");
    EXPECT_EQ(SettingsFolder(nullptr, "/home/mira"), "/home/mira/.local/share/spellwick");
    EXPECT_EQ(SettingsFolder("", "/home/mira"), "/home/mira/.local/share/spellwick");
    EXPECT_EQ(SettingsFolder("data", "/home/mira"), "/home/mira/.local/share/spellwick");
    EXPECT_EQ(SettingsFolder("./data", nullptr), std::nullopt);
    EXPECT_EQ(SettingsFolder(nullptr, "mira"), std::nullopt);
    EXPECT_EQ(SettingsFolder(nullptr, nullptr), std::nullopt);
}

TEST_F(OpenStoreTest, NewFolder_IsForTheUserAlone) {
    const fs::path deep = folder.Path() / "data" / "spellwick";
    ExpectWorks(OpenSettingsStore(deep, kNow), deep);
    for (const fs::path& made : {folder.Path() / "data", deep}) {
        struct stat status {};
        ASSERT_EQ(stat(made.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0700U) << made;
    }
}

TEST_F(OpenStoreTest, NoFolderAtAll_RunsInMemory) {
    ExpectInMemory(OpenSettingsStore(std::nullopt, kNow));
}

TEST_F(OpenStoreTest, FolderThatCannotBeMade_RunsInMemory) {
    WriteFile(folder.Path() / "file", "x");
    ExpectInMemory(OpenSettingsStore(folder.Path() / "file" / "spellwick", kNow));
    ExpectInMemory(OpenSettingsStore(folder.Path() / std::string(300, 'n'), kNow));
    ExpectInMemory(OpenSettingsStore("/proc/spellwick", kNow));
}

TEST_F(OpenStoreTest, FolderInPlaceOfTheFile_IsLeftAlone) {
    fs::create_directories(File() / "inside");
    ExpectInMemory(Open());
    EXPECT_TRUE(fs::is_directory(File() / "inside"));
}

TEST_F(OpenStoreTest, PipeInPlaceOfTheFile_DoesNotHang) {
    ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
    ExpectInMemory(Open());
    EXPECT_TRUE(fs::is_fifo(File()));
}

TEST_F(OpenStoreTest, LinkToNowhere_MakesTheFileThere) {
    fs::create_symlink(folder.Path() / "real.db", File());
    ExpectWorks(Open(), folder.Path());
    EXPECT_TRUE(fs::is_symlink(File()));
    EXPECT_TRUE(fs::is_regular_file(folder.Path() / "real.db"));
}

TEST_F(OpenStoreTest, EmptyFile_IsAFreshStore) {
    WriteFile(File(), "");
    OpenedStore opened = Open();
    EXPECT_EQ(opened.trouble, "");
    EXPECT_FALSE(opened.keptAside.has_value());
    ExpectWorks(std::move(opened), folder.Path());
}

TEST_F(OpenStoreTest, FileThatIsNoStore_IsKeptAside) {
    std::string noise(100000, ' ');
    std::mt19937 random(7);
    for (char& byte : noise) {
        byte = static_cast<char>(random());
    }
    const std::string start("SQLite format 3\0", 16);
    for (const std::string& bytes :
         {std::string("xy"), std::string(99, 'x'), std::string(100, '\0'), std::string(5000, '\0'),
          noise, start, start + noise, std::string("[Settings]\nRegYellow=3\n")}) {
        const TemporaryFolder own;
        WriteFile(own.Path() / "settings.db", bytes);
        OpenedStore opened = OpenSettingsStore(own.Path(), kNow);
        ASSERT_TRUE(opened.keptAside.has_value()) << bytes.size() << opened.trouble;
        EXPECT_TRUE(BytesOf(*opened.keptAside) == bytes);
        ExpectWorks(std::move(opened), own.Path());
    }
}

TEST_F(OpenStoreTest, DatabaseOfAnotherForm_IsKeptAside) {
    for (const char* sql :
         {"CREATE TABLE setting(application TEXT, section TEXT, name TEXT, value TEXT)",
          "CREATE TABLE setting(application TEXT, section TEXT, key TEXT, value TEXT)",
          "CREATE TABLE setting(key TEXT PRIMARY KEY, value TEXT)",
          "CREATE TABLE recipe(name TEXT)",
          "CREATE VIEW setting AS SELECT 1 AS application, 2 AS section, 3 AS key, 4 AS value"}) {
        fs::remove(File());
        RawDatabase(File()).Run(sql);
        ExpectKeptAside(BytesOf(File()), sql);
    }
}

TEST_F(OpenStoreTest, KeptAsideTwiceInASecond_OverwritesNothing) {
    std::vector<fs::path> kept;
    for (const char* bytes : {"first", "second", "third"}) {
        fs::remove(File());
        WriteFile(File(), bytes);
        const OpenedStore opened = Open();
        ASSERT_TRUE(opened.keptAside.has_value());
        kept.push_back(*opened.keptAside);
    }
    EXPECT_EQ(BytesOf(kept[0]), "first");
    EXPECT_EQ(BytesOf(kept[1]), "second");
    EXPECT_EQ(BytesOf(kept[2]), "third");
}

TEST_F(OpenStoreTest, SideFileOfANameThatIsFree_ThatNameIsTaken) {
    WriteFile(File(), "noise");
    const OpenedStore first = Open();
    ASSERT_TRUE(first.keptAside.has_value());
    // Only a log is left of it: another store of this name would read it as its own.
    const fs::path log = first.keptAside->string() + "-wal";
    fs::remove(*first.keptAside);
    WriteFile(log, "an old log");
    for (const char* side : {"", "-wal", "-shm"}) {
        fs::remove(File().string() + side);
    }
    WriteFile(File(), "noise again");
    const OpenedStore second = Open();
    ASSERT_TRUE(second.keptAside.has_value());
    EXPECT_NE(second.keptAside, first.keptAside);
    EXPECT_EQ(BytesOf(*second.keptAside), "noise again");
    EXPECT_EQ(BytesOf(log), "an old log");
}

TEST_F(OpenStoreTest, FolderThatAnotherStartHasLocked_IsWaitedFor) {
    WriteFile(File(), "noise");
    const FileDescriptor other(open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(flock(other.Number(), LOCK_EX), 0);
    std::future<OpenedStore> opening = std::async(std::launch::async, [this] { return Open(); });
    EXPECT_EQ(opening.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    EXPECT_EQ(BytesOf(File()), "noise") << "nothing is set aside while another one looks at it";
    ASSERT_EQ(flock(other.Number(), LOCK_UN), 0);
    EXPECT_TRUE(opening.get().keptAside.has_value());
}

TEST_F(OpenStoreTest, KeptAside_TakesItsLogAlong) {
    WriteFile(File(), std::string(5000, 'x'));
    WriteFile(File().string() + "-wal", "log");
    OpenedStore opened = Open();
    ASSERT_TRUE(opened.keptAside.has_value());
    EXPECT_EQ(BytesOf(opened.keptAside->string() + "-wal"), "log");
    ExpectWorks(std::move(opened), folder.Path());
}

TEST_F(OpenStoreTest, DamageAnywhere_TheProgramStartsWithAStoreThatWorks) {
    SaveSomePlayers();
    const std::string sound = BytesOf(File());
    ASSERT_GT(sound.size(), 20000U);
    std::vector<std::string> broken;
    for (std::size_t at = 0; at < sound.size(); at += 997) {
        broken.push_back(sound);
        for (std::size_t i = at; i < std::min(at + 64, sound.size()); ++i) {
            broken.back()[i] = static_cast<char>(broken.back()[i] ^ 0x5A);
        }
    }
    for (std::size_t size = 1; size < sound.size(); size += 2039) {
        broken.push_back(sound.substr(0, size));
    }
    for (std::size_t page = 0; page < sound.size(); page += 4096) {
        broken.push_back(sound);
        broken.back().replace(page, 4096, std::string(4096, '\0'));
    }
    int kept = 0;
    for (const std::string& bytes : broken) {
        const TemporaryFolder own;
        WriteFile(own.Path() / "settings.db", bytes);
        OpenedStore opened = OpenSettingsStore(own.Path(), kNow);
        if (opened.keptAside) {
            ++kept;
            EXPECT_TRUE(BytesOf(*opened.keptAside) == bytes);
        } else {
            EXPECT_EQ(opened.trouble, "");
        }
        ExpectWorks(std::move(opened), own.Path());
    }
    EXPECT_GT(kept, 40) << "of " << broken.size();
}

TEST_F(OpenStoreTest, LockedByAnother_IsLeftAlone) {
    SaveSomePlayers();
    RawDatabase other(File());
    other.Run("PRAGMA locking_mode = EXCLUSIVE");
    other.Run("BEGIN EXCLUSIVE");
    other.Run("UPDATE setting SET value = '1'");
    ExpectInMemory(Open());
    other.Run("ROLLBACK");
    int files = 0;
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        EXPECT_THAT(entry.path().filename().string(), testing::Not(HasSubstr("unreadable")));
        ++files;
    }
    EXPECT_GE(files, 1);
}

TEST_F(OpenStoreTest, BusyWithASave_IsOpened) {
    SaveSomePlayers();
    RawDatabase other(File());
    other.Run("BEGIN IMMEDIATE");
    other.Run("UPDATE setting SET value = '1'");
    const OpenedStore opened = Open();
    EXPECT_EQ(opened.trouble, "");
    EXPECT_EQ(PlayerNames(*opened.store).size(), 3U);
    other.Run("ROLLBACK");
}

// The folder of the test belongs to root or to us; other users may not write to it.
class ForbiddenStoreTest : public OpenStoreTest {
  protected:
    // What an unprivileged user gets: the state of the opened store, in words.
    std::string OpenedByNobody(const std::string& key) {
        return InChild([&]() -> std::string {
            if (geteuid() == 0 && (setegid(65534) != 0 || seteuid(65534) != 0)) {
                return "cannot become nobody";
            }
            const OpenedStore opened = Open();
            std::string answer = opened.keptAside ? "aside;" : "stays;";
            answer += opened.trouble.empty() ? "silent;" : "told;";
            answer += opened.store->Read("Anna", key).value_or("none") + ";";
            answer += opened.store->Apply({{"Anna", key, "9"}}).ok ? "saves" : "refuses";
            return answer;
        });
    }
    void TearDown() override { chmod(folder.Path().c_str(), 0700); }
};

TEST_F(ForbiddenStoreTest, FolderWithoutRightToWrite_RunsInMemory) {
    chmod(folder.Path().c_str(), 0555);
    EXPECT_EQ(OpenedByNobody("Magery"), "stays;told;none;saves");
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST_F(ForbiddenStoreTest, FileWithoutRightToRead_IsLeftAlone) {
    SaveSomePlayers();
    const std::string bytes = BytesOf(File());
    chmod(File().c_str(), 0000);
    chmod(folder.Path().c_str(), 0777);
    EXPECT_EQ(OpenedByNobody("Magery"), "stays;told;none;saves");
    chmod(File().c_str(), 0600);
    EXPECT_TRUE(BytesOf(File()) == bytes);
}

TEST_F(ForbiddenStoreTest, FileWithoutRightToWrite_IsReadAndSavesAreRefused) {
    {
        const auto store = OpenWell(folder.Path());
        ASSERT_TRUE(store->Apply({{"Anna", "Magery", "71"}}).ok);
    }
    const std::string bytes = BytesOf(File());
    chmod(File().c_str(), 0444);
    chmod(folder.Path().c_str(), 0777);
    EXPECT_EQ(OpenedByNobody("Magery"), "stays;told;71;refuses");
    EXPECT_TRUE(BytesOf(File()) == bytes);
}

}  // namespace
}  // namespace spellwick
