// The content of the store as it is read: any values under its keys are loaded, or fail in a
// defined way. One input of sixteen has a player too, and takes six times as long: what is saved
// then is loaded and saved again as it was, and texts come through whole.
#include <utility>

#include "model/spell_lookup.h"
#include "store/catalogue.h"
#include "store/section_name.h"
#include "store/settings_io.h"
#include "store/text_forms.h"
#include "tests/fuzz/stored_values.h"

namespace {

using namespace spellwick;
using namespace spellwick::fuzz;

SharedState StartedState() {
    SharedState state;
    InitReagentTables(state);
    state.Spells.GrowTo(104);
    state.Spellbook.Fill(1);
    for (const auto& entry : kPaceKeys) {
        state.*entry.cell = entry.fallback;
    }
    return state;
}

// False where a value cannot be read.
bool Load(SharedState& state, SettingsStore& store) {
    SettingsIo io(state, store, [](PlayerPart) {});
    return Reads(io, [&] { io.LoadGlobalSettings(); });
}

void Append(SettingChanges& changes, SettingChanges more) {
    for (SettingChange& change : more) {
        changes.push_back(std::move(change));
    }
}

// All that the program saves, the player's first; without the player's name.
SettingChanges Saved(const SharedState& state) {
    SettingChanges changes = PlayerChanges(state, state.CurrentPlayerName);
    changes.reserve(1000);
    SettingChanges global = GlobalChanges(state, {});
    Require(global.front().key == kPlayerNameKey);
    global.erase(global.begin());
    Append(changes, std::move(global));
    Append(changes, MacroChanges(state, {}));
    const auto option = [&changes](std::string_view key, std::string value) {
        changes.push_back({std::string(kGlobalSection), std::string(key), std::move(value)});
    };
    for (const auto& entry : kSwitchKeys) {
        option(entry.key, BoolText(state.*entry.cell));
    }
    option(kTimerModeKey.key, std::to_string(state.SpellTimerMode));
    for (const auto& entry : kPaceKeys) {
        option(entry.key, std::to_string(state.*entry.cell));
    }
    return changes;
}

SettingChanges Reload(MemorySettingsStore store, const SharedState& started) {
    store.Put(kGlobalSection, kPlayerNameKey, kPlayer);
    SharedState state = started;
    Require(Load(state, store));
    return Saved(state);
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

// What an empty store gives.
struct Tables {
    Tables() {
        SharedState state = started;
        MemorySettingsStore empty;
        empty.Put(kGlobalSection, kPlayerNameKey, kPlayer);
        Require(Load(state, empty));
        usual = Saved(state);
        RequireAlike(usual, Reload(Whole(usual), started));
        const std::size_t players = PlayerChanges(state, kPlayer).size();
        global.assign(usual.begin() + static_cast<std::ptrdiff_t>(players), usual.end());
    }

    SharedState started = StartedState();
    SettingChanges usual;
    SettingChanges global;
};

void LoadGlobalValues(GivenValues given, const SharedState& started) {
    given.store.Put(kGlobalSection, kPlayerNameKey, "");
    SharedState state = started;
    static_cast<void>(Load(state, given.store));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Tables kTables;
    if (size % 16 != 0) {
        LoadGlobalValues(Given(data, size, kTables.global), kTables.started);
        return 0;
    }
    GivenValues given = Given(data, size, kTables.usual);
    given.store.Put(kGlobalSection, kPlayerNameKey, kPlayer);
    SharedState state = kTables.started;
    const bool whole = Load(state, given.store);
    // Where a value cannot be read the program goes on with what was read before it.
    Require(!whole || state.CurrentPlayerName == kPlayer);
    state.CurrentPlayerName = kPlayer;
    const SettingChanges first = Saved(state);
    // Most inputs reload what is not usual, which is much less and comes to the same.
    const auto reload = [size](const SettingChanges& saved) {
        return Reload(size % 256 == 0 ? Whole(saved) : Unusual(saved, kTables.usual),
                      kTables.started);
    };
    const SettingChanges second = reload(first);
    if (whole) {
        RequireTexts(first, given.texts);
    }
    if (first != second) {
        RequireAlike(first, second);
        Require(reload(second) == second);
    }
    return 0;
}
