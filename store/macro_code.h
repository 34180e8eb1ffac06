// Macro codes: three places for Alt, Ctrl and Shift, then the text of the key. "AC-X" is Alt, Ctrl
// and X.
#pragma once

#include <string>
#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

struct Macro {
    bool alt = false;
    bool ctrl = false;
    bool shift = false;
    std::string key;

    bool operator==(const Macro&) const = default;
};

// The code that stands for a macro of a spell that was never saved.
inline constexpr std::string_view kUnsavedMacro = "---AA";
// The code of no modifiers and a blank as the key, for a code that is too short.
inline constexpr std::string_view kBlankMacro = "    ";

std::string MacroCode(const Macro& macro);

// Every text is valid: a flag is off unless its place has its letter, and fewer than four
// characters are a blank macro.
Macro ReadMacroCode(std::string_view code);

// The code of macro number 1 to 96 until the user saves another: one of four characters, or empty
// where there is no spell. RuntimeFailure (subscript) outside.
std::string DefaultMacroCode(i32 number);

// The macro for a saved code, or for none, of macro number 1 to 96: kUnsavedMacro and none mean the
// default.
Macro SavedOrDefaultMacro(i32 number, std::string_view code);

// The same as the settings dialog reads it: the last six macros, which have no default there, keep
// the key of kUnsavedMacro.
Macro MacroOfDialog(i32 number, std::string_view code);

// The macro in the tables, macro number -1 to 96.
Macro MacroOf(const MacroTables& tables, i32 number);
void SetMacro(MacroTables& tables, i32 number, const Macro& macro);

}  // namespace spellwick
