#include "platform/windows/windows_journal_file.h"

#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/platform/any_journal_file.h"

namespace spellwick {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, AnyJournalFile, WindowsJournalFile);

using WindowsJournalFileTest = AnyJournalFile<WindowsJournalFile>;

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

TEST_F(WindowsJournalFileTest, SyncUnderWay_KeepsNoAppendOut) {
    ASSERT_TRUE(m_file.Append("one\n"));
    HANDLE sync = CreateFileW(m_name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(sync, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(m_file.Append("two\n"));
    CloseHandle(sync);
    EXPECT_EQ(Content(), "one\ntwo\n");
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

}  // namespace
}  // namespace spellwick
