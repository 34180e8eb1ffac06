#include "platform/linux/posix_journal_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/store/sqlite_test_tools.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

class PosixJournalFileTest : public testing::Test {
  protected:
    std::string Content() const { return ReadFile(m_name); }

    TemporaryFolder m_folder;
    std::filesystem::path m_name = m_folder.Path() / "journal";
    PosixJournalFile m_file{m_name};
};

TEST_F(PosixJournalFileTest, NoFile_ReadsAsEmptyAndIsNotMade) {
    EXPECT_EQ(m_file.Read(), "");
    EXPECT_TRUE(m_file.Replace(""));
    EXPECT_FALSE(std::filesystem::exists(m_name));
}

TEST_F(PosixJournalFileTest, AppendedBytes_AreReadByTheNextRun) {
    ASSERT_TRUE(m_file.Append("one\n"));
    ASSERT_TRUE(m_file.Append(std::string_view("t\0o\n", 4)));
    EXPECT_TRUE(m_file.Sync());
    PosixJournalFile next(m_name);
    EXPECT_EQ(next.Read(), std::string("one\nt\0o\n", 8));
    ASSERT_TRUE(next.Append("three\n"));
    EXPECT_EQ(Content(), std::string("one\nt\0o\nthree\n", 14));
}

TEST_F(PosixJournalFileTest, NewFile_IsTheUsersAlone) {
    ASSERT_TRUE(m_file.Append("one\n"));
    struct stat status {};
    ASSERT_EQ(stat(m_name.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(PosixJournalFileTest, Replaced_HoldsTheNewBytesAndLeavesNothingBeside) {
    ASSERT_TRUE(m_file.Append("one\n"));
    ASSERT_TRUE(m_file.Replace("two\n"));
    ASSERT_TRUE(m_file.Append("three\n"));
    EXPECT_EQ(Content(), "two\nthree\n");
    ASSERT_TRUE(m_file.Replace(""));
    EXPECT_EQ(Content(), "");
    ASSERT_TRUE(m_file.Append("four\n"));
    EXPECT_EQ(Content(), "four\n");
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) {
        files += entry.exists() ? 1 : 0;
    }
    EXPECT_EQ(files, 1);
}

TEST_F(PosixJournalFileTest, FileThatSomebodyElseChanged_TakesNoAppend) {
    ASSERT_TRUE(m_file.Append("one\n"));
    std::filesystem::remove(m_name);
    EXPECT_FALSE(m_file.Append("two\n"));
    ASSERT_TRUE(m_file.Replace("one\ntwo\n"));
    WriteFile(m_name, "foreign");
    EXPECT_FALSE(m_file.Append("three\n"));
    EXPECT_EQ(Content(), "foreign");
}

TEST_F(PosixJournalFileTest, FolderThatIsNotThere_TakesNothing) {
    PosixJournalFile lost(m_folder.Path() / "none" / "journal");
    EXPECT_EQ(lost.Read(), "");
    EXPECT_FALSE(lost.Append("one\n"));
    EXPECT_FALSE(lost.Replace("one\n"));
    EXPECT_FALSE(lost.Sync());
}

TEST_F(PosixJournalFileTest, PipeOrFolderOfThatName_DoesNotHoldTheProgramUp) {
    ASSERT_EQ(mkfifo(m_name.c_str(), 0600), 0);
    EXPECT_EQ(m_file.Read(), "");
    EXPECT_FALSE(m_file.Append("one\n"));
    std::filesystem::remove(m_name);
    std::filesystem::create_directory(m_name);
    EXPECT_EQ(m_file.Read(), "");
    EXPECT_FALSE(m_file.Append("one\n"));
    EXPECT_FALSE(m_file.Replace("one\n"));
}

}  // namespace
}  // namespace spellwick
