// The page of eight spells: which spells it shows, and their figures.
#pragma once

#include "companion/display.h"
#include "model/castable_amount.h"
#include "model/shared_state.h"

namespace spellwick {

class Page {
  public:
    Page(SharedState& state, Display& display) : m_state(state), m_display(display) {}

    // Presses the button of circle 1 without any effect beyond that.
    void InitCircleButtons();
    void ClearSpellLabels();

    // Presses a page button, 0 to 13; nothing while the program fills controls.
    void Choose(i32 button);

    // Refreshes the page, then its chances and amounts.
    void Update();
    void UpdateChances();
    void UpdateAmounts();

    // Row of a slot (0 to 7) of the page shown.
    i32 SpellAtSlot(i32 slot) const;

    // Shows the lines of the spell of a slot.
    void ShowSpell(i32 slot);
    // Shows CurrentMana in brackets.
    void ShowCurrentMana();

  private:
    SharedState& m_state;
    Display& m_display;
};

}  // namespace spellwick
