// The countdown of a spell while an assist tool reports the casts.
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "tests/end_to_end/tool_desk.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;

class ReportedTimer : public ToolDesk {
  protected:
    void Cast(std::size_t lines) {
        ClickSpell(kClumsy);
        ASSERT_TRUE(WaitUntil([&] { return Typed().size() == lines; }));
        ASSERT_TRUE(WaitQuiet());
    }
    xcb_window_t TimerWindow() const { return m_desk->FindWindow("SpellTimer"); }
    bool GameHasKeyboard() const {
        return m_desk->Session().ActiveWindow() == m_desk->FindWindow("Ultima Online");
    }
};

TEST_F(ReportedTimer, Cast_ShowsItsTimerAtTheReportAndAFizzleShowsNone) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"SpellTimerMode", "2"}, {"TimerLeft", "15000"}, {"TimerTop", "3000"}});
    StartAll();
    TellTool("fizzle");
    Cast(3);
    EXPECT_EQ(CountTold("fizzled Clumsy"), 1U);
    std::this_thread::sleep_for(1500ms);  // a tick of the watch
    EXPECT_EQ(TimerWindow(), 0U);

    Cast(6);
    EXPECT_EQ(CountTold("out send 1326 1 0"), 1U);
    EXPECT_NE(m_desk->WaitWindow("SpellTimer"), 0U);
    EXPECT_TRUE(GameHasKeyboard());
    EXPECT_EQ(CloseSpellwick(), 0);
}

}  // namespace
}  // namespace spellwick::testing_support
