// The values of one player: any texts under the keys are loaded as the journal's rule says, or fail
// in a defined way; what is saved then is loaded and saved again as it was, and texts come through
// whole.
#include <algorithm>

#include "store/catalogue.h"
#include "store/player_values.h"
#include "store/settings_io.h"
#include "tests/fuzz/stored_values.h"

namespace {

using namespace spellwick;
using namespace spellwick::fuzz;

// False where a value cannot be read.
bool Load(SharedState& state, SettingsStore& store) {
    SettingsIo io(state, store, [](PlayerPart) {});
    return Reads(io, [&] { io.LoadPlayerSettings(kPlayer); });
}

// All that is saved of a player. Comparing it takes less time than to write it down again.
struct PlayerValues {
    explicit PlayerValues(const SharedState& state)
        : bagNames(state.BagName),
          stock(state.ReagentStock),
          userSpells(state.UserSpells),
          spellbook(state.Spellbook),
          tithing(state.CurrentTithing),
          suffix(state.SpellTextSuffix) {
        for (const auto& entry : kBagChoiceKeys) {
            numbers.push_back(state.*entry.cell);
        }
        for (const auto& entry : kSkillKeys) {
            numbers.push_back(state.*entry.cell);
        }
        for (const auto& entry : kSendKeys) {
            numbers.push_back(state.*entry.cell);
        }
        for (i32 row = 0; row <= kLastPagedRow; ++row) {
            spellTexts.push_back(state.Spells(row).SpellText);
        }
    }

    bool operator==(const PlayerValues&) const = default;

    decltype(SharedState::BagName) bagNames;
    StockTable stock;
    decltype(SharedState::UserSpells) userSpells;
    decltype(SharedState::Spellbook) spellbook;
    i32 tithing;
    std::string suffix;
    std::vector<i16> numbers;
    std::vector<std::string> spellTexts;
};

class Tables {
  public:
    Tables() {
        m_started.Spells.GrowTo(kLastRow);
        m_started.Spellbook.Fill(1);
        m_state = m_started;
        MemorySettingsStore empty;
        Require(Load(m_state, empty));
        m_usual = PlayerChanges(m_state, kPlayer);
        MemorySettingsStore whole = Whole(m_usual);
        Require(Load(Fresh(), whole) && PlayerChanges(m_state, kPlayer) == m_usual);
    }

    // As at the start. The spells are not made anew: only their spoken texts are a player's.
    SharedState& Fresh() {
        static_cast<PurseContents&>(m_state) = static_cast<const PurseContents&>(m_started);
        static_cast<CasterSkills&>(m_state) = static_cast<const CasterSkills&>(m_started);
        static_cast<SpokenOptions&>(m_state) = static_cast<const SpokenOptions&>(m_started);
        m_state.UserSpells = m_started.UserSpells;
        m_state.Spellbook = m_started.Spellbook;
        for (i32 row = 0; row <= kLastRow; ++row) {
            m_state.Spells(row).SpellText.clear();
        }
        return m_state;
    }

    // What is saved of a player without data.
    const SettingChanges& Usual() const { return m_usual; }

  private:
    SharedState m_started;
    SharedState m_state;
    SettingChanges m_usual;
};

bool AreReadable(const SectionValues& values) {
    return std::all_of(values.begin(), values.end(),
                       [](const auto& value) { return IsPlayerValue(value.first, value.second); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Tables tables;
    GivenValues given = Given(data, size, tables.Usual());
    SharedState& state = tables.Fresh();
    const bool whole = Load(state, given.store);
    Require(whole == AreReadable(given.store.ReadSection(kPlayer)));
    const SettingChanges first = PlayerChanges(state, kPlayer);
    const PlayerValues values(state);
    MemorySettingsStore saved = Unusual(first, tables.Usual());
    Require(Load(tables.Fresh(), saved));
    Require(PlayerValues(state) == values);
    if (size % 16 == 0) {
        Require(PlayerChanges(state, kPlayer) == first);
    }
    if (whole) {
        RequireTexts(first, given.texts);
    }
    return 0;
}
