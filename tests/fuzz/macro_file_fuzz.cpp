// The client's macro file: any bytes give macros that fit the table, a second merge changes
// nothing, and what is written can be read back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "model/macro_keys.h"
#include "store/macro_code.h"
#include "store/macro_file.h"

namespace {

using namespace spellwick;

constexpr i32 kNamelessRow = 91;
const Macro kUntouched{.alt = true, .key = "AA"};

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Names that are short and few, so that the fuzzer finds them, and rows without one, as in the
// shipped table.
SharedState Tables() {
    SharedState state;
    state.Spells.GrowTo(kLastRow);
    for (i32 row = 0; row < kNamelessRow; ++row) {
        state.Spells(row).Name = std::to_string(row % 20);
    }
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        SetMacro(state, number, kUntouched);
    }
    return state;
}

void Merge(std::string_view text, SharedState& state) {
    try {
        MacroLoad load;
        MergeMacroText(text, state, load);
    } catch (const RuntimeFailure& failure) {
        Require(failure.Kind() == FailureKind::kSubscript);
    }
}

bool AreAlike(const MacroTables& one, const MacroTables& other) {
    return one.MacroAlt == other.MacroAlt && one.MacroCtrl == other.MacroCtrl &&
           one.MacroShift == other.MacroShift && one.MacroKey == other.MacroKey;
}

void RequireSound(const Macro& macro) {
    Require(macro.key.empty() || macro == kUntouched || MacroKeyOfEntry(macro.key) == macro.key);
}

// A lower-case letter is read back as a capital and a brace as a blank; all other keys are
// unchanged.
bool ComesBack(const std::string& key) {
    const bool isFunctionKey = key.size() > 2 && key.front() == '{';
    const bool isPlainSign = key.size() == 1 && key[0] >= ' ' && key[0] < 'a';
    return isFunctionKey || isPlainSign;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const SharedState kStarted = Tables();
    static SharedState state = kStarted;
    const auto fresh = [] {
        static_cast<MacroTables&>(state) = static_cast<const MacroTables&>(kStarted);
    };
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    fresh();
    Merge(text, state);
    Require(MacroOf(state, kMeditationMacro) == kUntouched);
    Require(MacroOf(state, 0) == kUntouched);
    const MacroTables merged = static_cast<const MacroTables&>(state);
    Merge(text, state);
    Require(AreAlike(merged, state));
    // Rows of one name have one macro. Those without a name end the merge, so they come last.
    std::string written;
    for (i32 row = 0; row < kLastRow; ++row) {
        const Macro macro = MacroOf(merged, row + 1);
        RequireSound(macro);
        if (ComesBack(macro.key)) {
            written += MacroBlock(state, row);
        }
    }
    fresh();
    Merge(written, state);
    for (i32 row = 0; row < kLastRow; ++row) {
        const Macro macro = MacroOf(merged, row + 1);
        Require(!ComesBack(macro.key) || MacroOf(state, row + 1) == macro);
    }
    return 0;
}
