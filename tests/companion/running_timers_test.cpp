// Which running timers are shown, how, and whether their window is visible.
#include "companion/running_timers.h"

#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/duration_rules.h"
#include "tests/support/failures.h"
#include "tests/support/named_spells.h"
#include "tests/support/pace.h"
#include "tests/support/set_clock.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr i16 kPlusSpirit = 16;

class RunningTimersTest : public testing::Test {
  protected:
    RunningTimersTest() {
        NameSpells(m_state);
        m_state.SpellTimerMode = kTimersAsText;
        m_clock.now = 1000.0F;
    }
    void TickAt(float now) {
        m_clock.now = now;
        m_timers.Update();
    }
    bool IsShown() const { return m_timers.Screen().visible; }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const TimerSlot& slot : m_timers.Screen().shown) {
            names.push_back(slot.name);
        }
        return names;
    }
    const TimerSlot& Slot(std::size_t index) const { return m_timers.Screen().shown.at(index); }

    SharedState m_state;
    SetClock m_clock;
    RunningTimers m_timers{m_state, m_clock};
};

TEST_F(RunningTimersTest, NoTimers_NoWindow) {
    m_timers.Update();
    EXPECT_FALSE(m_timers.SpellsActive());
    EXPECT_EQ(
        m_timers.Screen(),
        (TimerScreen{.visible = false, .mode = kTimersAsText, .horizontal = false, .shown = {}}));
}

TEST_F(RunningTimersTest, StartTimer_LastsByItsRuleAndTheValuesOfThatMoment) {
    m_state.Spells(7).File5 = kMagery120;
    m_state.Magery = 50;
    m_timers.StartTimer(7);
    m_state.Magery = 100;
    m_timers.StartTimer(7);
    EXPECT_EQ(Slot(0).name, "Spell 7");
    EXPECT_EQ(Slot(0).row, 7);
    EXPECT_EQ(Slot(0).seconds, "60");
    EXPECT_EQ(Slot(1).seconds, "120");
    TickAt(1010.0F);
    EXPECT_EQ(Slot(0).seconds, "50");
}

TEST_F(RunningTimersTest, StartTimer_SpellThatDoesNotLast_StartsNone) {
    m_state.Magery = 0;
    for (const i16 rule : std::initializer_list<i16>{0, kMagery120, 25, -1}) {
        m_state.Spells(7).File5 = rule;
        m_timers.StartTimer(7);
        EXPECT_FALSE(m_timers.SpellsActive()) << rule;
    }
}

TEST_F(RunningTimersTest, StartTimer_OneSecond_CountsAndLessDoesNot) {
    m_state.Spells(64).File5 = kPlusSpirit;
    m_state.SpiritSpeak = -1;  // 0.7 seconds
    m_timers.StartTimer(64);
    EXPECT_FALSE(m_timers.SpellsActive());
    m_state.SpiritSpeak = 0;
    m_timers.StartTimer(64);
    EXPECT_EQ(Slot(0).seconds, "1");
}

TEST_F(RunningTimersTest, StartTimer_ValuesBeyond16Bits_AreAnOverflow) {
    constexpr i16 kSummons = 5;
    m_state.Spells(39).File5 = kSummons;
    m_state.Magery = 10000;
    m_state.Intelligence = 6384;
    EXPECT_EQ(FailureOf([&] { m_timers.StartTimer(39); }), FailureKind::kOverflow);
    m_state.Intelligence = 6383;
    m_timers.StartTimer(39);
    EXPECT_EQ(Slot(0).seconds, "32766");
    EXPECT_EQ(FailureOf([&] { m_timers.StartTimer(105); }), FailureKind::kSubscript);
}

TEST_F(RunningTimersTest, FiveTimers_FourAreShownAndTheFifthMovesUp) {
    for (const i16 seconds : std::initializer_list<i16>{50, 20, 40, 60, 30}) {
        m_timers.CreateNewSpellTimer(seconds, seconds);
    }
    EXPECT_THAT(Names(), ElementsAre("Spell 20", "Spell 30", "Spell 40", "Spell 50"));
    TickAt(1019.5F);
    EXPECT_EQ(Names().front(), "Spell 20");
    TickAt(1020.0F);
    EXPECT_THAT(Names(), ElementsAre("Spell 30", "Spell 40", "Spell 50", "Spell 60"));
    TickAt(1030.0F);
    EXPECT_THAT(Names(), ElementsAre("Spell 40", "Spell 50", "Spell 60"));
}

