// Reads the keys in the game client's macro file into the macro tables, and writes the tables as
// such a file. It has a block of lines for each macro, in Windows-1252.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "model/shared_state.h"
#include "store/macro_report.h"

namespace spellwick {

// Takes over the key of every macro that casts a spell of the table, by its name there or by the
// one that a client has for it; other spells keep theirs. Line ends of any system are accepted.
// `load` tells what was taken. RuntimeFailure (subscript) at a spell beyond the macro tables or
// beyond the spell table; keys read before it are kept.
void MergeMacroText(std::string_view text, SharedState& state, MacroLoad& load);

// The same for a file. RuntimeFailure (file) if it is not a file or cannot be read.
void MergeMacroFile(const std::filesystem::path& file, SharedState& state, MacroLoad& load);

// The block that casts the spell of a row. RuntimeFailure (subscript) beyond row 95, which has no
// macro.
std::string MacroBlock(const SharedState& state, i32 row);

// Writes the blocks of rows 0 to 96 to a file and replaces its contents. Always ends with a
// RuntimeFailure: (file) if it cannot be written, else (subscript) at row 96, when the blocks of
// the rows before it are complete in the file; its text names the file.
void WriteMacroFile(const std::filesystem::path& file, const SharedState& state);

}  // namespace spellwick
