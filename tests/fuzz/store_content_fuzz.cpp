// The content of the store as it is read: any values under its keys are loaded, or fail in a
// defined way; what is saved then is loaded and saved again as it was, and texts come through
// whole.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/spell_lookup.h"
#include "store/catalogue.h"
#include "store/section_name.h"
#include "store/settings_io.h"
#include "store/text_forms.h"
#include "tests/support/memory_settings_store.h"
#include "text/runtime_failure.h"

namespace {

using namespace spellwick;

constexpr std::string_view kPlayer = "Ultima Online - Mira Talon (Atlantic)";

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

SharedState StartedState() {
    SharedState state;
    InitReagentTables(state);
    state.Spells.GrowTo(104);
    state.Spellbook.Fill(1);
    return state;
}

// False where a value cannot be read.
bool Load(SharedState& state, SettingsStore& store) {
    SettingsIo io(state, store, [](PlayerPart) {});
    try {
        io.LoadGlobalSettings();
        return true;
    } catch (const RuntimeFailure& failure) {
        Require(failure.Kind() == FailureKind::kTypeMismatch ||
                failure.Kind() == FailureKind::kOverflow);
        Require(!io.LastKey().empty());
        return false;
    }
}

// All that the program saves, in the order of its keys.
SettingChanges Saved(const SharedState& state) {
    SettingChanges changes = AllChanges(state, {});
    for (SettingChange& change : MacroChanges(state, {})) {
        changes.push_back(std::move(change));
    }
    for (const auto& entry : kSwitchKeys) {
        changes.push_back(
            {std::string(kGlobalSection), std::string(entry.key), BoolText(state.*entry.cell)});
    }
    changes.push_back({std::string(kGlobalSection), std::string(kTimerModeKey.key),
                       std::to_string(state.SpellTimerMode)});
    return changes;
}

SettingChanges SavedAndLoaded(const SettingChanges& changes) {
    MemorySettingsStore store;
    Require(store.Apply(changes).ok);
    SharedState state = StartedState();
    Require(Load(state, store));
    return Saved(state);
}

struct Place {
    std::string section;
    std::string key;
};

// Every key that is saved, the player's first.
const std::vector<Place>& Places() {
    static const std::vector<Place> kPlaces = [] {
        SharedState state = StartedState();
        state.CurrentPlayerName = kPlayer;
        std::vector<Place> places;
        for (const SettingChange& change : Saved(state)) {
            if (change.key != kPlayerNameKey) {
                places.push_back({change.section, change.key});
            }
        }
        return places;
    }();
    return kPlaces;
}

// A macro without a key reads as one with a blank, since its code is too short.
void RequireAlike(const SettingChanges& first, const SettingChanges& second) {
    Require(first.size() == second.size());
    for (std::size_t at = 0; at < first.size(); ++at) {
        Require(first[at].section == second[at].section && first[at].key == second[at].key);
        const std::string before = first[at].value.value_or("");
        Require(second[at].value == before ||
                (first[at].key.starts_with("Macro") && second[at].value == before + " "));
    }
}

bool IsText(const Place& place) {
    return place.section != kGlobalSection &&
           (place.key == kSuffixKey || place.key.starts_with("SpellText ") ||
            place.key.starts_with("Bag "));
}

void RequireWhole(const SettingChanges& saved, const std::map<std::string, std::string>& texts) {
    for (const SettingChange& change : saved) {
        const auto text = texts.find(change.key);
        Require(text == texts.end() || change.section == kGlobalSection ||
                change.value == text->second);
    }
}

}  // namespace

// Each value: two bytes for its key, one for its length, and its bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemorySettingsStore given;
    given.Put(kGlobalSection, kPlayerNameKey, kPlayer);
    std::map<std::string, std::string> texts;
    std::string_view input(reinterpret_cast<const char*>(data), size);  // NOLINT
    while (input.size() >= 3) {
        const auto byte = [&input](std::size_t at) {
            return static_cast<std::size_t>(static_cast<unsigned char>(input[at]));
        };
        const Place& place = Places()[(byte(0) * 256 + byte(1)) % Places().size()];
        const std::size_t length = byte(2);
        input.remove_prefix(3);
        const std::string value(input.substr(0, length));
        input.remove_prefix(value.size());
        given.Put(place.section, place.key, value);
        if (IsText(place)) {
            texts[place.key] = value;
        }
    }
    SharedState state = StartedState();
    const bool whole = Load(state, given);
    // Where a value cannot be read the program goes on with what was read before it.
    Require(!whole || state.CurrentPlayerName == kPlayer);
    state.CurrentPlayerName = kPlayer;
    const SettingChanges first = Saved(state);
    const SettingChanges second = SavedAndLoaded(first);
    if (whole) {
        RequireWhole(first, texts);
    }
    if (first != second) {
        RequireAlike(first, second);
        Require(SavedAndLoaded(second) == second);
    }
    return 0;
}
