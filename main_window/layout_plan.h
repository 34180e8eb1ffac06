// The two arrangements of the main window as plain numbers: sizes of texts in, places out.
// All numbers are device-independent pixels of the client area, for a font of the design's size.
#pragma once

#include <array>

#include "text/number_types.h"

namespace spellwick {

struct Box4 {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    int Right() const { return left + width; }
    int Bottom() const { return top + height; }
    bool operator==(const Box4&) const = default;
};

// Sizes that the toolkit decides.
struct TextSizes {
    std::array<int, 5> captionWidths{};  // of the five Command buttons
    int captionHeight = 0;               // the largest of them
    int joinedWidth = 0;                 // of the first two captions with nothing between
    int comboHeight = 0;                 // of the list of bags
};

struct CommandBlock {
    std::array<Box4, 5> buttons{};
    i16 width = 0;
};

// The five Command buttons as four equal rows, of which the first holds two. A height of 0 makes
// rows as tall as their text needs.
CommandBlock ArrangeCommandButtons(float left, float top, float height, i16 gap,
                                   const TextSizes& texts);

struct LayoutPlan {
    bool showsNecroRegs = false;  // imgReg 8 to 12 and their counters
    std::array<Box4, 13> imgReg{};
    std::array<Box4, 13> reagent{};
    std::array<Box4, 13> upDown{};
    Box4 comboReagent;
    std::array<Box4, 8> labelAmount{};
    std::array<Box4, 8> spellIcon{};
    std::array<Box4, 8> labelChance{};
    std::array<Box4, 14> checkCircle{};
    std::array<Box4, 2> image1{};
    CommandBlock command;
    Box4 labelMana;
    Box4 labelCurrentMana;
    Box4 labelCost;
    Box4 labelTithes;
    Box4 txtTithes;
    Box4 imageAnkh;
    Box4 labelName;
    Box4 labelWords;
    Box4 linkMark;
    int clientWidth = 0;
    int clientHeight = 0;
};

// The tall narrow column.
LayoutPlan PlanVertical(bool showNecroRegs, const TextSizes& texts);

// The wide low strip.
LayoutPlan PlanHorizontal(bool showNecroRegs, const TextSizes& texts);

// A plan for a larger font: all boxes by `factor`, so that boxes that touch still do.
LayoutPlan Enlarged(const LayoutPlan& plan, double factor);

// Left of a window so that its right edge does not pass the screen's; never under 0.
int LeftOnScreen(int left, int width, int screenWidth);

}  // namespace spellwick
