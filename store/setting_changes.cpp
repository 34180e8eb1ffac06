#include "store/setting_changes.h"

#include <iterator>
#include <string>
#include <utility>

#include "store/catalogue.h"
#include "store/digit_string.h"
#include "store/macro_code.h"
#include "store/section_name.h"
#include "store/text_forms.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

// Collects the changes of one section.
class SectionWriter {
  public:
    explicit SectionWriter(std::string_view section) : m_section(section) {
        // The keys of a player, which are listed twice a second.
        m_changes.reserve(365);
    }

    void Text(std::string key, std::string value) {
        m_changes.push_back({m_section, std::move(key), std::move(value)});
    }
    void Text(std::string_view key, std::string value) { Text(std::string(key), std::move(value)); }
    template <typename Key>
    void Number(Key&& key, i32 value) {
        Text(std::forward<Key>(key), PlainText(value));
    }
    void Place(std::string_view topKey, std::string_view leftKey,
               const std::optional<WindowPlaces::Place>& place) {
        if (place) {
            Text(topKey, FloatText(place->top));
            Text(leftKey, FloatText(place->left));
        }
    }
    template <typename Keys>
    void Numbers(const SharedState& state, const Keys& keys) {
        for (const auto& entry : keys) {
            Number(entry.key, state.*entry.cell);
        }
    }

    SettingChanges Take() { return std::move(m_changes); }

  private:
    std::string m_section;
    SettingChanges m_changes;
};

SettingChanges ChangesBeforePlayer(const SharedState& state) {
    SectionWriter writer(kGlobalSection);
    writer.Text(kPlayerNameKey, state.CurrentPlayerName);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        writer.Number(FactsOfReagent(reagent).priceKey, state.RegPrice(reagent));
    }
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        writer.Text(SpellRegsKey(row), DigitString(state.Spells(row).Reagents));
    }
    for (i32 row = 0; row <= kLastRow; ++row) {
        writer.Number(InTownKey(row), state.Spells(row).InTown);
    }
    return writer.Take();
}

SettingChanges ChangesAfterPlayer(const SharedState& state, const WindowPlaces& places) {
    SectionWriter writer(kGlobalSection);
    writer.Numbers(state, kLimitKeys);
    writer.Number(kColorWarnKey.key, state.ColorWarn);
    writer.Place(kWindowTopKey, kWindowLeftKey, places.main);
    writer.Place(kTimerTopKey, kTimerLeftKey, places.timer);
    return writer.Take();
}

void Append(SettingChanges& changes, SettingChanges more) {
    changes.insert(changes.end(), std::make_move_iterator(more.begin()),
                   std::make_move_iterator(more.end()));
}

}  // namespace

SettingChanges PlayerChanges(const SharedState& state, std::string_view player) {
    if (player.empty()) {
        return {};
    }
    SectionWriter writer(SectionOfPlayer(player));
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        writer.Text(BagNameKey(bag), state.BagName(bag));
        for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
            writer.Number(StockKey(reagent, bag), state.ReagentStock(reagent, bag));
        }
    }
    writer.Text(kTithingKey, StandardText(state.CurrentTithing));
    writer.Numbers(state, kBagChoiceKeys);
    for (i32 cell = 0; cell < kUserCells; ++cell) {
        writer.Number(UserSpellKey(cell), state.UserSpells(cell));
    }
    for (i32 row = 0; row <= kLastRow; ++row) {
        writer.Number(SpellbookKey(row), state.Spellbook(row));
    }
    writer.Numbers(state, kSkillKeys);
    writer.Numbers(state, kSendKeys);
    writer.Text(kSuffixKey, state.SpellTextSuffix);
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        writer.Text(SpellTextKey(row), state.Spells(row).SpellText);
    }
    return writer.Take();
}

SettingChanges GlobalChanges(const SharedState& state, const WindowPlaces& places) {
    SettingChanges changes = ChangesBeforePlayer(state);
    Append(changes, ChangesAfterPlayer(state, places));
    return changes;
}

SettingChanges AllChanges(const SharedState& state, const WindowPlaces& places) {
    SettingChanges changes = ChangesBeforePlayer(state);
    Append(changes, PlayerChanges(state, state.CurrentPlayerName));
    Append(changes, ChangesAfterPlayer(state, places));
    return changes;
}

SettingChanges MacroChanges(const SharedState& state,
                            const std::optional<WindowPlaces::Place>& dialog) {
    SectionWriter writer(kGlobalSection);
    writer.Place(kSettingsTopKey, kSettingsLeftKey, dialog);
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        writer.Text(MacroCodeKey(number), MacroCode(MacroOf(state, number)));
    }
    return writer.Take();
}

}  // namespace spellwick
