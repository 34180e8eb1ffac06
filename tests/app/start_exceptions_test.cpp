// A regular start throws no exception: the first one of a process reads the unwinding tables of all
// its libraries, which costs time and memory.
#include <stdexcept>

#include <gtest/gtest.h>

#include "companion/settings_at_start.h"
#include "link/assist_tools.h"
#include "link/game_clients.h"
#include "tests/support/main_window_fixture.h"
#include "tests/support/thrown_exceptions.h"

namespace spellwick {
namespace {

using testing_support::ThrownExceptions;

class StartExceptions : public MainWindowFixture {
  protected:
    // The steps of the start that have no part in the system, until the window is on the screen.
    void RunStart() {
        EXPECT_EQ(LoadGameClients(SettingsFolder()).fault, "");
        EXPECT_EQ(LoadAssistTools(SettingsFolder()).fault, "");
        Make();
        m_atShow = [this] { Form().Appear(); };
        EXPECT_EQ(Form().Form_Load(), LoadOutcome::kReady);
        TakeInSettings(State(), m_store);
        Form().Form_Activate();
        Form().PaintAhead();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&Form()));
    }
};

TEST_F(StartExceptions, FirstStart_ThrowsNothing) {
    const int before = ThrownExceptions();
    RunStart();
    EXPECT_EQ(ThrownExceptions(), before);
}

TEST_F(StartExceptions, SavedPlayer_ThrowsNothing) {
    SavePlayer(kMira);
    const int before = ThrownExceptions();
    RunStart();
    EXPECT_EQ(State().CurrentPlayerName, kMira);
    EXPECT_EQ(ThrownExceptions(), before);
}

TEST_F(StartExceptions, SavedTextThatIsNoNumber_IsCounted) {
    SetSaved("Settings", "MR price", "dear");
    const int before = ThrownExceptions();
    RunStart();
    EXPECT_GT(ThrownExceptions(), before);
}

}  // namespace
}  // namespace spellwick
