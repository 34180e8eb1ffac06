// Pipes, devices and locked files in the place of the macro file, as only a Unix has them.
#include <fstream>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "store/macro_file.h"
#include "tests/store/macro_table_tools.h"
#include "tests/support/failures.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;

class MacroSpecialFiles : public testing::Test {
  protected:
    std::optional<FailureKind> Read(const fs::path& file) {
        return FailureOf([&] { MergeMacroFile(file, m_state); });
    }
    std::optional<FailureKind> Write(const fs::path& file) {
        return FailureOf([&] { WriteMacroFile(file, m_state); });
    }

    TemporaryFolder m_folder;
    SharedState m_state = MacroState();
};

TEST_F(MacroSpecialFiles, PipeDeviceLockedFile_FailToBeRead) {
    const fs::path pipe = m_folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Read(pipe), FailureKind::kFile) << "pipe";
    EXPECT_EQ(Read("/dev/zero"), FailureKind::kFile) << "device";
    const fs::path locked = m_folder.Path() / "locked";
    std::ofstream(locked, std::ios::binary) << "q 0 0 0\r\nCastSpell Spell 1\r\n";
    ASSERT_EQ(chmod(locked.c_str(), 0), 0);
    if (access(locked.c_str(), R_OK) != 0) {
        EXPECT_EQ(Read(locked), FailureKind::kFile) << "unreadable";
    }
    for (i32 row = 0; row <= 95; ++row) {
        EXPECT_EQ(MacroOfRow(m_state, row), MacroOfRow(MacroState(), row)) << row;
    }
}

TEST_F(MacroSpecialFiles, PipeAndFullDevice_FailToBeWritten) {
    const fs::path pipe = m_folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Write(pipe), FailureKind::kFile) << "pipe";
    EXPECT_EQ(Write("/dev/full"), FailureKind::kFile) << "full device";
}

}  // namespace
}  // namespace spellwick
