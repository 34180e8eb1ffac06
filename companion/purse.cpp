#include "companion/purse.h"

#include <algorithm>

#include "model/cast_rules.h"
#include "model/purse_entries.h"
#include "text/number_forms.h"

namespace spellwick {

void Purse::WriteStock(i32 reagent, const std::string& text) {
    m_display.WriteCounter(reagent, text);
    StoreCounter(reagent);
}

void Purse::StoreCounter(i32 reagent) {
    m_state.ReagentStock(reagent, m_state.CurrentReagentBag) = StockOfCounter(CounterText(reagent));
}

void Purse::Highlight(const SpellRecord& spell) {
    m_display.changes.counterGrounds = true;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_display.screen.counters(reagent).ground =
            CounterHighlight(spell.Reagents(reagent), CounterText(reagent), m_state.ColorWarn);
    }
}

void Purse::ClearHighlight() {
    m_display.changes.counterGrounds = true;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_display.screen.counters(reagent).ground = kWindowBackground;
    }
}

void Purse::ShowBagNames() {
    m_display.changes.bags = true;
    m_display.screen.bags.clear();
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        m_display.screen.bags.push_back(m_state.BagName(bag));
    }
    m_display.screen.selectedBag = 0;
}

void Purse::SelectBag() {
    m_display.changes.bags = true;
    const i32 bag = m_state.CurrentReagentBag;
    m_display.screen.selectedBag = bag >= 0 && bag < kBagCount ? bag : -1;
}

void Purse::ShowStock() {
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        ShowCounter(reagent);
    }
}

void Purse::ShowCounter(i32 reagent) {
    m_display.WriteCounter(
        reagent, PlainText(i32{m_state.ReagentStock(reagent, m_state.CurrentReagentBag)}));
}

void Purse::TakeEntry(i32 reagent, Refusal refusal) {
    m_display.screen.focusedReagent = 0;
    const CounterEntry entry = CommitCounterEntry(
        CounterText(reagent), m_state.ReagentStock(reagent, m_state.CurrentReagentBag));
    if (entry.refused && refusal == kTell) {
        m_display.Tell();
        m_boxes.Show({.text = std::string(kNotThatManyReagents)});
    }
    if (!entry.refused) {
        m_state.ReagentStock(reagent, m_state.CurrentReagentBag) = entry.stock;
    }
    // Read afresh: the player may have changed while the message box was open.
    if (entry.rewrites) {
        ShowCounter(reagent);
    }
    m_page.UpdateAmounts();
}

void Purse::TypeBagName(const std::string& name) {
    m_state.BagName(m_state.CurrentReagentBag) = name;
    m_bagNameChanged = true;
}

void Purse::RewriteBagEntry(i32 selected) {
    std::vector<std::string>& bags = m_display.screen.bags;
    const auto bag = static_cast<std::size_t>(m_state.CurrentReagentBag);
    if (bag >= bags.size()) {
        bags.emplace_back();
    }
    bags[std::min(bag, bags.size() - 1)] = m_state.BagName(m_state.CurrentReagentBag);
    m_display.screen.selectedBag = selected;
    m_display.changes.bags = true;
    m_bagNameChanged = false;
}

void Purse::ClickBag(i32 bag) {
    m_display.screen.selectedBag = bag;
    if (m_state.Updating) {
        return;
    }
    if (m_bagNameChanged) {
        RewriteBagEntry(bag);
    }
    if (bag > -1) {
        m_state.CurrentReagentBag = ToI16(bag);
        ShowStock();
    }
    m_page.UpdateAmounts();
}

void Purse::LeaveBags() {
    if (m_state.CurrentReagentBag >= 0 && m_bagNameChanged) {
        RewriteBagEntry(m_state.CurrentReagentBag);
    }
}

void Purse::CommitAtEnd(bool tells) {
    if (m_display.screen.focusedReagent > 0) {
        TakeEntry(m_display.screen.focusedReagent, tells ? kTell : kDrop);
    }
}

void Purse::CommitPending() {
    if (m_display.screen.focusedReagent > 0) {
        LeaveCounter(m_display.screen.focusedReagent);
    }
    if (m_bagNameChanged) {
        LeaveBags();
    }
}

}  // namespace spellwick
