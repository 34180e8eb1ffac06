// The open Reagent Management tab.
#pragma once

#include <string>

#include "tests/support/settings_fixture.h"

namespace spellwick {

inline constexpr BagSide kLeft = BagSide::kLeft;
inline constexpr BagSide kRight = BagSide::kRight;

class ReagentsTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() {
        SetSaved("Settings", "CurrentPlayerName", kMira);
        return OpenAt(4);
    }
    ReagentsTab& Tab() { return Form().Reagents(); }
    QComboBox& Bag(int list) { return Named<QComboBox>("ComboTransfer", list); }
    static const char* BoxName(BagSide side) {
        return side == kLeft ? "ReagentLeft" : "ReagentRight";
    }
    // Sets the counts of the first reagent in the two bags and shows them.
    void SetCounts(i16 left, i16 right) {
        m_state.ReagentStock(1, 0) = left;
        m_state.ReagentStock(1, 1) = right;
        Form().RefreshDialog();
    }
    void ExpectCounts(int left, int right, const std::string& of) {
        EXPECT_EQ(m_state.ReagentStock(1, 0), left) << of;
        EXPECT_EQ(m_state.ReagentStock(1, 1), right) << of;
    }
    void ExpectShown(const std::string& left, const std::string& right, const std::string& of) {
        EXPECT_EQ(Text("ReagentLeft", 1), left) << of;
        EXPECT_EQ(Text("ReagentRight", 1), right) << of;
    }
    void EnterAndLeave(BagSide side, const std::string& text) {
        Enter(BoxName(side), 1, text);
        Leave();
    }
    void ClickArrow(int reagent, BagSide to) {
        QWidget& arrows = Named("UpDown1", reagent);
        ClickSpot(arrows, {to == kLeft ? 4 : arrows.width() - 4, arrows.height() / 2});
    }
    // A different count in every cell.
    void FillStock() {
        for (i32 reagent = 1; reagent <= 13; ++reagent) {
            for (i32 bag = 0; bag < 10; ++bag) {
                m_state.ReagentStock(reagent, bag) = static_cast<i16>(reagent * 10 + bag);
            }
        }
    }
};

}  // namespace spellwick
