// A countdown, the list of countdowns, and their display.
#include "model/spell_timer.h"

#include <algorithm>
#include <limits>

#include <gtest/gtest.h>

#include "model/timer_display.h"
#include "model/timer_list.h"
#include "tests/support/failures.h"
#include "tests/support/pace.h"

namespace spellwick {
namespace {

SpellTable Spells() {
    SpellTable spells;
    spells.GrowTo(104);
    for (i32 row = 0; row <= kLastRow; ++row) {
        spells(row).Name = "Spell " + std::to_string(row);
    }
    return spells;
}

SpellTimer Started(i16 duration, float now, i16 row = 5) {
    SpellTimer timer;
    timer.StartTimer(Spells(), row, duration, "1", now);
    return timer;
}

TEST(SpellTimer, Start_KeepsNameNumberAndKey) {
    const SpellTimer timer = Started(20, 1000.5F, 7);
    EXPECT_EQ(timer.SpellNumber(), 7);
    EXPECT_EQ(timer.SpellName(), "Spell 7");
    EXPECT_EQ(timer.Key(), "1");
    EXPECT_EQ(timer.StartTime(), 1000.5F);
    EXPECT_EQ(timer.EndTime(), 1020.5F);
    EXPECT_EQ(timer.ControlIndex, 0);
}

TEST(SpellTimer, Start_UnknownRow_FailsAsSubscript) {
    EXPECT_EQ(FailureOf([] { Started(20, 0.0F, 105); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([] { Started(20, 0.0F, -1); }), FailureKind::kSubscript);
}

TEST(SpellTimer, OverMidnight_CountsOnAndClearsItsFlagInTheMorning) {
    SpellTimer timer = Started(30, 86390.0F);
    EXPECT_EQ(timer.EndTime(), 86420.0F);
    EXPECT_TRUE(timer.WrapsMidnight());
    EXPECT_EQ(timer.TimeRemaining(86395.0F), 25.0F);
    EXPECT_TRUE(timer.WrapsMidnight());
    EXPECT_EQ(timer.TimeRemaining(5.0F), 15.0F);
    EXPECT_FALSE(timer.WrapsMidnight());
    EXPECT_EQ(timer.EndTime(), 20.0F);
    EXPECT_EQ(timer.TimeRemaining(20.0F), 0.0F);
    EXPECT_EQ(timer.TimeRemaining(21.0F), 0.0F);
}

TEST(SpellTimer, OverMidnight_FlagClearsBelowNoonOnly) {
    SpellTimer timer = Started(32767, 86399.0F);
    EXPECT_GT(timer.TimeRemaining(43200.0F), 0.0F);
    EXPECT_TRUE(timer.WrapsMidnight());
    EXPECT_EQ(timer.TimeRemaining(43199.0F), 0.0F);
    EXPECT_FALSE(timer.WrapsMidnight());
}

// covers ODDITY(timer-at-midnight)
TEST(SpellTimer, EndAtMidnight_Oddity_CountsAWholeDay) {
    SpellTimer timer = Started(30, 86370.0F);
    EXPECT_EQ(timer.EndTime(), 86400.0F);
    EXPECT_FALSE(timer.WrapsMidnight());
    EXPECT_EQ(timer.TimeRemaining(86399.0F), 1.0F);
    EXPECT_EQ(timer.TimeRemaining(0.0F), 86400.0F);
}

TEST(SpellTimer, AtTheInstantOfItsEnd_NothingRemains) {
    SpellTimer timer = Started(20, 100.0F);
    EXPECT_EQ(timer.TimeRemaining(119.5F), 0.5F);
    EXPECT_EQ(timer.TimeRemaining(120.0F), 0.0F);
    EXPECT_EQ(timer.TimeRemaining(130.0F), 0.0F);
}

TEST(SpellTimer, Percent_IsRoundedHalvesToEven) {
    SpellTimer timer = Started(20, 100.0F);
    EXPECT_EQ(timer.PercentRemaining(100.0F), 100);
    EXPECT_EQ(timer.PercentRemaining(110.0F), 50);
    EXPECT_EQ(timer.PercentRemaining(119.9F), 0);  // a little under half a percent
    EXPECT_EQ(timer.PercentRemaining(120.0F), 0);
    SpellTimer exact = Started(200, 0.0F);
    EXPECT_EQ(exact.PercentRemaining(199.0F), 0);  // 0.5
    EXPECT_EQ(exact.PercentRemaining(197.0F), 2);  // 1.5
    EXPECT_EQ(exact.PercentRemaining(195.0F), 2);  // 2.5
}

TEST(SpellTimer, ClockThatJumps_StaysWithinBounds) {
    SpellTimer back = Started(20, 50000.0F);
    EXPECT_EQ(back.TimeRemaining(40000.0F), 10020.0F);
    EXPECT_EQ(back.PercentRemaining(40000.0F), 100);
    SpellTimer forward = Started(20, 50000.0F);
    EXPECT_EQ(forward.TimeRemaining(80000.0F), 0.0F);
    EXPECT_EQ(forward.PercentRemaining(80000.0F), 0);
    SpellTimer overMidnight = Started(20, 86395.0F);
    EXPECT_EQ(overMidnight.TimeRemaining(40000.0F), 0.0F);  // counts as the next morning
    EXPECT_EQ(overMidnight.TimeRemaining(0.0F), 15.0F);
}

TEST(SpellTimer, ZeroSeconds_HaveNoPercent) {
    SpellTimer timer = Started(0, 100.0F);
    EXPECT_EQ(timer.TimeRemaining(100.0F), 0.0F);
    EXPECT_EQ(FailureOf([&] { timer.PercentRemaining(100.0F); }), FailureKind::kDivision);
}

TEST(SpellTimer, NegativeSeconds_AreOver) {
    SpellTimer timer = Started(std::numeric_limits<i16>::min(), 100.0F);
    EXPECT_EQ(timer.TimeRemaining(100.0F), 0.0F);
    EXPECT_EQ(timer.PercentRemaining(100.0F), 0);
}

class TimerListTest : public testing::Test {
  protected:
    void Add(i16 row, i16 duration, float now) {
        timers.Create(spells, row, duration, now);
        timers.DropEnding(now);
        timers.Sort(now);
    }
    // The rows, in the order of their slots.
    std::vector<i16> Shown() {
        std::vector<i16> rows(timers.Count(), -1);
        for (const SpellTimer& timer : timers.Timers()) {
            rows.at(static_cast<std::size_t>(timer.ControlIndex)) = timer.SpellNumber();
        }
        return rows;
    }
    std::vector<std::string> Keys() {
        std::vector<std::string> keys;
        for (const SpellTimer& timer : timers.Timers()) {
            keys.push_back(timer.Key());
        }
        return keys;
    }

    SpellTable spells = Spells();
    TimerList timers;
};

TEST_F(TimerListTest, LeastTimeLeft_TakesSlot0) {
    Add(1, 60, 0.0F);
    Add(2, 30, 0.0F);
    Add(3, 90, 0.0F);
    EXPECT_EQ(Shown(), (std::vector<i16>{2, 1, 3}));
    EXPECT_EQ(Keys(), (std::vector<std::string>{"1", "2", "3"}));
}

TEST_F(TimerListTest, EqualTimes_KeepTheOrderOfCreation) {
    for (i16 row = 0; row < 20; ++row) {
        Add(row, row == 10 ? 59 : 60, 0.0F);
    }
    const std::vector<i16> shown = Shown();
    EXPECT_EQ(shown[0], 10);
    EXPECT_TRUE(std::is_sorted(shown.begin() + 1, shown.end()));
}

TEST_F(TimerListTest, Ended_IsDroppedAndTheOthersMoveUp) {
    Add(1, 20, 0.0F);
    Add(2, 30, 0.0F);
    timers.DropEnding(20.0F);
    timers.Sort(20.0F);
    EXPECT_EQ(Shown(), (std::vector<i16>{2}));
}

// covers ODDITY(timer-last-second)
TEST_F(TimerListTest, LastSecond_Oddity_EndsWithTheNextStart) {
    Add(1, 20, 0.0F);
    timers.DropEnding(19.0F);  // exactly one second left
    EXPECT_EQ(timers.Count(), 1U);
    Add(2, 60, 19.125F);
    EXPECT_EQ(Shown(), (std::vector<i16>{2}));
}

TEST_F(TimerListTest, ZeroSeconds_AreGoneAtOnce) {
    Add(1, 0, 0.0F);
    EXPECT_TRUE(timers.IsEmpty());
    Add(2, 1, 0.0F);
    EXPECT_EQ(Keys(), (std::vector<std::string>{"2"}));
}

TEST_F(TimerListTest, TenThousand_AreSortedAtTheNextStartWithinASecond) {
    for (int i = 0; i < 9'999; ++i) {
        timers.Create(spells, static_cast<i16>(i % 96), static_cast<i16>(2 + i * 7919 % 30'000),
                      0.0F);
    }
    const testing_support::ProcessorTime time;
    Add(1, 60, 0.0F);
    EXPECT_LT(time.Seconds(), 1.0);
    ASSERT_EQ(timers.Count(), 10'000U);
    std::vector<float> left(timers.Count());
    for (SpellTimer& timer : timers.Timers()) {
        left.at(static_cast<std::size_t>(timer.ControlIndex)) = timer.TimeRemaining(0.0F);
    }
    EXPECT_TRUE(std::is_sorted(left.begin(), left.end()));
}

struct BarRow {
    i32 percent;
    i32 width;
    Colour rest;
    Colour seconds;
};

// covers ODDITY(timer-two-limits)
TEST(TimerDisplay, Limits_Oddity_TheBarWarnsAtHalfTheTextsPercentage) {
    constexpr BarRow kRows[] = {
        {0, 0, kRed, kRed},
        {1, 0, kRed, kRed},
        {2, 0, kRed, kRed},
        {3, 1, kRed, kRed},
        {9, 3, kRed, kRed},
        {10, 4, kYellow, kRed},
        {19, 7, kYellow, kRed},
        {20, 8, kButtonFace, kYellow},
        {39, 16, kButtonFace, kYellow},
        {40, 16, kButtonFace, kButtonFace},
        {50, 21, kButtonFace, kButtonFace},
        {99, 41, kButtonFace, kButtonFace},
        {100, 42, kButtonFace, kButtonFace},
    };
    for (const BarRow& row : kRows) {
        EXPECT_EQ(BarWidth(row.percent), row.width) << row.percent;
        EXPECT_EQ(BarRestColour(row.percent), row.rest) << row.percent;
        EXPECT_EQ(SecondsColour(row.percent), row.seconds) << row.percent;
    }
}

TEST(TimerDisplay, SavedMode_ThatIsNone_CountsAsUnset) {
    EXPECT_EQ(TimerModeOf(0), kTimersOff);
    EXPECT_EQ(TimerModeOf(1), kTimersAsText);
    EXPECT_EQ(TimerModeOf(2), kTimersAsIcons);
    for (const i32 saved :
         {-1, 3, 7, std::numeric_limits<i32>::min(), std::numeric_limits<i32>::max()}) {
        EXPECT_EQ(TimerModeOf(saved), kTimersAsIcons) << saved;
    }
}

TEST(TimerDisplay, Seconds_AreRoundedHalvesToEven) {
    EXPECT_EQ(SecondsText(25.0F), "25");
    EXPECT_EQ(SecondsText(16.5F), "16");
    EXPECT_EQ(SecondsText(17.5F), "18");
    EXPECT_EQ(SecondsText(0.4F), "0");
    EXPECT_EQ(SecondsText(86400.0F), "86400");
}

}  // namespace
}  // namespace spellwick
