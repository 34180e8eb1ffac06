// The program's own words and exit codes, and its folder.
#include <csignal>
#include <fstream>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class BridgeProgram : public testing::Test {
  protected:
    // In a prefix that does not run.
    RunResult Run(const std::vector<std::string>& options) const {
        std::vector<std::string> command{Program(), "--prefix", m_folder.Path().string()};
        command.insert(command.end(), options.begin(), options.end());
        return RunToEnd(command, {{"XDG_RUNTIME_DIR", m_runtime.string()}});
    }
    static std::string Program() {
        return (fs::read_symlink("/proc/self/exe").parent_path() / "spellwick-bridge").string();
    }

    void SetUp() override { fs::create_directory(m_runtime); }

    TemporaryFolder m_folder;
    fs::path m_runtime = m_folder.Path() / "runtime";
};

TEST_F(BridgeProgram, UnknownOption_IsOneLineAndCodeTwo) {
    const RunResult result = Run({"--oops"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, "spellwick-bridge: unknown option --oops\n");
}

TEST_F(BridgeProgram, FolderThatCannotBeMade_IsOneLineWithPathAndReasonAndCodeTwo) {
    std::ofstream(m_runtime / "spellwick") << "in the way";
    const RunResult result = Run({});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output,
              "spellwick-bridge: " + (m_runtime / "spellwick").string() + ": is no folder\n");
}

TEST_F(BridgeProgram, OnceWithoutWine_EndsWithZero) {
    const RunResult result = Run({"--once", "--verbose"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "no Wine is running\n");
    EXPECT_FALSE(fs::exists(m_runtime / "spellwick")) << "it only looks";
}

TEST_F(BridgeProgram, Folder_IsMadeForThisUserAloneAndStaleSocketsGo) {
    const fs::path folder = m_runtime / "spellwick" / "assist";
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms::all);
    std::ofstream(folder / "wine-801-1-000001.sock") << "";
    std::ofstream(folder / "practice.sock") << "";
    // Its input has ended already.
    const RunResult result =
        RunToEnd({"sh", "-c", "\"$0\" --end-with-input --prefix \"$1\" </dev/null", Program(),
                  m_folder.Path().string()},
                 {{"XDG_RUNTIME_DIR", m_runtime.string()}});
    EXPECT_EQ(result.exitCode, 0) << result.output;
    struct stat facts {};
    ASSERT_EQ(stat(folder.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0700U);
    EXPECT_FALSE(fs::exists(folder / "wine-801-1-000001.sock"));
    EXPECT_TRUE(fs::exists(folder / "practice.sock")) << "another tool's";
}

TEST_F(BridgeProgram, Signal_EndsItWithZero) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        auto program = ChildProcess::Start({Program(), "--verbose", "--prefix", m_folder.Path()},
                                           {{"XDG_RUNTIME_DIR", m_runtime.string()}});
        ASSERT_TRUE(program);
        for (int i = 0; i < 200 && program->Output().empty(); ++i) {
            std::this_thread::sleep_for(10ms);
        }
        EXPECT_EQ(program->Output(),
                  "offering tools in " + (m_runtime / "spellwick/assist").string() + "\n");
        program->Signal(number);
        EXPECT_EQ(program->WaitForEnd(5s), 0);
    }
}

}  // namespace
}  // namespace spellwick::testing_support
