#include "store/settings_io.h"

#include <charconv>

#include "model/spell_lookup.h"
#include "store/catalogue.h"
#include "store/digit_string.h"
#include "store/macro_code.h"
#include "store/section_name.h"
#include "store/text_forms.h"

namespace spellwick {

namespace {

// The values of one section as they were at one moment.
class SectionReader {
  public:
    // Each key that is looked for goes to `lastKey`, which outlives the reader.
    SectionReader(SectionValues values, std::string& lastKey)
        : m_values(std::move(values)), m_lastKey(lastKey) {}

    // The value, or nothing when there is none. Valid as long as the reader.
    std::optional<std::string_view> Find(std::string_view key) const {
        m_lastKey = key;
        const auto found = m_values.find(key);
        if (found == m_values.end()) {
            return std::nullopt;
        }
        return found->second;
    }
    std::string_view Text(std::string_view key, std::string_view fallback) const {
        return Find(key).value_or(fallback);
    }
    i16 Number(std::string_view key, i16 fallback) const {
        const auto text = Find(key);
        return text ? ReadI16(*text) : fallback;
    }
    void Into(SharedState& state, const KeyOf<bool>& entry) const {
        const auto text = Find(entry.key);
        state.*entry.cell = text ? ReadBool(*text) : entry.fallback;
    }
    void Into(SharedState& state, const KeyOf<i16>& entry) const {
        state.*entry.cell = Number(entry.key, entry.fallback);
    }
    void Into(SharedState& state, const KeyOf<i32>& entry) const {
        const auto text = Find(entry.key);
        state.*entry.cell = text ? ReadI32(*text) : entry.fallback;
    }

  private:
    SectionValues m_values;
    std::string& m_lastKey;
};

void LoadSpellAmounts(SharedState& state, const SectionReader& settings) {
    for (i32 row = 0; row <= kLastRow; ++row) {
        ReagentAmounts& amounts = state.Spells(row).Reagents;
        const std::string unsaved = UnsavedDigitString(amounts);
        ReadDigitString(settings.Text(SpellRegsKey(row), unsaved), amounts);
    }
}

void LoadMacros(SharedState& state, const SectionReader& settings) {
    for (i32 number = 1; number <= kLastMacro; ++number) {
        const std::string_view code = settings.Text(MacroCodeKey(number), kUnsavedMacro);
        SetMacro(state, number, SavedOrDefaultMacro(number, code));
    }
    SetMacro(state, kMeditationMacro,
             ReadMacroCode(settings.Text(MacroCodeKey(kMeditationMacro), kBlankMacro)));
}

// Nothing for a text that is no number or one out of range.
std::optional<i16> ReadPace(std::string_view text) {
    i16 time = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, time);
    const bool good =
        error == std::errc() && rest == end && time >= kShortestPace && time <= kLongestPace;
    return good ? std::optional(time) : std::nullopt;
}

void LoadOptions(SharedState& state, const SectionReader& settings) {
    for (const auto& entry : kSwitchKeys) {
        settings.Into(state, entry);
    }
    for (const auto& entry : kLimitKeys) {
        settings.Into(state, entry);
    }
    for (const auto& entry : kPaceKeys) {
        state.*entry.cell = ReadPace(settings.Text(entry.key, "")).value_or(entry.fallback);
    }
    settings.Into(state, kColorWarnKey);
    settings.Into(state, kTimerModeKey);
}

void LoadTownFlags(SharedState& state, const SectionReader& settings) {
    for (i32 row = 0; row <= kLastRow; ++row) {
        SpellRecord& spell = state.Spells(row);
        if (const auto text = settings.Find(InTownKey(row))) {
            spell.InTown = ReadByte(*text);
        }
    }
}

void LoadSkills(SharedState& state, const SectionReader& player) {
    for (const auto& entry : kSkillKeys) {
        player.Into(state, entry);
        if (entry.cell == &SharedState::Intelligence) {
            state.CurrentMana = state.Intelligence;
        }
    }
    for (const auto& entry : kSendKeys) {
        player.Into(state, entry);
    }
    state.SpellTextSuffix = player.Text(kSuffixKey, kDefaultSuffix);
}

// The section from which a player is read; none when only defaults are to be read. While an older
// store is converted, the one set of data that it has stands in the global section.
std::optional<std::string> SectionToRead(const ConversionProgress& progress,
                                         std::string_view player) {
    if (!progress.Converting) {
        return SectionOfPlayer(player);
    }
    if (progress.ConvertToAllSlots || progress.ConvertPlayer == 1) {
        return std::string(kGlobalSection);
    }
    return std::nullopt;
}

}  // namespace

