// The two arrangements as numbers: where every control goes.
#include "main_window/layout_plan.h"

#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {

void PrintTo(const Box4& box, std::ostream* out) {
    *out << "{" << box.left << ", " << box.top << ", " << box.width << ", " << box.height << "}";
}

namespace {

using testing::ElementsAre;

// In pixels.
const TextSizes kTexts{.captionWidths = {34, 8, 50, 38, 56},
                       .captionHeight = 15,
                       .joinedWidth = 42,
                       .comboHeight = 24};

TEST(ArrangeCommandButtonsTest, FourEqualRowsOfTheWidestCaption) {
    const CommandBlock block = ArrangeCommandButtons(112.0F, 420.0F, 97.0F, 1, kTexts);
    EXPECT_EQ(block.width, 65);
    // 43/60 of 65 pixels, less half the gap.
    EXPECT_THAT(block.buttons,
                ElementsAre(Box4{112, 420, 46, 23}, Box4{159, 420, 18, 23}, Box4{112, 444, 65, 23},
                            Box4{112, 468, 65, 23}, Box4{112, 492, 65, 23}));
}

TEST(ArrangeCommandButtonsTest, JoinedCaptionsCanBeTheWidest) {
    TextSizes texts = kTexts;
    texts.captionWidths = {34, 34, 50, 38, 40};
    texts.joinedWidth = 68;
    EXPECT_EQ(ArrangeCommandButtons(0.0F, 0.0F, 97.0F, 1, texts).width, 68 + 9 + 9);
}

TEST(ArrangeCommandButtonsTest, RowHeight_IsTheQuarterLessTheGapOrTheText) {
    struct Row {
        float height;
        i16 gap;
        int row;
    };
    for (const Row& row : {Row{97.0F, 1, 23}, Row{100.0F, 2, 23}, Row{99.9F, 1, 23},
                           Row{74.0F, 1, 17}, Row{0.0F, 1, 19}}) {
        const CommandBlock block = ArrangeCommandButtons(0.0F, 0.0F, row.height, row.gap, kTexts);
        for (const Box4& button : block.buttons) {
            EXPECT_EQ(button.height, row.row) << row.height;
        }
        EXPECT_EQ(block.buttons[4].top, (row.gap + row.row) * 3);
    }
}

TEST(PlanVerticalTest, ReagentBlock) {
    for (const bool necro : {true, false}) {
        const LayoutPlan plan = PlanVertical(necro, kTexts);
        EXPECT_EQ(plan.showsNecroRegs, necro);
        for (int k = 0; k < 13; ++k) {
            SCOPED_TRACE(k);
            const bool isRight = (k >= 4 && k < 8) || k >= 11;
            const int row = k < 8 ? k % 4 : (k < 11 ? k - 4 : k - 7);
            const auto at = static_cast<std::size_t>(k);
            EXPECT_EQ(plan.imgReg[at].left, isRight ? 94 : 5);
            EXPECT_EQ(plan.imgReg[at].top, row * 20 + 2);
            EXPECT_EQ(plan.imgReg[at].height, 20);
            EXPECT_EQ(plan.reagent[at], (Box4{isRight ? 124 : 35, row * 20 + 2, 30, 20}));
            EXPECT_EQ(plan.upDown[at].left, plan.reagent[at].Right());
            EXPECT_EQ(plan.upDown[at].top, plan.reagent[at].top);
        }
        EXPECT_EQ(plan.comboReagent.top, necro ? 143 : 83);
        EXPECT_EQ(plan.comboReagent.width, 178);
    }
}

TEST(PlanVerticalTest, StackBelowTheList) {
    for (const bool necro : {true, false}) {
        const LayoutPlan plan = PlanVertical(necro, kTexts);
        const int b = 24 + (necro ? 140 : 80) + 4;
        for (int slot = 0; slot < 8; ++slot) {
            SCOPED_TRACE(slot);
            const auto at = static_cast<std::size_t>(slot);
            const int left = slot % 4 * 44 + 2;
            const int down = slot < 4 ? 0 : 77;
            EXPECT_EQ(plan.labelAmount[at], (Box4{left, b + down, 44, 16}));
            EXPECT_EQ(plan.spellIcon[at], (Box4{left + 1, b + down + 17, 42, 42}));
            EXPECT_EQ(plan.labelChance[at], (Box4{left, b + down + 60, 44, 16}));
            const int row = slot < 4 ? 154 : 179;
            EXPECT_EQ(plan.checkCircle[at + 2], (Box4{left, b + row, 43, 24}));
        }
        EXPECT_EQ(plan.checkCircle[0], (Box4{2, b + 204, 43, 47}));
        EXPECT_EQ(plan.checkCircle[1], (Box4{46, b + 204, 43, 47}));
        EXPECT_EQ(plan.image1[0].left, 90);
        EXPECT_EQ(plan.image1[1].left, 134);
        EXPECT_THAT((std::array{plan.checkCircle[10], plan.checkCircle[11], plan.checkCircle[12],
                                plan.checkCircle[13]}),
                    ElementsAre(Box4{105, b + 204, 28, 23}, Box4{105, b + 227, 28, 23},
                                Box4{149, b + 204, 28, 23}, Box4{149, b + 227, 28, 23}));
        for (const Box4& image : plan.image1) {
            EXPECT_EQ(image.top, b + 204);
            EXPECT_EQ(image.height, 47);
        }
        const int left = 177 - 65;
        EXPECT_EQ(plan.command.buttons[0].left, left);
        EXPECT_EQ(plan.command.buttons[0].top, b + 252);
        EXPECT_EQ(plan.command.buttons[4].Right(), 177);
        EXPECT_EQ(plan.labelMana.left, 2);
        EXPECT_EQ(plan.labelMana.top, b + 252);
        EXPECT_EQ(plan.labelCurrentMana.left, 177 - 65 - 34 - 1);
        EXPECT_EQ(plan.labelCurrentMana.top, b + 252);
        EXPECT_EQ(plan.labelCost.left, 2);
        EXPECT_EQ(plan.labelCost.top, b + 269);
        EXPECT_EQ(plan.labelTithes.top, b + 269);
        EXPECT_EQ(plan.labelTithes.width, 43);
        EXPECT_EQ(plan.txtTithes.top, b + 269);
        EXPECT_EQ(plan.txtTithes.width, 53);
        EXPECT_EQ(plan.labelName, (Box4{2, b + 286, 109, 31}));
        EXPECT_EQ(plan.labelWords, (Box4{2, b + 318, 109, 31}));
        EXPECT_EQ(plan.clientWidth, 183);
        EXPECT_EQ(plan.clientHeight, b + 357);
    }
}

TEST(PlanVerticalTest, WithoutNecroRegs_TheListRisesAndTheWindowShrinksBySixty) {
    const LayoutPlan with = PlanVertical(true, kTexts);
    const LayoutPlan without = PlanVertical(false, kTexts);
    EXPECT_EQ(with.comboReagent.top - without.comboReagent.top, 60);
    EXPECT_EQ(with.clientHeight - without.clientHeight, 60);
    EXPECT_EQ(with.clientWidth, without.clientWidth);
}

TEST(PlanHorizontalTest, ReagentBlock_ThreeColumnsOfFiveFiveAndThree) {
    const LayoutPlan plan = PlanHorizontal(true, kTexts);
    constexpr std::array<int, 3> kPictures{0, 81, 162};
    constexpr std::array<int, 3> kBoxes{28, 109, 187};
    for (int k = 0; k < 13; ++k) {
        SCOPED_TRACE(k);
        const auto at = static_cast<std::size_t>(k);
        const auto column = static_cast<std::size_t>(k / 5);
        // Everything is 2 pixels in from the edge.
        EXPECT_EQ(plan.imgReg[at].left, kPictures[column] + 2);
        EXPECT_EQ(plan.imgReg[at].top, k % 5 * 15 + 2);
        EXPECT_EQ(plan.imgReg[at].height, 15);
        EXPECT_EQ(plan.reagent[at], (Box4{kBoxes[column] + 2, k % 5 * 15 + 2, 29, 15}));
        EXPECT_EQ(plan.upDown[at].left, plan.reagent[at].Right());
    }
}

TEST(PlanHorizontalTest, BandsInTheirOrder) {
    for (const bool necro : {true, false}) {
        SCOPED_TRACE(necro);
        const LayoutPlan plan = PlanHorizontal(necro, kTexts);
        const int lastReagent = plan.upDown[necro ? 10 : 7].Right();
        EXPECT_GE(plan.command.buttons[0].left, lastReagent);
        const int first = plan.labelAmount[0].left;
        EXPECT_GE(first, 240);
        EXPECT_GE(first, plan.command.buttons[4].Right());
        for (int slot = 0; slot < 8; ++slot) {
            const auto at = static_cast<std::size_t>(slot);
            const int left = first + slot * 44;
            EXPECT_EQ(plan.labelAmount[at], (Box4{left, 2, 44, 16}));
            EXPECT_EQ(plan.spellIcon[at], (Box4{left + 1, 19, 42, 42}));
            EXPECT_EQ(plan.labelChance[at], (Box4{left, 62, 44, 16}));
        }
        int right = first;
        for (std::size_t button = 0; button < 10; ++button) {
            EXPECT_GE(plan.checkCircle[button].left, right);
            EXPECT_EQ(plan.checkCircle[button].top, 80);
            EXPECT_EQ(plan.checkCircle[button].height, 24);
            right = plan.checkCircle[button].Right();
        }
        EXPECT_LE(right, first + 8 * 44);
        EXPECT_GE(plan.comboReagent.top, plan.reagent[4].Bottom());
        for (std::size_t pair = 0; pair < 2; ++pair) {
            const Box4& image = plan.image1[pair];
            EXPECT_GE(image.left, right);
            EXPECT_EQ(image.height, 47);
            EXPECT_EQ(plan.checkCircle[10 + 2 * pair], (Box4{image.left + 15, image.top, 14, 23}));
            EXPECT_EQ(plan.checkCircle[11 + 2 * pair],
                      (Box4{image.left + 15, image.top + 23, 14, 23}));
        }
        const int column = plan.image1[1].Right() + 29;
        for (const Box4& label :
             {plan.labelMana, plan.labelCost, plan.labelName, plan.labelWords}) {
            EXPECT_EQ(label.left, column);
        }
        EXPECT_EQ(plan.labelName.height, 31);
        EXPECT_EQ(plan.labelWords.height, 31);
        EXPECT_EQ(plan.labelCurrentMana.Right(), column + 108);
        EXPECT_EQ(plan.imageAnkh.Right(), column + 108);
        EXPECT_EQ(plan.imageAnkh.height, 15);
        EXPECT_EQ(plan.txtTithes.width, 53);
        EXPECT_EQ(plan.txtTithes.height, 16);
        EXPECT_GE(plan.clientWidth, column + 108);
        EXPECT_GE(plan.clientHeight, plan.checkCircle[0].Bottom());
    }
}

// Everything that is placed but the mark of the link.
std::vector<Box4> BoxesOf(const LayoutPlan& plan) {
    std::vector<Box4> boxes{plan.comboReagent, plan.labelMana, plan.labelCurrentMana,
                            plan.labelCost,    plan.txtTithes, plan.imageAnkh,
                            plan.labelName,    plan.labelWords};
    const auto add = [&boxes](const auto& more) {
        boxes.insert(boxes.end(), more.begin(), more.end());
    };
    add(plan.imgReg);
    add(plan.reagent);
    add(plan.upDown);
    add(plan.labelAmount);
    add(plan.spellIcon);
    add(plan.labelChance);
    add(plan.checkCircle);
    add(plan.image1);
    add(plan.command.buttons);
    return boxes;
}

TEST(LinkMarkPlace, IsFreeRoomInBothArrangements) {
    for (const bool necro : {true, false}) {
        for (const LayoutPlan& plan :
             {PlanVertical(necro, kTexts), PlanHorizontal(necro, kTexts)}) {
            const Box4& mark = plan.linkMark;
            EXPECT_GE(mark.width, 7);
            EXPECT_EQ(mark.width, mark.height);
            EXPECT_GE(mark.left, 0);
            EXPECT_GE(mark.top, 0);
            EXPECT_LE(mark.Right(), plan.clientWidth);
            EXPECT_LE(mark.Bottom(), plan.clientHeight);
            for (const Box4& box : BoxesOf(plan)) {
                EXPECT_TRUE(mark.Right() <= box.left || box.Right() <= mark.left ||
                            mark.Bottom() <= box.top || box.Bottom() <= mark.top)
                    << "over a control at " << box.left << ' ' << box.top;
            }
        }
    }
}

TEST(EnlargedTest, ByOne_ChangesNothing) {
    for (const LayoutPlan& plan : {PlanVertical(true, kTexts), PlanHorizontal(false, kTexts)}) {
        const LayoutPlan same = Enlarged(plan, 1.0);
        EXPECT_EQ(BoxesOf(same), BoxesOf(plan));
        EXPECT_EQ(same.linkMark, plan.linkMark);
        EXPECT_EQ(same.showsNecroRegs, plan.showsNecroRegs);
        EXPECT_EQ(same.clientWidth, plan.clientWidth);
        EXPECT_EQ(same.clientHeight, plan.clientHeight);
    }
}

TEST(EnlargedTest, BoxesThatTouchStillDo) {
    const LayoutPlan plan = Enlarged(PlanVertical(true, kTexts), 13.0 / 12.0);
    EXPECT_EQ(plan.clientWidth, 198);
    for (std::size_t slot = 1; slot < 4; ++slot) {
        EXPECT_EQ(plan.labelAmount[slot].left, plan.labelAmount[slot - 1].Right());
    }
    EXPECT_EQ(plan.reagent[0].Right(), plan.upDown[0].left);
    const LayoutPlan large = Enlarged(PlanHorizontal(true, kTexts), 2.0);
    EXPECT_EQ(large.spellIcon[0].width, 84);
    EXPECT_EQ(large.command.width, 2 * PlanHorizontal(true, kTexts).command.width);
}

TEST(LeftOnScreenTest, TheRightEdgeStaysOnTheScreen) {
    struct Row {
        const char* name;
        int left;
        int width;
        int screen;
        int expected;
    };
    for (const Row& row :
         {Row{"fits", 100, 800, 1280, 100}, Row{"just fits", 480, 800, 1280, 480},
          Row{"one too far", 481, 800, 1280, 480}, Row{"wider than the screen", 50, 800, 640, 0},
          Row{"left of the screen", -20, 800, 1280, -20}}) {
        EXPECT_EQ(LeftOnScreen(row.left, row.width, row.screen), row.expected) << row.name;
    }
}

}  // namespace
}  // namespace spellwick
