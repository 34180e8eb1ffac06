// What the tests of the store share: a view that records, states to compare.
#pragma once

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "model/shared_state.h"
#include "platform/settings_store.h"
#include "store/macro_code.h"
#include "store/settings_io.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {

// Keeps the names of the parts of a player as they are loaded, and runs something at each.
class RecordingView {
  public:
    RecordingView() = default;
    RecordingView(const RecordingView&) = delete;
    RecordingView& operator=(const RecordingView&) = delete;
    RecordingView(RecordingView&&) = delete;
    RecordingView& operator=(RecordingView&&) = delete;
    ~RecordingView() = default;

    // What SettingsIo calls; this outlives it.
    operator std::function<void(PlayerPart)>() {  // NOLINT(google-explicit-constructor)
        return [this](PlayerPart part) { Note(part); };
    }

    std::vector<std::string> calls;
    std::function<void(const std::string&)> onCall;

  private:
    void Note(PlayerPart part) {
        constexpr std::array kNames{"bag names", "bag", "stock", "tithes"};
        const std::string call = kNames.at(static_cast<std::size_t>(part));
        calls.push_back(call);
        if (onCall) {
            onCall(call);
        }
    }
};

// A state as the start leaves it before the settings are loaded: a spell table, an empty book.
inline SharedState StartedState() {
    SharedState state;
    InitReagentTables(state);
    state.Spells.GrowTo(104);
    state.Spellbook.Fill(1);
    return state;
}

// Player data that the store keeps as they are, all of them drawn from `seed`.
void FillPlayer(SharedState& state, unsigned seed);
// The same for the global data.
void FillGlobals(SharedState& state, unsigned seed);

// Saves everything as a session with clicks on all options and a closed settings dialog does.
void SaveAll(SharedState& state, SettingsStore& store, RecordingView& view);

// Names of the saved variables in which two states differ; empty when they are alike.
std::string PlayerDifferences(const SharedState& left, const SharedState& right);
std::string GlobalDifferences(const SharedState& left, const SharedState& right);

}  // namespace spellwick
