// Settings in a file of their own, in both forms: what comes back, and what is refused.
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/text_settings_file.h"
#include "tests/support/file_bytes.h"
#include "tests/support/temporary_folder.h"
#ifndef _WIN32
#include <csignal>

#include <sys/resource.h>

#include "platform/linux/sqlite_settings_file.h"
#include "tests/store/sqlite_test_tools.h"
#endif

namespace spellwick {
namespace {

using testing::HasSubstr;

const AllSettings kTwo{{"Settings", {{"RegYellow", "3"}, {"URL Mira", "a\tb\nc\\ \xC3\xA9"}}},
                       {"Ultima Online - Mira (Atlantic)", {{"Magery", "77"}, {"Bag 0", ""}}}};

class SettingsFileTest : public testing::Test {
  protected:
    std::filesystem::path File() const { return m_folder.Path() / "copy.db"; }
    std::string Bytes() const { return BytesOf(File()); }
    void SetBytes(const std::string& bytes) const {
        std::ofstream(File(), std::ios::binary | std::ios::trunc) << bytes;
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(m_folder.Path()), {}));
    }
    // The trouble says this, nothing is read, and the file stays.
    void ExpectRefused(const SettingsFile& files, const char* why) const {
        const std::string before = Bytes();
        const ReadSettings read = files.Read(File());
        EXPECT_THAT(read.trouble, HasSubstr(why));
        EXPECT_TRUE(read.sections.empty());
        EXPECT_EQ(Bytes(), before);
    }

    TemporaryFolder m_folder;
};

TEST_F(SettingsFileTest, Text_GivesBackWhatWasWritten) {
    const TextSettingsFile files;
    ASSERT_TRUE(files.Write(File(), kTwo).ok);
    ReadSettings read = files.Read(File());
    EXPECT_EQ(read.trouble, "");
    EXPECT_EQ(read.sections, kTwo);
    ASSERT_TRUE(files.Write(File(), {{"Settings", {{"RegYellow", "4"}}}}).ok);
    EXPECT_EQ(files.Read(File()).sections.size(), 1U);
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(SettingsFileTest, Text_ForeignNewerCutAndMissing_AreRefused) {
    const TextSettingsFile files;
    EXPECT_THAT(files.Read(File()).trouble, HasSubstr("Nothing was changed."));
    SetBytes("hello");
    ExpectRefused(files, "is not a file of Spellwick's settings");
    SetBytes("spellwick settings 2\nx");
    ExpectRefused(files, "newer version");
    ASSERT_TRUE(files.Write(File(), kTwo).ok);
    const std::string whole = Bytes();
    for (std::size_t size = whole.find('\n') + 1; size < whole.size(); ++size) {
        SetBytes(whole.substr(0, size));
        ASSERT_NO_FATAL_FAILURE(ExpectRefused(files, "is damaged")) << size;
    }
    ASSERT_TRUE(files.Write(File(), {}).ok);
    ExpectRefused(files, "holds no settings");
}

TEST_F(SettingsFileTest, Text_NoSuchFolder_SaysSo) {
    const StoreResult written = TextSettingsFile().Write(m_folder.Path() / "none" / "x", kTwo);
    EXPECT_FALSE(written.ok);
    EXPECT_THAT(written.trouble, HasSubstr("cannot be written. Nothing was saved to it."));
}

#ifndef _WIN32

class SqliteSettingsFileTest : public SettingsFileTest {
  protected:
    std::filesystem::path Store() const { return m_folder.Path() / "settings.db"; }

    SqliteSettingsFile m_files{Store()};
};

TEST_F(SqliteSettingsFileTest, Write_IsTheFormOfTheStore) {
    ASSERT_TRUE(m_files.Write(File(), kTwo).ok);
    EXPECT_EQ(m_files.Read(File()).sections, kTwo);
    EXPECT_EQ(FilesInFolder(), 1U);
    std::filesystem::rename(File(), Store());
    const auto store = OpenWell(m_folder.Path());
    EXPECT_EQ(store->Read("Settings", "RegYellow"), "3");
    EXPECT_TRUE(store->Apply({{"Settings", "RegYellow", "4"}}).ok);
}

TEST_F(SqliteSettingsFileTest, Write_ReplacesAFileWhole) {
    SetBytes("something else");
    ASSERT_TRUE(m_files.Write(File(), kTwo).ok);
    EXPECT_EQ(m_files.Read(File()).sections, kTwo);
}

TEST_F(SqliteSettingsFileTest, Write_OverTheStoreInUse_IsRefused) {
    const auto store = OpenWell(m_folder.Path());
    ASSERT_TRUE(store->Apply({{"Mira", "Magery", "1"}}).ok);
    std::filesystem::create_symlink(Store(), File());
    for (const std::filesystem::path& file : {Store(), File()}) {
        const StoreResult written = m_files.Write(file, kTwo);
        EXPECT_FALSE(written.ok);
        EXPECT_THAT(written.trouble, HasSubstr("holds the settings in use"));
    }
    EXPECT_EQ(store->Read("Mira", "Magery"), "1");
}

TEST_F(SqliteSettingsFileTest, Write_WhereNothingCanBeWritten_SaysSo) {
    for (const std::filesystem::path& file :
         {std::filesystem::path("/proc/copy.db"), m_folder.Path() / "none" / "copy.db",
          m_folder.Path()}) {
        const StoreResult written = m_files.Write(file, kTwo);
        EXPECT_FALSE(written.ok) << file;
        EXPECT_THAT(written.trouble, HasSubstr("Nothing was saved to it.")) << file;
    }
    EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(SqliteSettingsFileTest, Write_DiskFull_LeavesTheFileOfBefore) {
    ASSERT_TRUE(m_files.Write(File(), kTwo).ok);
    const std::string report = InChild([this] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100000, 100000};
        setrlimit(RLIMIT_FSIZE, &limit);
        const StoreResult full =
            m_files.Write(File(), {{"Mira", {{"Text", std::string(300000, 'x')}}}});
        return full.ok ? std::string("written") : full.trouble;
    });
    EXPECT_THAT(report, HasSubstr("Nothing was saved to it."));
    EXPECT_EQ(m_files.Read(File()).sections, kTwo);
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(SqliteSettingsFileTest, Read_TakesAStoreAndADatedCopy) {
    {
        const auto store = OpenWell(m_folder.Path());
        ASSERT_TRUE(store->Apply({{"Mira", "Magery", "1"}}).ok);
        ASSERT_TRUE(store->KeepCopy(std::chrono::system_clock::now()).ok);
    }
    int read = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) {
        EXPECT_EQ(m_files.Read(entry.path()).sections, (AllSettings{{"Mira", {{"Magery", "1"}}}}))
            << entry.path();
        ++read;
    }
    EXPECT_EQ(read, 2);
}

