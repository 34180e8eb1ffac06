// Pipes, devices and locked files in place of the macro file, which only Unix has.
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "store/macro_file.h"
#include "tests/store/macro_table_tools.h"
#include "tests/support/failures.h"
#include "tests/support/file_bytes.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;

// Root may read and write everything, so drop to another user for the lifetime of this object.
class PlainUser {
  public:
    PlainUser() : m_superuser(geteuid() == 0) { Become(kNobody); }
    ~PlainUser() { Become(0); }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;
    PlainUser(PlainUser&&) = delete;
    PlainUser& operator=(PlainUser&&) = delete;

  private:
    static constexpr uid_t kNobody = 65534;
    void Become(uid_t user) const {
        if (m_superuser) {
            EXPECT_EQ(seteuid(user), 0);
        }
    }

    bool m_superuser;
};

// Limits files to so many bytes, like a full disk.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{.rlim_cur = bytes, .rlim_max = m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    SmallDisk(SmallDisk&&) = delete;
    SmallDisk& operator=(SmallDisk&&) = delete;

  private:
    rlimit m_before{};
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

class MacroSpecialFiles : public testing::Test {
  protected:
    std::optional<FailureKind> Read(const fs::path& file) {
        return FailureOf([&] { MergeMacroFile(file, m_state); });
    }
    std::optional<FailureKind> Write(const fs::path& file) {
        return FailureOf([&] { WriteMacroFile(file, m_state); });
    }

    fs::path Made(const char* name, const std::string& bytes, mode_t rights) const {
        fs::path file = m_folder.Path() / name;
        std::ofstream(file, std::ios::binary) << bytes;
        EXPECT_EQ(chmod(file.c_str(), rights), 0);
        return file;
    }
    std::string AllBlocks() const {
        std::string blocks;
        for (i32 row = 0; row <= 95; ++row) {
            blocks += MacroBlock(m_state, row);
        }
        return blocks;
    }
    std::ptrdiff_t FilesInFolder() const {
        return std::distance(fs::directory_iterator(m_folder.Path()), fs::directory_iterator());
    }

    TemporaryFolder m_folder;
    SharedState m_state = MacroState();
};

TEST_F(MacroSpecialFiles, PipeDeviceLockedFile_FailToBeRead) {
    const fs::path pipe = m_folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Read(pipe), FailureKind::kFile) << "pipe";
    EXPECT_EQ(Read("/dev/zero"), FailureKind::kFile) << "device";
    const fs::path locked = Made("locked", "q 0 0 0\r\nCastSpell Spell 1\r\n", 0);
    ASSERT_EQ(chmod(m_folder.Path().c_str(), 0755), 0);
    {
        const PlainUser user;
        EXPECT_EQ(Read(locked), FailureKind::kFile) << "unreadable";
    }
    const fs::path huge = Made("huge", "q 0 0 0\r\nCastSpell Spell 1\r\n", 0600);
    fs::resize_file(huge, std::uintmax_t{1} << 32U);
    EXPECT_EQ(Read(huge), FailureKind::kFile) << "four gigabytes";
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

TEST_F(MacroSpecialFiles, LockedFile_FailsToBeWrittenAndStaysAsItWas) {
    const fs::path locked = Made("locked", "mine", 0444);
    ASSERT_EQ(chmod(m_folder.Path().c_str(), 0777), 0);
    {
        const PlainUser user;
        EXPECT_EQ(Write(locked), FailureKind::kFile);
    }
    EXPECT_EQ(BytesOf(locked), "mine");
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(MacroSpecialFiles, LockedFolder_ItsFileIsWrittenAllTheSame) {
    const fs::path file = Made("macros.txt", "mine", 0666);
    ASSERT_EQ(chmod(m_folder.Path().c_str(), 0555), 0);
    {
        const PlainUser user;
        EXPECT_EQ(Write(file), FailureKind::kSubscript);
        EXPECT_EQ(Write(m_folder.Path() / "new.txt"), FailureKind::kFile);
    }
    ASSERT_EQ(chmod(m_folder.Path().c_str(), 0755), 0);
    EXPECT_EQ(BytesOf(file), AllBlocks());
}

TEST_F(MacroSpecialFiles, FullDisk_CostsNothingOfTheOldFile) {
    const fs::path file = Made("macros.txt", "mine", 0600);
    {
        const SmallDisk disk(1000);
        EXPECT_EQ(Write(file), FailureKind::kFile);
    }
    EXPECT_EQ(BytesOf(file), "mine");
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(MacroSpecialFiles, FileBehindALink_IsReplacedWithItsRights) {
    const fs::path file = Made("macros.txt", std::string(50000, 'x'), 0640);
    const fs::path link = m_folder.Path() / "link";
    fs::create_symlink("macros.txt", link);
    EXPECT_EQ(Write(link), FailureKind::kSubscript);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(BytesOf(file), AllBlocks());
    EXPECT_EQ(fs::status(file).permissions(), static_cast<fs::perms>(0640));
    EXPECT_EQ(FilesInFolder(), 2);
}

}  // namespace
}  // namespace spellwick
