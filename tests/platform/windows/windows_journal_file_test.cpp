#include "platform/windows/windows_journal_file.h"

#include <fstream>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

class WindowsJournalFileTest : public testing::Test {
  protected:
    std::string Content() const {
        std::ostringstream bytes;
        bytes << std::ifstream(m_name, std::ios::binary).rdbuf();
        return bytes.str();
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_name = m_folder.Path() / "journal";
    WindowsJournalFile m_file{m_name};
};

TEST_F(WindowsJournalFileTest, NoFile_ReadsAsEmptyAndIsNotMade) {
    EXPECT_EQ(m_file.Read(), "");
    EXPECT_TRUE(m_file.Replace(""));
    EXPECT_FALSE(std::filesystem::exists(m_name));
}

TEST_F(WindowsJournalFileTest, AppendedBytes_AreReadByTheNextRun) {
    ASSERT_TRUE(m_file.Append("one\n"));
    ASSERT_TRUE(m_file.Append(std::string_view("t\0o\n", 4)));
    EXPECT_TRUE(m_file.Sync());
    WindowsJournalFile next(m_name);
    EXPECT_EQ(next.Read(), std::string("one\nt\0o\n", 8));
    ASSERT_TRUE(next.Append("three\n"));
    EXPECT_EQ(Content(), std::string("one\nt\0o\nthree\n", 14));
}

TEST_F(WindowsJournalFileTest, FileThatAnotherProgramHasOpen_IsReadAllTheSame) {
    ASSERT_TRUE(m_file.Append("one\n"));
    // As a program that was killed while it wrote.
    HANDLE writer = CreateFileW(m_name.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    EXPECT_EQ(WindowsJournalFile(m_name).Read(), "one\n");
    CloseHandle(writer);
    // As a scanner that shares it with nobody, for a while.
    HANDLE scanner = CreateFileW(m_name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(scanner, INVALID_HANDLE_VALUE);
    std::thread later([scanner] {
        Sleep(200);
        CloseHandle(scanner);
    });
    EXPECT_EQ(WindowsJournalFile(m_name).Read(), "one\n");
    later.join();
}

TEST_F(WindowsJournalFileTest, Replaced_HoldsTheNewBytesAndLeavesNothingBeside) {
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

TEST_F(WindowsJournalFileTest, FileThatSomebodyElseChanged_TakesNoAppend) {
    ASSERT_TRUE(m_file.Append("one\n"));
    std::filesystem::remove(m_name);
    EXPECT_FALSE(m_file.Append("two\n"));
    ASSERT_TRUE(m_file.Replace("one\ntwo\n"));
    std::ofstream(m_name, std::ios::binary) << "foreign";
    EXPECT_FALSE(m_file.Append("three\n"));
    EXPECT_EQ(Content(), "foreign");
}

TEST_F(WindowsJournalFileTest, FolderThatIsNotThere_IsMadeByTheFirstAppend) {
    const std::filesystem::path name = m_folder.Path() / "none" / "journal";
    WindowsJournalFile file(name);
    EXPECT_EQ(file.Read(), "");
    EXPECT_FALSE(file.Sync());
    EXPECT_TRUE(file.Replace(""));
    EXPECT_FALSE(std::filesystem::exists(name));
    EXPECT_TRUE(file.Append("one\n"));
    EXPECT_TRUE(file.Sync());
    EXPECT_EQ(WindowsJournalFile(name).Read(), "one\n");
}

TEST_F(WindowsJournalFileTest, FolderOfThatName_TakesNothing) {
    std::filesystem::create_directory(m_name);
    EXPECT_EQ(m_file.Read(), "");
    EXPECT_FALSE(m_file.Append("one\n"));
    EXPECT_FALSE(m_file.Replace("one\n"));
}

}  // namespace
}  // namespace spellwick
