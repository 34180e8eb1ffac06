// The start of the process on Linux, until its system is open.
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "platform/linux/x11_connection.h"
#include "platform/system.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_exceptions.h"
#include "tests/support/x_session.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::ChildProcess;
using testing_support::ThrownExceptions;
using testing_support::WaitUntil;
using testing_support::WindowManager;
using testing_support::XSession;

// A server that ends with its last client, as one that starts anew then loses all that it had.
class LinuxStart : public testing::Test {
  protected:
    void SetUp() override {
        if (const std::string missing = XSession::WhatIsMissing(WindowManager::kNone);
            !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        const std::filesystem::path number = m_folder.Path() / "display";
        m_server = ChildProcess::Start(
            {"sh", "-c",
             "exec Xvfb -displayfd 7 -screen 0 640x480x24 -nolisten tcp -terminate 7>\"$0\"",
             number.string()});
        ASSERT_NE(m_server, nullptr);
        std::string name;
        ASSERT_TRUE(WaitUntil([&] {
            std::ifstream file(number);
            return std::getline(file, name) && !file.eof() && !name.empty();
        }));
        setenv("DISPLAY", (":" + name).c_str(), 1);
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("XAUTHORITY");
        setenv("XDG_RUNTIME_DIR", m_folder.Path().c_str(), 1);
    }

    void TearDown() override {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
            sigaddset(&held, signal);
        }
        sigprocmask(SIG_UNBLOCK, &held, nullptr);
    }

    Options InFolder() const { return {.data = m_folder.Path() / "data"}; }

    TemporaryFolder m_folder;
    std::unique_ptr<ChildProcess> m_server;
};

TEST_F(LinuxStart, FirstConnection_IsKeptUntilThereAreOthers) {
    constexpr auto kUntilItWouldEnd = 500ms;
    Preparation prepared = PrepareProcess();
    ASSERT_EQ(prepared.trouble, "");
    EXPECT_EQ(m_server->WaitForEnd(kUntilItWouldEnd), std::nullopt) << m_server->Output();
    const Ownership owned = OwnSettings(InFolder());
    EXPECT_FALSE(owned.another);
    {
        const System system = OpenSystem(InFolder(), std::move(prepared.display)).get();
        EXPECT_EQ(m_server->WaitForEnd(kUntilItWouldEnd), std::nullopt) << m_server->Output();
        EXPECT_TRUE(system.troubles.empty()) << system.troubles.front();
    }
    // It was the connections that kept the server, and none is left over.
    EXPECT_EQ(m_server->WaitForEnd(5s), 0) << m_server->Output();
}

// The first exception of a process reads the unwinding tables of all its libraries.
TEST_F(LinuxStart, RegularStart_ThrowsNothing) {
    const X11Connection keepsTheServer("");
    for (const char* store : {"a new store", "the store of before"}) {
        SCOPED_TRACE(store);
        const int before = ThrownExceptions();
        Preparation prepared = PrepareProcess();
        ASSERT_EQ(prepared.trouble, "");
        const Ownership owned = OwnSettings(InFolder());
        const System system = OpenSystem(InFolder(), std::move(prepared.display)).get();
        EXPECT_TRUE(system.troubles.empty());
        EXPECT_EQ(ThrownExceptions(), before);
    }
}

// What opens beside the first thread runs at a lower priority, which ends with it.
TEST_F(LinuxStart, Opening_LeavesTheFirstThreadItsPriority) {
    const X11Connection keepsTheServer("");
    const int before = getpriority(PRIO_PROCESS, 0);
    Preparation prepared = PrepareProcess();
    ASSERT_EQ(prepared.trouble, "");
    const System system = OpenSystem(InFolder(), std::move(prepared.display)).get();
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before);
}

TEST_F(LinuxStart, ThrownExceptions_AreCounted) {
    const int before = ThrownExceptions();
    EXPECT_THROW(throw std::runtime_error("of the test"), std::runtime_error);
    EXPECT_THROW(static_cast<void>(std::string("short").at(9)), std::out_of_range);
    EXPECT_EQ(ThrownExceptions(), before + 2);
}

}  // namespace
}  // namespace spellwick
