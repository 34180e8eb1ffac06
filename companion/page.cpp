#include "companion/page.h"

#include "model/chances.h"
#include "model/spell_lookup.h"
#include "text/number_forms.h"

namespace spellwick {

void Page::InitCircleButtons() {
    m_display.screen.pressedPage = kFirstCircleButton;
    m_display.changes.page = true;
}

void Page::ClearSpellLabels() {
    Screen& screen = m_display.screen;
    for (std::string* line :
         {&screen.mana, &screen.cost, &screen.name, &screen.words, &screen.currentMana}) {
        line->clear();
    }
    m_display.changes.spellLines = true;
    m_display.changes.currentMana = true;
}

void Page::Choose(i32 button) {
    if (m_state.Updating) {
        return;
    }
    m_display.screen.pressedPage = button;
    m_display.changes.page = true;
    Update();
}

i32 Page::SpellAtSlot(i32 slot) const {
    return spellwick::SpellAtSlot(m_display.screen.pressedPage, m_state.UserSpells, slot);
}

void Page::Update() {
    m_display.changes.icons = true;
    for (i32 slot = 0; slot < kSlotCount; ++slot) {
        const i32 row = SpellAtSlot(slot);
        const SpellRecord& spell = m_state.Spells(row);
        SlotScreen& shown = m_display.screen.spellSlots[static_cast<std::size_t>(slot)];
        shown.row = row;
        shown.inBook = m_state.Spellbook(row) == 0;
        shown.chanceGround = ChanceGround(spell);
    }
    UpdateChances();
    UpdateAmounts();
}

void Page::UpdateChances() {
    CalculateChances(m_state);
    m_display.changes.chances = true;
    for (i32 slot = 0; slot < kSlotCount; ++slot) {
        m_display.screen.spellSlots[static_cast<std::size_t>(slot)].chance =
            PlainText(i32{m_state.Chance(SpellAtSlot(slot))});
    }
}

void Page::UpdateAmounts() {
    m_display.changes.amounts = true;
    CounterTexts counters;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        counters(reagent) = m_display.screen.counters(reagent).text;
    }
    for (i32 slot = 0; slot < kSlotCount; ++slot) {
        const i16 amount = CastableAmount(m_state, m_display.screen.pressedPage, slot, counters);
        SlotScreen& shown = m_display.screen.spellSlots[static_cast<std::size_t>(slot)];
        shown.amount = StandardText(i32{amount});
        shown.amountGround = AmountColour(amount, m_state.RegYellow, m_state.ColorWarn);
    }
}

void Page::ShowSpell(i32 slot) {
    const SpellRecord& spell = m_state.Spells(SpellAtSlot(slot));
    Screen& screen = m_display.screen;
    screen.mana = PlainText(i32{spell.Mana}) + " mana";
    screen.cost = PlainText(i32{spell.Cost}) + " gold";
    screen.words = spell.Words;
    screen.name = spell.Name;
    m_display.changes.spellLines = true;
}

void Page::ShowCurrentMana() {
    m_display.screen.currentMana = "(" + PlainText(i32{m_state.CurrentMana}) + ")";
    m_display.changes.currentMana = true;
}

}  // namespace spellwick
