// What every file of the recovery journal does, whichever system it is on.
//
//     INSTANTIATE_TYPED_TEST_SUITE_P(Posix, AnyJournalFile, PosixJournalFile);
#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/file_bytes.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {

template <typename JournalFile>
class AnyJournalFile : public testing::Test {
  protected:
    std::string Content() const { return BytesOf(m_name); }

    TemporaryFolder m_folder;
    std::filesystem::path m_name = m_folder.Path() / "journal";
    JournalFile m_file{m_name};
};

TYPED_TEST_SUITE_P(AnyJournalFile);

TYPED_TEST_P(AnyJournalFile, NoFile_ReadsAsEmptyAndIsNotMade) {
    EXPECT_EQ(this->m_file.Read(), "");
    EXPECT_TRUE(this->m_file.Replace(""));
    EXPECT_FALSE(std::filesystem::exists(this->m_name));
}

TYPED_TEST_P(AnyJournalFile, AppendedBytes_AreReadByTheNextRun) {
    ASSERT_TRUE(this->m_file.Append("one\n"));
    ASSERT_TRUE(this->m_file.Append(std::string_view("t\0o\n", 4)));
    EXPECT_TRUE(this->m_file.Sync());
    TypeParam next(this->m_name);
    EXPECT_EQ(next.Read(), std::string("one\nt\0o\n", 8));
    ASSERT_TRUE(next.Append("three\n"));
    EXPECT_EQ(this->Content(), std::string("one\nt\0o\nthree\n", 14));
}

TYPED_TEST_P(AnyJournalFile, SyncedInAnotherThread_TakesEveryAppendMeanwhile) {
    ASSERT_TRUE(this->m_file.Append("-"));
    std::atomic<bool> over = false;
    int syncs = 0;
    std::thread syncing([&] {
        while (!over || syncs == 0) {
            EXPECT_TRUE(this->m_file.Sync());
            ++syncs;
        }
    });
    constexpr int kAppends = 300;
    for (int i = 0; i < kAppends; ++i) {
        EXPECT_TRUE(this->m_file.Append("."));
    }
    over = true;
    syncing.join();
    EXPECT_EQ(this->Content(), "-" + std::string(kAppends, '.'));
}

TYPED_TEST_P(AnyJournalFile, Replaced_HoldsTheNewBytesAndLeavesNothingBeside) {
    ASSERT_TRUE(this->m_file.Append("one\n"));
    ASSERT_TRUE(this->m_file.Replace("two\n"));
    ASSERT_TRUE(this->m_file.Append("three\n"));
    EXPECT_EQ(this->Content(), "two\nthree\n");
    ASSERT_TRUE(this->m_file.Replace(""));
    EXPECT_EQ(this->Content(), "");
    ASSERT_TRUE(this->m_file.Append("four\n"));
    EXPECT_EQ(this->Content(), "four\n");
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(this->m_folder.Path())) {
        files += entry.exists() ? 1 : 0;
    }
    EXPECT_EQ(files, 1);
}

TYPED_TEST_P(AnyJournalFile, FileThatSomebodyElseChanged_TakesNoAppend) {
    ASSERT_TRUE(this->m_file.Append("one\n"));
    std::filesystem::remove(this->m_name);
    EXPECT_FALSE(this->m_file.Append("two\n"));
    ASSERT_TRUE(this->m_file.Replace("one\ntwo\n"));
    std::ofstream(this->m_name, std::ios::binary) << "foreign";
    EXPECT_FALSE(this->m_file.Append("three\n"));
    EXPECT_EQ(this->Content(), "foreign");
}

TYPED_TEST_P(AnyJournalFile, FolderOfThatName_TakesNothing) {
    std::filesystem::create_directory(this->m_name);
    EXPECT_EQ(this->m_file.Read(), "");
    EXPECT_FALSE(this->m_file.Append("one\n"));
    EXPECT_FALSE(this->m_file.Replace("one\n"));
}

REGISTER_TYPED_TEST_SUITE_P(AnyJournalFile, NoFile_ReadsAsEmptyAndIsNotMade,
                            AppendedBytes_AreReadByTheNextRun,
                            SyncedInAnotherThread_TakesEveryAppendMeanwhile,
                            Replaced_HoldsTheNewBytesAndLeavesNothingBeside,
                            FileThatSomebodyElseChanged_TakesNoAppend,
                            FolderOfThatName_TakesNothing);

}  // namespace spellwick
