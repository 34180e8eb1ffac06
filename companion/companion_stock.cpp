// What a companion does when stock, bags and tithes are changed by hand.
#include "companion/companion.h"

namespace spellwick {

void Companion::TypeCounter(i32 reagent, const std::string& text) {
    m_display.screen.counters(reagent).text = text;
}

void Companion::StepCounter(i32 reagent) {
    m_display.Act([&] {
        m_purse.StoreCounter(reagent);
        m_page.UpdateAmounts();
        ColourAnew();
    });
}

void Companion::LeaveCounter(i32 reagent) {
    m_display.Act([&] {
        m_purse.LeaveCounter(reagent);
        ColourAnew();
    });
}

// Stock was typed while the mouse rests on a spell.
void Companion::ColourAnew() {
    // A number too large for a colour is taken all the same.
    IgnoreFailure([&] {
        if (m_display.screen.hoveredRow >= 0) {
            m_purse.Highlight(m_state.Spells(m_display.screen.hoveredRow));
        }
    });
}

void Companion::ShowCounter(i32 reagent) {
    m_display.Act([&] { m_purse.ShowCounter(reagent); });
}

void Companion::FocusStock(i32 row) {
    m_display.Act([&] {
        const i32 reagent = CounterFor(row);
        m_display.TheForms().FocusCounter(reagent);
        // The window may become the active one only later.
        m_display.screen.focusedReagent = reagent;
    });
}

void Companion::CommitByEnter() {
    m_display.Act([&] {
        const i32 reagent = m_display.screen.focusedReagent;
        m_casting.CommitEntries();
        if (reagent > 0) {
            m_display.Tell();
            m_display.TheForms().FocusCounter(reagent);
            m_display.screen.focusedReagent = reagent;
        }
        m_page.UpdateAmounts();
        ColourAnew();
    });
}

void Companion::TypeBagName(const std::string& name) {
    m_display.Act([&] { m_purse.TypeBagName(name); });
}

void Companion::ClickBag(i32 bag) {
    m_display.Act([&] {
        PayForReports(true);
        m_purse.ClickBag(bag);
    });
}

void Companion::LeaveBags() {
    m_display.Act([&] { m_purse.LeaveBags(); });
}

void Companion::EditTithes() {
    m_display.Act([&] { m_tithes.BeginEdit(); });
}

void Companion::LeaveTithes() {
    m_display.Act([&] { m_tithes.Commit(); });
}

void Companion::Undo() {
    m_display.Act([&] { m_casting.Undo(); });
}

}  // namespace spellwick
