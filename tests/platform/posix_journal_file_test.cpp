#include "platform/linux/posix_journal_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/platform/any_journal_file.h"

namespace spellwick {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Posix, AnyJournalFile, PosixJournalFile);

using PosixJournalFileTest = AnyJournalFile<PosixJournalFile>;

TEST_F(PosixJournalFileTest, NewFile_IsTheUsersAlone) {
    ASSERT_TRUE(m_file.Append("one\n"));
    struct stat status {};
    ASSERT_EQ(stat(m_name.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(PosixJournalFileTest, FolderThatIsNotThere_TakesNothing) {
    PosixJournalFile lost(m_folder.Path() / "none" / "journal");
    EXPECT_EQ(lost.Read(), "");
    EXPECT_FALSE(lost.Append("one\n"));
    EXPECT_FALSE(lost.Replace("one\n"));
    EXPECT_FALSE(lost.Sync());
}

TEST_F(PosixJournalFileTest, PipeOfThatName_DoesNotHoldTheProgramUp) {
    ASSERT_EQ(mkfifo(m_name.c_str(), 0600), 0);
    EXPECT_EQ(m_file.Read(), "");
    EXPECT_FALSE(m_file.Append("one\n"));
}

}  // namespace
}  // namespace spellwick
