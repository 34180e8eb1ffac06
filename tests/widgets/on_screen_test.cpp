// Windows whose saved place is on no screen.
#include "widgets/on_screen.h"

#include <limits>

#include <gtest/gtest.h>

namespace spellwick {
namespace {

constexpr QSize kSize(200, 100);
constexpr QRect kMain(0, 0, 1000, 800);
constexpr QRect kRight(1000, 200, 600, 600);
constexpr int kMost = std::numeric_limits<int>::max();

struct Row {
    const char* name;
    QPoint saved;
    QPoint place;
};

class OnScreensTest : public testing::TestWithParam<Row> {};

TEST_P(OnScreensTest, Place) {
    EXPECT_EQ(OnScreens(GetParam().saved, kSize, {kMain, kRight}), GetParam().place);
}

INSTANTIATE_TEST_SUITE_P(Places, OnScreensTest,
                         testing::Values(Row{"OnTheMainScreen", {300, 300}, {300, 300}},
                                         Row{"OnTheOther", {1300, 650}, {1300, 650}},
                                         Row{"AcrossBoth", {900, 300}, {900, 300}},
                                         Row{"AGripOnTheRight", {1584, 300}, {1584, 300}},
                                         Row{"LessThanAGripOnTheRight", {1585, 300}, {1384, 300}},
                                         Row{"AGripOnTheLeft", {-184, 5}, {-184, 5}},
                                         Row{"LessThanAGripOnTheLeft", {-185, 5}, {0, 5}},
                                         Row{"AGripAtTheFoot", {5, 784}, {5, 784}},
                                         Row{"LessThanAGripAtTheFoot", {5, 785}, {5, 660}},
                                         Row{"AboveTheOther", {1200, -50}, {1200, 200}},
                                         Row{"BelowTheOther", {1200, 2667}, {1200, 660}},
                                         Row{"BeyondACorner", {-3000, -3000}, {0, 0}},
                                         Row{"AsFarAsNumbersGo", {kMost, kMost}, {1384, 660}},
                                         Row{"AsFarAsNumbersGoBack", {-kMost, -kMost}, {0, 0}}),
                         [](const auto& row) { return row.param.name; });

TEST(OnScreens, LargerThanTheScreen_ShowsItsTopLeftCorner) {
    EXPECT_EQ(OnScreens({0, 5000}, {3000, 2000}, {kMain}), QPoint(0, 0));
}

TEST(OnScreens, SmallerThanAGrip_IsAllThatCanBeGrasped) {
    EXPECT_EQ(OnScreens({995, 5}, {5, 5}, {kMain}), QPoint(995, 5));
    EXPECT_EQ(OnScreens({996, 5}, {5, 5}, {kMain}), QPoint(979, 5));
}

TEST(OnScreens, NoScreens_StaysThere) {
    EXPECT_EQ(OnScreens({7, 9}, kSize, {}), QPoint(7, 9));
}

TEST(ClearOf, IsTheNearestFreePlaceThatKeepsTheFirstWindowsClear) {
    const QRect main(0, 0, 300, 150);
    const QRect game(300, 0, 700, 500);
    const QRect everything(0, 0, 1000, 800);
    struct Way {
        const char* name;
        QPoint from;
        std::vector<QRect> others;
        QPoint place;
    };
    for (const Way& way :
         {Way{"nothing in the way", {500, 300}, {main}, {500, 300}},
          Way{"below", {0, 0}, {main}, {0, 150}}, Way{"right", {250, 0}, {main}, {300, 0}},
          Way{"clear of both", {0, 0}, {main, game}, {0, 150}},
          Way{"clear of both from the game", {600, 100}, {main, game}, {600, 500}},
          Way{"a game that fills the screen", {0, 0}, {main, everything}, {0, 150}},
          Way{"no room at all", {5, 5}, {everything}, {5, 5}},
          Way{"nothing to keep clear", {5, 5}, {}, {5, 5}}}) {
        EXPECT_EQ(ClearOf(way.from, kSize, way.others, {kMain}), way.place) << way.name;
    }
}

}  // namespace
}  // namespace spellwick
