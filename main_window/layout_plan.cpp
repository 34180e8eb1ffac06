#include "main_window/layout_plan.h"

#include <algorithm>
#include <cmath>

namespace spellwick {

namespace {

constexpr int kIconSize = 42;
constexpr int kSlotPitch = 44;
constexpr int kFigureHeight = 16;
constexpr int kButtonHeight = 24;
constexpr int kImageWidth = 43;
constexpr int kImageHeight = 47;
constexpr int kSmallButtonHeight = 23;
constexpr int kSmallButtonInset = 15;
constexpr int kTithesWidth = 43;
constexpr int kTithesBoxWidth = 53;
constexpr int kAnkhWidth = 14;
constexpr int kAnkhHeight = 15;
constexpr int kAnkhOffset = 6;  // the ankh is drawn 8 above its place holder
constexpr int kTextHeight = 16;
constexpr int kMarkSize = 7;
constexpr int kTwoLines = 31;
constexpr int kFirstNecroPicture = 8;
constexpr int kPictureCount = 13;

// Column and row of a reagent's picture.
struct GridPlace {
    int column;
    int row;
};

GridPlace VerticalPlace(int k) {
    if (k < kFirstNecroPicture) {
        return {k / 4, k % 4};
    }
    return k < 11 ? GridPlace{0, 4 + k - 8} : GridPlace{1, 4 + k - 11};
}

// Of the wide strip.
constexpr int kHorizontalRows = 5;
constexpr int kHorizontalPitch = 15;
constexpr int kMargin = 2;

GridPlace HorizontalPlace(int k) {
    return {k / kHorizontalRows, k % kHorizontalRows};
}

void PlaceSmallButtons(LayoutPlan& plan, int width) {
    for (std::size_t pair = 0; pair < 2; ++pair) {
        const Box4& image = plan.image1[pair];
        for (std::size_t second = 0; second < 2; ++second) {
            plan.checkCircle[10 + pair * 2 + second] = {
                image.left + kSmallButtonInset,
                image.top + static_cast<int>(second) * kSmallButtonHeight, width,
                kSmallButtonHeight};
        }
    }
}

// Tithing points and ankh at the right end of a line.
void PlaceTithes(LayoutPlan& plan, int right, int top) {
    plan.imageAnkh = {right - kAnkhWidth, top + kAnkhOffset, kAnkhWidth, kAnkhHeight};
    const int end = plan.imageAnkh.left - 1;
    plan.labelTithes = {end - kTithesWidth, top, kTithesWidth, kTextHeight};
    plan.txtTithes = {end - kTithesBoxWidth, top, kTithesBoxWidth, kTextHeight};
}

// Icon and figures of a spell.
void PlaceSlot(LayoutPlan& plan, int slot, int left, int top) {
    const auto at = static_cast<std::size_t>(slot);
    plan.labelAmount[at] = {left, top, kSlotPitch, kFigureHeight};
    plan.spellIcon[at] = {left + 1, top + 17, kIconSize, kIconSize};
    plan.labelChance[at] = {left, top + 60, kSlotPitch, kFigureHeight};
}

void PlaceCountersVertically(LayoutPlan& plan, int centre) {
    constexpr int kPitch = 20;
    for (int k = 0; k < kPictureCount; ++k) {
        const auto at = static_cast<std::size_t>(k);
        const GridPlace place = VerticalPlace(k);
        const int left = place.column == 0 ? 5 : centre;
        const int top = place.row * kPitch + 2;
        plan.imgReg[at] = {left, top, 28, kPitch};
        plan.reagent[at] = {left + 30, top, 30, kPitch};
        plan.upDown[at] = {left + 60, top, 16, kPitch};
    }
}

// Returns the right edge of those that are shown.
int PlaceCountersHorizontally(LayoutPlan& plan) {
    constexpr std::array<int, 3> kPictureLefts{0, 81, 162};
    constexpr std::array<int, 3> kBoxLefts{28, 109, 187};
    int right = 0;
    for (int k = 0; k < kPictureCount; ++k) {
        const auto at = static_cast<std::size_t>(k);
        const GridPlace place = HorizontalPlace(k);
        const auto column = static_cast<std::size_t>(place.column);
        const int top = kMargin + place.row * kHorizontalPitch;
        plan.imgReg[at] = {kPictureLefts[column] + kMargin, top, 25, kHorizontalPitch};
        plan.reagent[at] = {kBoxLefts[column] + kMargin, top, 29, kHorizontalPitch};
        plan.upDown[at] = {plan.reagent[at].Right(), top, 14, kHorizontalPitch};
        if (plan.showsNecroRegs || k < kFirstNecroPicture) {
            right = std::max(right, plan.upDown[at].Right());
        }
    }
    return right;
}

}  // namespace

CommandBlock ArrangeCommandButtons(float left, float top, float height, i16 gap,
                                   const TextSizes& texts) {
    CommandBlock block;
    int maxWidth = *std::max_element(texts.captionWidths.begin(), texts.captionWidths.end());
    maxWidth = std::max(maxWidth, texts.joinedWidth + 9);
    const int width = maxWidth + 9;
    block.width = static_cast<i16>(width);

    const auto w0 = static_cast<float>(texts.captionWidths[0]);
    const auto w1 = static_cast<float>(texts.captionWidths[1]);
    const float ratio = (w0 + 9.0F) / (w0 + w1 + 18.0F);
    const int row = height == 0.0F ? texts.captionHeight + 4 : static_cast<int>(height) / 4 - gap;
    const int x = static_cast<int>(left);
    const int y = static_cast<int>(top);
    const int first = static_cast<int>(
        std::lround(static_cast<float>(width) * ratio - static_cast<float>(gap) / 2.0F));
    block.buttons[0] = {x, y, first, row};
    block.buttons[1] = {x + first + gap, y, width - gap - first, row};
    for (int i = 2; i < 5; ++i) {
        block.buttons[static_cast<std::size_t>(i)] = {x, y + (gap + row) * (i - 1), width, row};
    }
    return block;
}

LayoutPlan PlanVertical(bool showNecroRegs, const TextSizes& texts) {
    constexpr int kWidth = 183;
    LayoutPlan plan;
    plan.showsNecroRegs = showNecroRegs;
    const int blockHeight = showNecroRegs ? 140 : 80;
    PlaceCountersVertically(plan, (kWidth + 5) / 2);
    plan.comboReagent = {2, blockHeight + 3, 178, texts.comboHeight};

    const int base = texts.comboHeight + blockHeight + 4;
    for (int slot = 0; slot < 8; ++slot) {
        PlaceSlot(plan, slot, slot % 4 * kSlotPitch + 2, base + slot / 4 * 77);
    }
    for (int button = 2; button < 10; ++button) {
        const int circle = button - 2;
        plan.checkCircle[static_cast<std::size_t>(button)] = {
            circle % 4 * kSlotPitch + 2, base + 154 + circle / 4 * 25, 43, kButtonHeight};
    }
    plan.checkCircle[0] = {2, base + 204, 43, kImageHeight};
    plan.checkCircle[1] = {46, base + 204, 43, kImageHeight};
    plan.image1[0] = {90, base + 204, kImageWidth, kImageHeight};
    plan.image1[1] = {134, base + 204, kImageWidth, kImageHeight};
    PlaceSmallButtons(plan, 28);

    // Placed once for its width, then so that it ends 6 pixels from the right edge.
    const auto top = static_cast<float>(base + 252);
    const i16 width = ArrangeCommandButtons(116.0F, top, 97.0F, 1, texts).width;
    const int right = 177 - width;
    plan.command = ArrangeCommandButtons(static_cast<float>(right), top, 97.0F, 1, texts);

    const int currentMana = right - 34 - 1;
    plan.labelMana = {2, base + 252, currentMana - 2, kTextHeight};
    plan.labelCurrentMana = {currentMana, base + 252, 34, kTextHeight};
    PlaceTithes(plan, right - 1, base + 269);
    plan.labelCost = {2, base + 269, plan.labelTithes.left - 2, kTextHeight};
    plan.labelName = {2, base + 286, right - 3, kTwoLines};
    plan.labelWords = {2, base + 318, right - 3, kTwoLines};
    plan.linkMark = {kWidth - kMarkSize - 1, base + 349, kMarkSize, kMarkSize};
    plan.clientWidth = kWidth;
    plan.clientHeight = base + 353 + 1 + 3;
    return plan;
}

LayoutPlan PlanHorizontal(bool showNecroRegs, const TextSizes& texts) {
    LayoutPlan plan;
    plan.showsNecroRegs = showNecroRegs;

    const int blockRight = PlaceCountersHorizontally(plan);
    constexpr int kBlockHeight = kHorizontalRows * kHorizontalPitch;
    constexpr i16 kGap = 1;
    plan.command = ArrangeCommandButtons(static_cast<float>(blockRight + 4), kMargin,
                                         kBlockHeight - kGap, kGap, texts);
    const int commandRight = blockRight + 4 + plan.command.width;

    const int first = std::max(240, commandRight + 4);
    for (int slot = 0; slot < 8; ++slot) {
        PlaceSlot(plan, slot, first + slot * kSlotPitch, kMargin);
    }
    const int rowWidth = 8 * kSlotPitch;
    const int buttonTop = kMargin + 78;
    for (int index = 0; index < 10; ++index) {
        const int left = first + index * rowWidth / 10;
        const int next = first + (index + 1) * rowWidth / 10;
        plan.checkCircle[static_cast<std::size_t>(index)] = {left, buttonTop, next - left - 1,
                                                             kButtonHeight};
    }
    const int bottom = buttonTop + kButtonHeight;
    plan.comboReagent = {kMargin, bottom - std::min(texts.comboHeight, kButtonHeight),
                         commandRight - kMargin, std::min(texts.comboHeight, kButtonHeight)};

    const int images = first + rowWidth + 3;
    plan.image1[0] = {images, kMargin + 2, kImageWidth, kImageHeight};
    plan.image1[1] = {images, kMargin + 4 + kImageHeight, kImageWidth, kImageHeight};
    PlaceSmallButtons(plan, 14);

    constexpr int kColumnWidth = 108;
    const int column = images + kImageWidth + 29;
    const int right = column + kColumnWidth;
    plan.labelMana = {column, kMargin, kColumnWidth - 34, kTextHeight};
    plan.labelCurrentMana = {right - 34, kMargin, 34, kTextHeight};
    PlaceTithes(plan, right, kMargin + 18);
    plan.labelCost = {column, kMargin + 18, plan.labelTithes.left - column, kTextHeight};
    plan.labelName = {column, kMargin + 37, kColumnWidth, kTwoLines};
    plan.labelWords = {column, kMargin + 70, kColumnWidth, kTwoLines};
    plan.linkMark = {column - 2 - kMarkSize, bottom - kMarkSize, kMarkSize, kMarkSize};
    plan.clientWidth = right + 4;
    plan.clientHeight = bottom + kMargin;
    return plan;
}

LayoutPlan Enlarged(const LayoutPlan& plan, double factor) {
    const auto scaled = [factor](int pixels) {
        return static_cast<int>(std::lround(pixels * factor));
    };
    LayoutPlan large = plan;
    const auto enlarge = [&](Box4& box) {
        const int left = scaled(box.left);
        const int top = scaled(box.top);
        box = {left, top, scaled(box.Right()) - left, scaled(box.Bottom()) - top};
    };
    const auto enlargeAll = [&](auto&... groups) { (std::ranges::for_each(groups, enlarge), ...); };
    enlargeAll(large.imgReg, large.reagent, large.upDown, large.labelAmount, large.spellIcon,
               large.labelChance, large.checkCircle, large.image1, large.command.buttons);
    large.command.width = static_cast<i16>(scaled(plan.command.width));
    for (Box4* box : {&large.comboReagent, &large.labelMana, &large.labelCurrentMana,
                      &large.labelCost, &large.labelTithes, &large.txtTithes, &large.imageAnkh,
                      &large.labelName, &large.labelWords, &large.linkMark}) {
        enlarge(*box);
    }
    large.clientWidth = scaled(plan.clientWidth);
    large.clientHeight = scaled(plan.clientHeight);
    return large;
}

int LeftOnScreen(int left, int width, int screenWidth) {
    return left + width > screenWidth ? std::max(0, screenWidth - width) : left;
}

}  // namespace spellwick
