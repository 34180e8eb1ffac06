#include "companion/spell_tip.h"

#include <algorithm>
#include <array>

#include "model/caster_values.h"
#include "model/failure_guard.h"
#include "model/formula_text.h"
#include "model/macro_keys.h"
#include "model/spell_description.h"
#include "model/spell_duration.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

// The spell table's words for a column without an entry.
constexpr std::string_view kNoEntry = "none";

void AddLine(std::string& tip, std::string_view line) {
    if (!line.empty()) {
        tip += (tip.empty() ? "" : "\n") + std::string(line);
    }
}

// What a counter shows, which may be any text while it is typed. A tooltip shows what there is.
std::string NumberOf(std::string_view text) {
    constexpr double kMost = 999999999.0;
    return PlainText(ToI32(std::clamp(NumericPrefix(text), -kMost, kMost)));
}

std::string Need(const SharedState& state, i32 reagent, i32 need, std::string_view have) {
    return "Takes " + PlainText(need) + " of " + NumberOf(have) + " " + state.ReagentName(reagent);
}

// A duration that the spell's rule gives in seconds, else the table's words.
std::string Duration(const SharedState& state, i32 row) {
    std::string duration;
    IgnoreFailure([&] {
        const i16 seconds = SpellDuration(state.Spells(row).File5, CasterOf(state));
        duration =
            seconds > 0 ? PlainText(i32{seconds}) + " seconds" : DescribeSpell(state, row).duration;
    });
    return duration.empty() || duration == kNoEntry ? "" : "Duration: " + duration;
}

bool IsSpell(const SharedState& state, i32 row) {
    return row >= 0 && row <= std::min(kLastRow, state.Spells.Last()) &&
           !TrimBlanks(state.Spells(row).Name).empty();
}

const SlotScreen& SlotOf(const Screen& screen, i32 slot) {
    return screen.spellSlots.at(static_cast<std::size_t>(slot));
}

}  // namespace

std::string SpellTip(const SharedState& state, const Screen& screen, i32 slot) {
    const SlotScreen& shown = SlotOf(screen, slot);
    if (!IsSpell(state, shown.row)) {
        return {};
    }
    const SpellRecord& spell = state.Spells(shown.row);
    std::string tip;
    AddLine(tip, TrimBlanks(spell.Name));
    AddLine(tip, TrimBlanks(spell.Words) == kNoEntry ? "" : TrimBlanks(spell.Words));
    AddLine(tip, PlainText(i32{spell.Mana}) + " mana");
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        if (const i32 need = spell.Reagents(reagent); need > 0) {
            AddLine(tip, Need(state, reagent, need, screen.counters(reagent).text));
        }
    }
    if (const i32 need = spell.Reagents(kTithes); need > 0) {
        AddLine(tip, Need(state, kTithes, need, screen.tithes));
    }
    const std::string key = ShownMacroKey(state, shown.row + 1);
    AddLine(tip, key.empty() ? "No key yet" : "Key: " + key);
    AddLine(tip, "Chance: " + NumberOf(shown.chance) + "%");
    AddLine(tip, Duration(state, shown.row));
    return tip;
}

std::string SpokenSpell(const SharedState& state, const Screen& screen, i32 slot) {
    const SlotScreen& shown = SlotOf(screen, slot);
    if (!IsSpell(state, shown.row)) {
        return "No spell";
    }
    return std::string(TrimBlanks(state.Spells(shown.row).Name)) + ", " + NumberOf(shown.amount) +
           " castable, " + NumberOf(shown.chance) + "% chance" +
           (shown.inBook ? "" : ", not in the spellbook");
}

std::string GivenBack(const SharedState& state, const FixedTable<i16, 1, kTithes>& amounts) {
    std::string list;
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        if (amounts(reagent) != 0) {
            list += (list.empty() ? "" : ", ") + PlainText(i32{amounts(reagent)}) + " " +
                    state.ReagentName(reagent);
        }
    }
    return "back: " + (list.empty() ? "nothing" : list);
}

}  // namespace spellwick
