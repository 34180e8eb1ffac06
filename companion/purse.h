// The thirteen counters of the bag in use, and the list of bags. The text of a counter is the
// working truth of its stock: debits and amounts read it.
#pragma once

#include <string>

#include "companion/display.h"
#include "companion/page.h"
#include "model/shared_state.h"
#include "platform/message_boxes.h"

namespace spellwick {

class Purse {
  public:
    Purse(SharedState& state, Display& display, Page& page, MessageBoxes& boxes)
        : m_state(state), m_display(display), m_page(page), m_boxes(boxes) {}

    const std::string& CounterText(i32 reagent) const {
        return m_display.screen.counters(reagent).text;
    }

    // Writes a counter and stores its number into the bag in use.
    void WriteStock(i32 reagent, const std::string& text);
    // Stores the number that a counter shows into the bag in use.
    void StoreCounter(i32 reagent);

    // Colours the counters by what a spell needs.
    void Highlight(const SpellRecord& spell);
    void ClearHighlight();

    // Steps of the load of a player.
    void ShowBagNames();
    void SelectBag();
    void ShowStock();
    void ShowCounter(i32 reagent);

    // Takes the entry of a counter that has lost the focus.
    void LeaveCounter(i32 reagent) { TakeEntry(reagent, kTell); }

    // The name of the bag in use is being typed over.
    void TypeBagName(const std::string& name);
    // An entry of the list was chosen.
    void ClickBag(i32 bag);
    // The list has lost the focus.
    void LeaveBags();

    // Takes what is unfinished although no loss of focus was reported, as in a window that is not
    // the active one.
    void CommitPending();
    // The counter of CommitPending, for the end of the program. A refusal is told only if somebody
    // is there to read it.
    void CommitAtEnd(bool tells);

  private:
    enum Refusal { kTell, kDrop };

    void TakeEntry(i32 reagent, Refusal refusal);
    void RewriteBagEntry(i32 selected);

    SharedState& m_state;
    Display& m_display;
    Page& m_page;
    MessageBoxes& m_boxes;
    bool m_bagNameChanged = false;
};

}  // namespace spellwick
