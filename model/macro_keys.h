// What an entry typed into the edit of a macro's key means, and which macro a line of the macro tab
// stands for.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/shared_state.h"
#include "text/number_types.h"

namespace spellwick {

inline constexpr std::string_view kKeyLeftBlank = "This field cannot be left blank";
inline constexpr std::string_view kKeyNotValid = "This entry is not valid";

inline constexpr i32 kMeditationLine = 9;  // row of the Meditation skill on the tab

// Macro number of row 0 to 7, 8 or 9 of the tab while it shows page 0 to 11.
i32 MacroOfLine(i32 page, i32 line);

// The key that an entry means: a single character, "{F1}" to "{F12}", or such a name without
// braces, with a capital or small f. Nothing for any other entry.
std::optional<std::string> MacroKeyOfEntry(std::string_view entry);

// A macro's key as the game's own window names it, such as "Ctrl+4" or "Alt+Shift+F2"; empty for a
// macro without a key. Macro -1 to 96; RuntimeFailure (subscript) outside.
std::string ShownMacroKey(const MacroTables& macros, i32 macro);

}  // namespace spellwick