TEST_F(RunningTimersTest, NewTimerWithLessTime_TakesSlot0) {
    m_timers.CreateNewSpellTimer(1, 60);
    m_timers.CreateNewSpellTimer(2, 30);
    EXPECT_THAT(Names(), ElementsAre("Spell 2", "Spell 1"));
}

TEST_F(RunningTimersTest, LastSecond_StaysThroughUpdateAndGoesWithTheNextSort) {
    m_timers.CreateNewSpellTimer(1, 20);
    m_clock.now = 1000.5F;
    m_timers.CreateNewSpellTimer(2, 60);
    TickAt(1019.125F);
    EXPECT_THAT(Names(), ElementsAre("Spell 1", "Spell 2"));
    m_timers.CreateNewSpellTimer(3, 90);
    EXPECT_THAT(Names(), ElementsAre("Spell 2", "Spell 3"));
}

TEST_F(RunningTimersTest, LastSecond_AnotherTimerEnds_GoesWithIt) {
    m_timers.CreateNewSpellTimer(1, 20);
    m_clock.now = 1000.5F;
    m_timers.CreateNewSpellTimer(2, 20);
    TickAt(1019.75F);
    EXPECT_THAT(Names(), ElementsAre("Spell 1", "Spell 2"));
    TickAt(1020.0F);
    EXPECT_FALSE(m_timers.SpellsActive());
}

TEST_F(RunningTimersTest, ZeroSeconds_LeaveNoTrace) {
    m_timers.CreateNewSpellTimer(1, 0);
    EXPECT_FALSE(m_timers.SpellsActive());
    EXPECT_FALSE(IsShown());
}

TEST_F(RunningTimersTest, UnknownRow_FailsAsSubscript) {
    EXPECT_EQ(FailureOf([&] { m_timers.CreateNewSpellTimer(105, 10); }), FailureKind::kSubscript);
}

TEST_F(RunningTimersTest, LastTimerEnds_HidesTheWindowAndUpdateStops) {
    m_timers.CreateNewSpellTimer(1, 20);
    EXPECT_TRUE(IsShown());
    TickAt(1020.0F);
    EXPECT_FALSE(IsShown());
    EXPECT_FALSE(m_timers.SpellsActive());
    EXPECT_THAT(Names(), IsEmpty());
    TickAt(1021.0F);
    EXPECT_FALSE(IsShown());
}

TEST_F(RunningTimersTest, ModeOff_TimersRunAndTheWindowStaysAway) {
    m_state.SpellTimerMode = kTimersOff;
    m_timers.CreateNewSpellTimer(1, 60);
    EXPECT_TRUE(m_timers.SpellsActive());
    EXPECT_FALSE(IsShown());
    TickAt(1010.0F);
    EXPECT_FALSE(IsShown());
}

TEST_F(RunningTimersTest, SetMode_StoresTheModeAndShowsTheTimersInIt) {
    m_timers.CreateNewSpellTimer(1, 60);
    m_timers.SetMode(kTimersOff);
    EXPECT_EQ(m_state.SpellTimerMode, kTimersOff);
    EXPECT_FALSE(IsShown());
    m_timers.SetMode(kTimersAsIcons);
    EXPECT_EQ(m_state.SpellTimerMode, kTimersAsIcons);
    EXPECT_TRUE(IsShown());
    EXPECT_EQ(m_timers.Screen().mode, kTimersAsIcons);
}

TEST_F(RunningTimersTest, SavedNumberThatIsNoMode_IsShownAsIcons) {
    for (const i32 mode :
         {-1, 3, 7, std::numeric_limits<i32>::min(), std::numeric_limits<i32>::max()}) {
        SCOPED_TRACE(mode);
        m_state.SpellTimerMode = mode;
        m_timers.CreateNewSpellTimer(1, 100);
        EXPECT_TRUE(IsShown());
        EXPECT_EQ(m_timers.Screen().mode, kTimersAsIcons);
        EXPECT_EQ(m_state.SpellTimerMode, mode);
    }
}

