// The end of the half in Wine, with a script in the place of Wine.
#include "bridge/wine_half.h"

#include <fstream>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"
#include "tests/support/x_session.h"

namespace spellwick::bridge {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing_support::WaitUntil;

class WineHalfTest : public testing::Test {
  protected:
    // It takes no notice of the end of its input for two seconds, as Wine does while it starts.
    void SetUp() override {
        std::ofstream(m_wine) << "#!/bin/sh\ntouch '" << m_started.string()
                              << "'\nsleep 2\ncat\ntouch '" << m_ended.string() << "'\n";
        fs::permissions(m_wine, fs::perms::owner_all);
        std::string trouble;
        WinePrefix prefix;
        prefix.wine = m_wine;
        prefix.variables = {"PATH=/usr/bin:/bin"};
        m_half = WineHalf::Start(prefix, "bridge.exe", trouble);
        ASSERT_TRUE(m_half) << trouble;
        ASSERT_TRUE(WaitUntil([this] { return fs::exists(m_started); }));
    }

    TemporaryFolder m_folder;
    fs::path m_wine = m_folder.Path() / "wine";
    fs::path m_started = m_folder.Path() / "started";
    fs::path m_ended = m_folder.Path() / "ended";
    std::unique_ptr<WineHalf> m_half;
};

TEST_F(WineHalfTest, OneThatIsNotUpYet_IsNotWaitedForAndComesToItsEnd) {
    const auto start = std::chrono::steady_clock::now();
    m_half.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 900ms);
    EXPECT_TRUE(WaitUntil([this] { return fs::exists(m_ended); }));
}

TEST_F(WineHalfTest, OneThatIsUp_IsKilledAfterASecond) {
    m_half->NoteUp();
    m_half.reset();
    std::this_thread::sleep_for(1500ms);
    EXPECT_FALSE(fs::exists(m_ended));
}

}  // namespace
}  // namespace spellwick::bridge
