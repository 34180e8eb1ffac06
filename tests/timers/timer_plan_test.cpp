// The places of the window's parts in each of the three arrangements.
#include "timers/timer_plan.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

constexpr QSize kControl(13, 14);

TEST(TimerPlan, Texts_StandBelowEachOtherWithRoomForFour) {
    const TimerPlan plan = PlanTexts(2, {100, 15}, {40, 15});
    EXPECT_EQ(plan.texts, 2);
    EXPECT_EQ(plan.icons, 0);
    EXPECT_FALSE(plan.showsControls);
    const int tops[] = {2, 19, 36, 53};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(plan.names[i], QRect(2, tops[i], 100, 15));
        EXPECT_EQ(plan.seconds[i], QRect(102, tops[i], 40, 15));
    }
    EXPECT_EQ(plan.window, QSize(146, 72));
    EXPECT_EQ(PlanTexts(9, {100, 15}, {40, 15}).texts, 4);
    EXPECT_EQ(PlanTexts(0, {100, 15}, {40, 15}).window, QSize(146, 72));
}

TEST(TimerPlan, Column_StandsBelowTheControls) {
    const TimerPlan plan = PlanColumn(3, kControl);
    EXPECT_EQ(plan.texts, 0);
    EXPECT_EQ(plan.icons, 3);
    EXPECT_TRUE(plan.showsControls);
    const int tops[] = {14, 62, 110, 158};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(plan.pictures[i], QRect(2, tops[i], 42, 42));
        EXPECT_EQ(plan.bars[i], QRect(2, tops[i] + 42, 42, 5));
    }
    EXPECT_EQ(plan.window, QSize(46, 202));
    EXPECT_EQ(plan.controls[0], QRect(31, 0, 13, 14));
    EXPECT_EQ(plan.controls[1], QRect(18, 0, 13, 14));
    EXPECT_EQ(PlanColumn(5, kControl).icons, 4);
}

// covers ODDITY(timer-fourth-bar)
TEST(TimerPlan, Column_Oddity_TwoPixelsOfTheFourthBarAreInSight) {
    const TimerPlan plan = PlanColumn(4, kControl);
    const QRect window(QPoint(0, 0), plan.window);
    EXPECT_EQ(plan.bars[2].intersected(window).height(), 5);
    EXPECT_EQ(plan.bars[3].intersected(window).height(), 2);
}

TEST(TimerPlan, Row_StandsRightOfTheControls) {
    const TimerPlan plan = PlanRow(4, kControl);
    EXPECT_EQ(plan.icons, 4);
    const int lefts[] = {17, 61, 105, 149};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(plan.pictures[i], QRect(lefts[i], 2, 42, 42));
        EXPECT_EQ(plan.bars[i], QRect(lefts[i], 44, 42, 5));
    }
    EXPECT_EQ(plan.window, QSize(193, 49));
    EXPECT_EQ(plan.controls[0], QRect(2, 0, 13, 14));
    EXPECT_EQ(plan.controls[1], QRect(2, 14, 13, 14));
}

TEST(TimerPlan, LargerFont_EnlargesIconsAndBars) {
    const TimerPlan row = PlanRow(4, {22, 25}, 1.5);
    EXPECT_EQ(row.pictures[1], QRect(22 + 6 + 66, 3, 63, 63));
    EXPECT_EQ(row.bars[1], QRect(22 + 6 + 66, 66, 63, 8));
    EXPECT_EQ(row.window.height(), 74);
    const TimerPlan column = PlanColumn(4, {22, 25}, 1.5);
    EXPECT_EQ(column.pictures[1], QRect(3, 25 + 72, 63, 63));
    EXPECT_EQ(column.bars[1].top(), 25 + 72 + 63);
    EXPECT_EQ(column.window.width(), 69);
    EXPECT_EQ(PlanRow(4, {40, 60}, 1.5).window.height(), 120) << "both controls are in sight";
}

}  // namespace
}  // namespace spellwick
