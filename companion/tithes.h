// The tithing points: a label, and an edit that lies over it while they are changed.
#pragma once

#include <string>

#include "companion/display.h"
#include "companion/page.h"
#include "model/shared_state.h"

namespace spellwick {

class Tithes {
  public:
    Tithes(SharedState& state, Display& display, Page& page)
        : m_state(state), m_display(display), m_page(page) {}

    void BeginEdit();
    // Takes the entry, if the points are being edited.
    void Commit();

    // Colours the label by what a spell needs.
    void Highlight(const SpellRecord& spell);

    // Writes points to the label and the edit.
    void Show(i32 points);
    // Adds to the number of the label alone.
    void CreditLabel(i32 points);

  private:
    SharedState& m_state;
    Display& m_display;
    Page& m_page;
};

}  // namespace spellwick
