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

// Names that are short, so that the fuzzer finds them, and rows without one, as in the shipped
// table.
SharedState Tables() {
    SharedState state;
    state.Spells.GrowTo(kLastRow);
    for (i32 row = 0; row < kNamelessRow; ++row) {
        state.Spells(row).Name = std::to_string(row % 80);
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

void RequireRoundTrip(const SharedState& state, i32 row) {
    const Macro macro = MacroOf(state, row + 1);
    if (ComesBack(macro.key)) {
        SharedState read = Tables();
        Merge(MacroBlock(state, row), read);
        Require(MacroOf(read, row + 1) == macro);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    SharedState state = Tables();
    Merge(text, state);
    Require(MacroOf(state, kMeditationMacro) == kUntouched);
    Require(MacroOf(state, 0) == kUntouched);
    SharedState again = state;
    Merge(text, again);
    for (i32 row = 0; row < kLastRow; ++row) {
        const Macro macro = MacroOf(state, row + 1);
        RequireSound(macro);
        Require(MacroOf(again, row + 1) == macro);
        RequireRoundTrip(state, row);
    }
    return 0;
}
