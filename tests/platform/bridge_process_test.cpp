// spellwick-bridge as a process of Spellwick's.
#include "platform/linux/bridge_process.h"

#include <csignal>
#include <fstream>
#include <functional>
#include <thread>

#include <gmock/gmock.h>

#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class BridgeProcessTest : public testing::Test {
  protected:
    // A bridge in `folder`, in the shell's words. It writes down its process number first.
    void WriteBridge(const fs::path& folder, const std::string& words) {
        fs::create_directories(folder);
        std::ofstream(folder / "spellwick-bridge")
            << "#!/bin/sh\necho $$ \"$@\" >>" << m_notes << '\n'
            << words << '\n';
        fs::permissions(folder / "spellwick-bridge", fs::perms::owner_all);
    }

    std::vector<std::string> Notes() const {
        std::ifstream file(m_notes);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    static bool Wait(const std::function<bool()>& holds) {
        for (int i = 0; i < 1000 && !holds(); ++i) {
            std::this_thread::sleep_for(10ms);
        }
        return holds();
    }
    bool HasEnded(std::size_t line) const {
        return kill(static_cast<pid_t>(std::stol(Notes().at(line))), 0) != 0;
    }

    TemporaryFolder m_folder;
    fs::path m_notes = m_folder.Path() / "notes";
    fs::path m_beside = m_folder.Path() / "beside";
    fs::path m_package = m_folder.Path() / "package";
    BridgeProcess m_bridge{{m_beside, m_package}};
};

TEST_F(BridgeProcessTest, Start_TakesTheFirstThereIsAndStopEndsIt) {
    WriteBridge(m_package, "cat >/dev/null; echo ended >>" + m_notes.string());
    m_bridge.Start();
    m_bridge.Start();
    ASSERT_TRUE(Wait([&] { return !Notes().empty(); }));
    EXPECT_THAT(Notes().front(), testing::EndsWith(" --end-with-input"));
    EXPECT_EQ(m_bridge.Trouble(), "");
    m_bridge.Stop();
    EXPECT_TRUE(Wait([&] { return Notes().size() == 2; }));
    EXPECT_TRUE(Wait([&] { return m_bridge.Trouble().empty() && HasEnded(0); }));
    EXPECT_EQ(Notes().size(), 2U) << "it was started once";
    WriteBridge(m_beside, "echo beside >>" + m_notes.string() + "; cat >/dev/null");
    m_bridge.Start();
    EXPECT_TRUE(Wait([&] { return Notes().size() == 4 && Notes().back() == "beside"; }));
}

TEST_F(BridgeProcessTest, BridgeThatEnds_SaysItsOwnWords) {
    WriteBridge(m_beside, "echo 'spellwick-bridge: /run/x: is no folder' >&2; exit 2");
    m_bridge.Start();
    EXPECT_TRUE(Wait([&] { return !m_bridge.Trouble().empty(); }));
    EXPECT_EQ(m_bridge.Trouble(), "spellwick-bridge: /run/x: is no folder");
    WriteBridge(m_beside, "sleep 0.5");
    m_bridge.Start();
    EXPECT_EQ(m_bridge.Trouble(), "") << "tried again";
    EXPECT_TRUE(Wait([&] { return m_bridge.Trouble() == "spellwick-bridge has ended."; }));
    m_bridge.Stop();
    EXPECT_EQ(m_bridge.Trouble(), "");
}

TEST_F(BridgeProcessTest, NoBridge_IsSaid) {
    const char* const path = std::getenv("PATH");
    const std::string before = path == nullptr ? "" : path;
    setenv("PATH", m_folder.Path().c_str(), 1);
    m_bridge.Start();
    EXPECT_EQ(m_bridge.Trouble(), "spellwick-bridge is not installed.");
    WriteBridge(m_folder.Path(), "read line");
    m_bridge.Start();
    EXPECT_TRUE(Wait([&] { return !Notes().empty(); })) << "found on the path";
    EXPECT_EQ(m_bridge.Trouble(), "");
    setenv("PATH", before.c_str(), 1);
}

TEST_F(BridgeProcessTest, EndOfTheProgram_EndsItToo) {
    WriteBridge(m_beside, "cat >/dev/null; echo ended >>" + m_notes.string());
    {
        BridgeProcess bridge({m_beside});
        bridge.Start();
        ASSERT_TRUE(Wait([&] { return !Notes().empty(); }));
    }
    EXPECT_TRUE(Wait([&] { return Notes().size() == 2; }));
}

}  // namespace
}  // namespace spellwick
