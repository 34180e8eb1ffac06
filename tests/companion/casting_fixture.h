// Casts of single rows, and the counters that pay for them.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/companion_fixture.h"

namespace spellwick {

inline constexpr i16 kCtrl = 2;
inline constexpr int kUndo = 0;  // Command(0)

// Page button and slot of a row.
inline int ButtonOf(int row) {
    return row / 8 + 2;
}
inline int SlotOf(int row) {
    return row % 8;
}

class CastingTest : public CompanionFixture {
  protected:
    // Goes to the page of a row and forgets what that did.
    void ShowPageOf(int row) {
        ShowPage(ButtonOf(row));
        TakeLog();
    }
    void Cast(int row, i16 shift = 0) {
        ShowPageOf(row);
        ClickSpell(SlotOf(row), shift);
    }
    std::vector<int> Counters() {
        std::vector<int> numbers;
        numbers.reserve(13);
        for (int reagent = 1; reagent <= 13; ++reagent) {
            numbers.push_back(std::stoi(Text("Reagent", reagent)));
        }
        return numbers;
    }
    std::vector<int> Stock(int bag) {
        std::vector<int> numbers;
        numbers.reserve(13);
        for (int reagent = 1; reagent <= 13; ++reagent) {
            numbers.push_back(State().ReagentStock(reagent, bag));
        }
        return numbers;
    }
    const std::vector<int> m_full = std::vector<int>(13, 50);
};

}  // namespace spellwick