TEST_F(SqliteSettingsFileTest, Read_ForeignFiles_AreRefused) {
    EXPECT_THAT(m_files.Read(File()).trouble, HasSubstr("There is no file"));
    EXPECT_THAT(m_files.Read(m_folder.Path()).trouble, HasSubstr("There is no file"));
    SetBytes("a picture, or so");
    ExpectRefused(m_files, "is not a file of Spellwick's settings");
    SetBytes("");
    ExpectRefused(m_files, "is not a file of Spellwick's settings");
    std::filesystem::remove(File());
    RawDatabase(File()).Run("CREATE TABLE cards(number)");
    ExpectRefused(m_files, "is not a file of Spellwick's settings");
    RawDatabase(File()).Run("CREATE TABLE setting(name)");
    ExpectRefused(m_files, "is not a file of Spellwick's settings");
}

TEST_F(SqliteSettingsFileTest, Read_NewerVersionEmptyOrAnotherProgram_AreRefused) {
    ASSERT_TRUE(m_files.Write(File(), kTwo).ok);
    RawDatabase(File()).Run("PRAGMA user_version = 2");
    ExpectRefused(m_files, "newer version");
    ASSERT_TRUE(m_files.Write(File(), {}).ok);
    ExpectRefused(m_files, "holds no settings");
    RawDatabase(File()).Run("INSERT INTO setting VALUES('Another', 'Settings', 'a', 'b')");
    ExpectRefused(m_files, "holds no settings");
}

TEST_F(SqliteSettingsFileTest, Read_CutFile_IsRefused) {
    AllSettings many = kTwo;
    for (int key = 0; key < 2000; ++key) {
        many["Mira"]["Key " + std::to_string(key)] = std::string(20, 'x');
    }
    ASSERT_TRUE(m_files.Write(File(), many).ok);
    const std::string whole = Bytes();
    ASSERT_GT(whole.size(), 40000U);
    for (const std::size_t part : {whole.size() / 2, whole.size() - 4096, std::size_t{5000}}) {
        SetBytes(whole.substr(0, part));
        ExpectRefused(m_files, "Nothing was changed.");
    }
    SetBytes(whole.substr(0, 8192) + std::string(8192, 'z') + whole.substr(16384));
    ExpectRefused(m_files, "Nothing was changed.");
}

TEST_F(SqliteSettingsFileTest, Read_LockedFile_SaysSo) {
    ASSERT_TRUE(m_files.Write(File(), kTwo).ok);
    RawDatabase other(File());
    other.Run("BEGIN EXCLUSIVE");
    ExpectRefused(m_files, "is in use by another program");
    other.Run("ROLLBACK");
    EXPECT_EQ(m_files.Read(File()).sections, kTwo);
}

#endif

}  // namespace
}  // namespace spellwick