TEST_F(RunningTimersTest, ModeChangedElsewhere_IsNoticedByTheNextUpdate) {
    m_timers.CreateNewSpellTimer(1, 60);
    m_state.SpellTimerMode = kTimersAsIcons;
    m_timers.Update();
    EXPECT_EQ(m_timers.Screen().mode, kTimersAsIcons);
    m_state.SpellTimerMode = kTimersOff;
    m_timers.Update();
    EXPECT_FALSE(IsShown());
    m_state.SpellTimerMode = kTimersAsText;
    m_timers.Update();
    EXPECT_TRUE(IsShown());
}

TEST_F(RunningTimersTest, HiddenByUser_StaysAwayUntilTheNextTimer) {
    m_timers.CreateNewSpellTimer(1, 60);
    m_timers.HideForUser();
    EXPECT_FALSE(IsShown());
    TickAt(1001.0F);
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(m_timers.SpellsActive());
    m_timers.SetMode(kTimersAsIcons);
    EXPECT_FALSE(IsShown());
    m_timers.ToggleLayout();
    EXPECT_FALSE(IsShown());
    m_timers.CreateNewSpellTimer(2, 30);
    EXPECT_TRUE(IsShown());
}

TEST_F(RunningTimersTest, ToggleLayout_GoesToTheRowAndBack) {
    m_timers.CreateNewSpellTimer(1, 60);
    EXPECT_FALSE(m_timers.Screen().horizontal);
    m_timers.ToggleLayout();
    EXPECT_TRUE(m_timers.Screen().horizontal);
    TickAt(1001.0F);
    EXPECT_TRUE(m_timers.Screen().horizontal);
    m_timers.ToggleLayout();
    EXPECT_FALSE(m_timers.Screen().horizontal);
}

TEST_F(RunningTimersTest, Seconds_TakeTheColourOfThePercentage) {
    m_timers.CreateNewSpellTimer(1, 100);
    struct Row {
        float at;
        const char* seconds;
        Colour colour;
        i32 percent;
    };
    constexpr Row kRows[] = {
        {0.0F, "100", kButtonFace, 100}, {60.0F, "40", kButtonFace, 40}, {61.0F, "39", kYellow, 39},
        {80.0F, "20", kYellow, 20},      {81.0F, "19", kRed, 19},        {97.5F, "2", kRed, 2},
        {99.5F, "0", kRed, 0},
    };
    for (const Row& row : kRows) {
        TickAt(1000.0F + row.at);
        EXPECT_EQ(Slot(0), (TimerSlot{.row = 1,
                                      .name = "Spell 1",
                                      .seconds = row.seconds,
                                      .secondsColour = row.colour,
                                      .percent = row.percent}))
            << row.at;
    }
}

TEST_F(RunningTimersTest, Midnight_CountsOn) {
    m_clock.now = 86390.0F;
    m_timers.CreateNewSpellTimer(1, 30);
    TickAt(86395.0F);
    EXPECT_EQ(Slot(0).seconds, "25");
    TickAt(5.0F);
    EXPECT_EQ(Slot(0).seconds, "15");
    TickAt(20.0F);
    EXPECT_FALSE(IsShown());
}

TEST_F(RunningTimersTest, ClockSetBackAndForward_StaysWithinBounds) {
    m_timers.CreateNewSpellTimer(1, 100);
    TickAt(500.0F);
    EXPECT_EQ(Slot(0).percent, 100);
    TickAt(90.0F);
    EXPECT_EQ(Slot(0).percent, 100);
    TickAt(1050.0F);
    EXPECT_EQ(Slot(0).percent, 50);
    TickAt(50000.0F);
    EXPECT_FALSE(IsShown());
}

TEST_F(RunningTimersTest, TenThousandTimers_AreTakenAndShown_Long) {
    const testing_support::ProcessorTime all;
    for (int i = 0; i < 10'000; ++i) {
        m_timers.CreateNewSpellTimer(static_cast<i16>(i % 96),
                                     static_cast<i16>(10 + i * 7919 % 30'000));
    }
    m_timers.Update();
    EXPECT_LT(all.Seconds(), 4.0 * testing_support::kPace);
    EXPECT_EQ(m_timers.Screen().shown.size(), 4U);
    const testing_support::ProcessorTime tick;
    TickAt(40'000.0F);
    EXPECT_LT(tick.Seconds(), 1.0 * testing_support::kPace);
    EXPECT_FALSE(IsShown());
}

}  // namespace
}  // namespace spellwick
