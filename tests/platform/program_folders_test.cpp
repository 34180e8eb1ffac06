#include "platform/linux/program_folders.h"

#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ProgramFolders, OfThisProcess_AreItsFilesAndItsOwn) {
    const auto folders = ProgramFoldersOf(getpid());
    EXPECT_THAT(folders, Contains(fs::read_symlink("/proc/self/exe").parent_path()));
    EXPECT_THAT(folders, Contains(fs::current_path()));
}

TEST(ProgramFolders, OfAWineProgram_BeginWithTheWindowsProgram) {
    const TemporaryFolder proc;
    const fs::path process = proc.Path() / "77";
    fs::create_directories(process);
    std::ofstream(process / "maps")
        << "140000000-140001000 r--p 00000000 08:01 12  /home/me/My Games/ClassicUO/ClassicUO.EXE\n"
           "7f0000000-7f0001000 r-xp 00000000 08:01 13  /usr/lib/wine/ntdll.so\n"
           "7f0000000-7f0001000 rw-p 00000000 00:00 0\n"
           "140001000-140002000 r-xp 00001000 08:01 12  /home/me/My "
           "Games/ClassicUO/ClassicUO.EXE\n";
    fs::create_symlink("/usr/lib/wine/wine64-preloader", process / "exe");
    fs::create_symlink("/home/me", process / "cwd");
    EXPECT_THAT(ProgramFoldersOf(77, proc.Path()),
                ElementsAre("/home/me/My Games/ClassicUO", "/usr/lib/wine", "/home/me"));
}

TEST(ProgramFolders, ProcessThatIsGone_HasNone) {
    EXPECT_THAT(ProgramFoldersOf(0), IsEmpty());
    EXPECT_THAT(ProgramFoldersOf(-1), IsEmpty());
    EXPECT_THAT(ProgramFoldersOf(77, "/nowhere"), IsEmpty());
}

}  // namespace
}  // namespace spellwick
