// The end of the half in Wine, with a script in the place of Wine.
#include <fstream>

#include <gtest/gtest.h>

#include "bridge/prefix_bridge.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/x_session.h"

namespace spellwick::bridge {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing_support::WaitUntil;

class AnyHalf : public testing::Test {
  protected:
    void Start(const std::string& script) {
        std::ofstream(m_wine) << "#!/bin/sh\ntouch '" << m_started.string() << "'\n" << script;
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
    std::unique_ptr<WineHalf> m_half;
};

// It takes no notice of the end of its input for two seconds, as Wine does while it starts.
class WineHalfTest : public AnyHalf {
  protected:
    void SetUp() override { Start("sleep 2\ncat\ntouch '" + m_ended.string() + "'\n"); }

    fs::path m_ended = m_folder.Path() / "ended";
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

class HangingHalf : public AnyHalf {
  protected:
    // Hangs after these lines.
    void StartWith(const std::string& lines) {
        ASSERT_NO_FATAL_FAILURE(Start(lines + "exec sleep 60\n"));
        m_bridge = std::make_unique<PrefixBridge>(std::move(m_half), "801-1", nullptr, false);
        m_start = PrefixBridge::Clock::now();
    }
    bool EndsAfter(std::chrono::milliseconds time) {
        m_bridge->Serve(m_start + time);
        return WaitUntil([this] { return m_bridge->Ended(); }, 500ms);
    }

    std::unique_ptr<PrefixBridge> m_bridge;
    PrefixBridge::Clock::time_point m_start;
};

TEST_F(HangingHalf, OneThatWasReady_IsKilledAfterTenSecondsOfSilence) {
    ASSERT_NO_FATAL_FAILURE(StartWith("echo 0 ready\n"));
    ASSERT_TRUE(WaitUntil([this] {
        m_bridge->Serve(m_start);
        return m_bridge->IsReady();
    }));
    EXPECT_FALSE(EndsAfter(10s));
    EXPECT_TRUE(EndsAfter(10001ms));
}

TEST_F(HangingHalf, OneThatDoesNotComeUp_IsKilledAfterFiveMinutes) {
    ASSERT_NO_FATAL_FAILURE(StartWith(""));
    EXPECT_FALSE(EndsAfter(4min + 59s));
    EXPECT_TRUE(EndsAfter(5min + 1ms));
}

}  // namespace
}  // namespace spellwick::bridge
