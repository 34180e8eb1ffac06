// The option to look for assist tools in Wine, with a bridge that only writes down what happens to
// it.
#include <csignal>
#include <fstream>

#include "tests/end_to_end/player_desk.h"
#include "tests/support/file_bytes.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class WineOption : public PlayerDesk {
  protected:
    // Spellwick in a folder of its own, with the bridge beside it.
    void SetUp() override {
        PlayerDesk::SetUp();
        if (!m_desk) {
            return;
        }
        m_home = m_desk->Session().Folder() / "programs";
        m_notes = m_desk->Session().Folder() / "notes";
        fs::create_directories(m_home);
        for (const char* file : {"spellwick", "SpellData.txt", "ReadMe.wri"}) {
            fs::copy(Programs() / file, m_home / file);
        }
        std::ofstream(m_home / "spellwick-bridge") << "#!/bin/sh\n"
                                                   << "echo \"started $*\" >>" << m_notes << '\n'
                                                   << "cat >/dev/null\n"
                                                   << "echo ended >>" << m_notes << '\n';
        fs::permissions(m_home / "spellwick-bridge", fs::perms::owner_all);
    }

    std::unique_ptr<ChildProcess> Start() {
        auto program = m_desk->Session().Spawn({(m_home / "spellwick").string()});
        EXPECT_NE(m_desk->WaitWindow(CaptionStart()), 0U);
        return program;
    }
    std::string Notes() const { return BytesOf(m_notes); }
    bool WaitNotes(const std::string& notes) const {
        return WaitUntil([&] { return Notes() == notes; });
    }

  private:
    fs::path m_home;
    fs::path m_notes;
};

TEST_F(WineOption, Off_StartsNoBridge) {
    auto program = Start();
    m_desk->AskToClose(m_desk->WaitWindow(CaptionStart()));
    EXPECT_EQ(program->WaitForEnd(10s), 0);
    EXPECT_EQ(Notes(), "");
}

TEST_F(WineOption, On_TheBridgeLivesAsLongAsSpellwickHoweverThatEnds) {
    Prepare(kGlobal, {{"FindWineTools", "True"}});
    auto program = Start();
    EXPECT_TRUE(WaitNotes("started --end-with-input\n")) << Notes();
    m_desk->AskToClose(m_desk->WaitWindow(CaptionStart()));
    EXPECT_EQ(program->WaitForEnd(10s), 0);
    EXPECT_TRUE(WaitNotes("started --end-with-input\nended\n")) << Notes();
    program = Start();
    EXPECT_TRUE(WaitUntil([&] { return Notes().size() > 32; }));
    program->Signal(SIGKILL);
    EXPECT_TRUE(WaitNotes("started --end-with-input\nended\nstarted --end-with-input\nended\n"))
        << Notes();
}

}  // namespace
}  // namespace spellwick::testing_support
