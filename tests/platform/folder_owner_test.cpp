#include "platform/linux/folder_owner.h"

#include <csignal>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

class FolderOwnerTest : public testing::Test {
  protected:
    std::filesystem::path Folder() const { return m_folder.Path() / "new" / "data"; }

    TemporaryFolder m_folder;
};

TEST_F(FolderOwnerTest, NewFolder_IsMadeForTheUserAlone) {
    const Ownership owned = OwnFolder(Folder());
    EXPECT_NE(owned.owner, nullptr);
    EXPECT_FALSE(owned.another);
    struct stat status {};
    ASSERT_EQ(stat(Folder().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
    ASSERT_EQ(stat((Folder() / "lock").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(FolderOwnerTest, FolderThatHasAnOwner_IsRefusedUntilItIsGone) {
    {
        const Ownership first = OwnFolder(Folder());
        const Ownership second = OwnFolder(Folder());
        EXPECT_TRUE(second.another);
        EXPECT_EQ(second.owner, nullptr);
        EXPECT_FALSE(OwnFolder(m_folder.Path() / "other").another);
    }
    EXPECT_FALSE(OwnFolder(Folder()).another);
}

TEST_F(FolderOwnerTest, Window_IsToldToOthersAndForgottenByTheNextOwner) {
    {
        const Ownership first = OwnFolder(Folder());
        EXPECT_EQ(WindowOfOwner(Folder()), std::nullopt) << "it is only starting";
        first.owner->SetWindow(4194310);
        EXPECT_EQ(WindowOfOwner(Folder()), WindowHandle{4194310});
    }
    const Ownership next = OwnFolder(Folder());
    EXPECT_EQ(WindowOfOwner(Folder()), std::nullopt);
    next.owner->SetWindow(7);
    EXPECT_EQ(WindowOfOwner(Folder()), WindowHandle{7}) << "shorter than the one before";
}

// Freeing the block of a file takes milliseconds of each start on some disks.
TEST_F(FolderOwnerTest, NextOwner_DoesNotEmptyTheFile) {
    OwnFolder(Folder()).owner->SetWindow(4194310);
    const auto size = std::filesystem::file_size(Folder() / "lock");
    const Ownership next = OwnFolder(Folder());
    EXPECT_EQ(std::filesystem::file_size(Folder() / "lock"), size);
}

// No byte can be written here, as on a full disk.
TEST_F(FolderOwnerTest, FullDisk_IsOwnedToo) {
    std::filesystem::create_directories(Folder());
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit none{.rlim_cur = 0, .rlim_max = limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &none), 0);
    const Ownership first = OwnFolder(Folder());
    const Ownership second = OwnFolder(Folder());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, before);
    EXPECT_NE(first.owner, nullptr);
    EXPECT_TRUE(second.another);
}

TEST_F(FolderOwnerTest, LockFileOfOtherContent_NamesNoWindow) {
    const Ownership first = OwnFolder(Folder());
    for (const char* content :
         {"", "\n", "x\n", "12", "12x\n", "99999999999999999999999999999\n"}) {
        std::ofstream(Folder() / "lock") << content;
        EXPECT_EQ(WindowOfOwner(Folder()), std::nullopt) << content;
    }
}

TEST_F(FolderOwnerTest, OwnerThatIsKilled_LeavesTheFolderFree) {
    std::filesystem::create_directories(Folder());
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const Ownership owned = OwnFolder(Folder());
        static_cast<void>(write(ready[1], owned.owner != nullptr ? "y" : "n", 1));
        pause();
        _exit(0);
    }
    char answer = 'n';
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_TRUE(OwnFolder(Folder()).another);
    kill(child, SIGKILL);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_NE(OwnFolder(Folder()).owner, nullptr);
    close(ready[0]);
    close(ready[1]);
}

TEST_F(FolderOwnerTest, FolderThatCannotBeMade_HasNoOwnerAndNoOther) {
    std::ofstream(m_folder.Path() / "new") << "a file";
    const Ownership owned = OwnFolder(Folder());
    EXPECT_EQ(owned.owner, nullptr);
    EXPECT_FALSE(owned.another);
}

}  // namespace
}  // namespace spellwick
