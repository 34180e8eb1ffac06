// The game client's macro file, a block of lines for each macro: its keys are taken into the macro
// tables, and the tables are written as such a file. Its text is in Windows-1252.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

// Takes over the key of every macro that casts a spell of the table; the others keep theirs. Lines
// end as on any system. RuntimeFailure (subscript) at a spell beyond the macro tables or beyond the
// spell table; what was taken before stands.
void MergeMacroText(std::string_view text, SharedState& state);

// The same with the bytes of a file. RuntimeFailure (file) when it is no file or cannot be read.
void MergeMacroFile(const std::filesystem::path& file, SharedState& state);

// The block that casts the spell of a row. RuntimeFailure (subscript) beyond row 95, which has no
// macro.
std::string MacroBlock(const SharedState& state, i32 row);

// Writes the blocks of the rows 0 to 96 to a file, in place of what it held. Always ends with a
// RuntimeFailure: (file) when it cannot be written, else (subscript) at row 96, with the blocks of
// the rows before it complete in the file, and the file's name in its text.
void WriteMacroFile(const std::filesystem::path& file, const SharedState& state);

}  // namespace spellwick