void SettingsIo::LoadGlobalSettings() {
    const SectionReader settings(m_store.ReadSection(kGlobalSection), m_lastKey);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        const ReagentFacts& facts = FactsOfReagent(reagent);
        m_state.RegPrice(reagent) = settings.Number(facts.priceKey, facts.defaultPrice);
    }
    m_state.RegPrice(kTithes) = FactsOfReagent(kTithes).defaultPrice;
    LoadSpellAmounts(m_state, settings);
    LoadMacros(m_state, settings);
    LoadOptions(m_state, settings);
    LoadTownFlags(m_state, settings);
    m_state.CurrentPlayerName = settings.Text(kPlayerNameKey, "");
    LoadPlayerSettings(m_state.CurrentPlayerName);
    RecalculateCosts(m_state);
}

StoreResult SettingsIo::SaveGlobalSettings(const WindowPlaces& places) {
    return m_unfinished.empty() || m_unfinished != m_state.CurrentPlayerName
               ? m_store.Apply(AllChanges(m_state, places))
               : SaveGlobalKeys(places);
}

StoreResult SettingsIo::SaveGlobalKeys(const WindowPlaces& places) {
    return m_store.Apply(GlobalChanges(m_state, places));
}

void SettingsIo::LoadPlayerSettings(std::string_view section) {
    const std::optional<std::string> source = SectionToRead(m_progress, section);
    if (source && source->empty()) {
        return;
    }
    const SectionReader player(source ? m_store.ReadSection(*source) : SectionValues{}, m_lastKey);
    m_unfinished = section;
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        m_state.BagName(bag) = player.Text(BagNameKey(bag), DefaultBagName(bag));
    }
    m_onLoaded(PlayerPart::kBagNames);
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
            m_state.ReagentStock(reagent, bag) =
                ReadStock(player.Text(StockKey(reagent, bag), "0"));
        }
    }
    m_state.CurrentTithing = ReadTithing(player.Text(kTithingKey, "0"));
    for (const auto& entry : kBagChoiceKeys) {
        player.Into(m_state, entry);
        if (entry.cell == &SharedState::CurrentReagentBag) {
            m_onLoaded(PlayerPart::kBagChoice);
        }
    }
    if (m_state.CurrentReagentBag >= 0 && m_state.CurrentReagentBag < kBagCount) {
        m_onLoaded(PlayerPart::kStock);
    }
    m_onLoaded(PlayerPart::kTithingPoints);
    for (i32 cell = 0; cell < kUserCells; ++cell) {
        m_state.UserSpells(cell) = player.Number(UserSpellKey(cell), 0);
    }
    for (i32 row = 0; row <= kLastRow; ++row) {
        m_state.Spellbook(row) = player.Number(SpellbookKey(row), kDefaultSpellbook);
    }
    LoadSkills(m_state, player);
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        m_state.Spells(row).SpellText = player.Text(SpellTextKey(row), "");
    }
    m_unfinished.clear();
}

StoreResult SettingsIo::SavePlayerSettings(std::string_view section) {
    if (section.empty() || section == m_unfinished) {
        return {};
    }
    return m_store.Apply(PlayerChanges(m_state, section));
}

StoreResult SettingsIo::SaveMacros(const std::optional<WindowPlaces::Place>& dialog) {
    return m_store.Apply(MacroChanges(m_state, dialog));
}

float SettingsIo::ReadPosition(std::string_view key) const {
    const std::optional<std::string> text = m_store.Read(kGlobalSection, key);
    return text ? ReadFloat(*text) : 0.0F;
}

bool SettingsIo::ReadSwitch(const KeyOf<bool>& entry) const {
    const std::optional<std::string> text = m_store.Read(kGlobalSection, entry.key);
    return text ? ReadBool(*text) : entry.fallback;
}

StoreResult SettingsIo::SaveOption(std::string_view key, const std::string& value) {
    return m_store.Apply({{std::string(kGlobalSection), std::string(key), value}});
}

}  // namespace spellwick
