#include "store/macro_file.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "store/file_bytes.h"
#include "store/macro_code.h"
#include "store/macro_names.h"
#include "text/windows_1252.h"

namespace spellwick {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEndOfBlock = "########";
constexpr std::string_view kCastSpell = "CastSpell";
constexpr char kActionMark = '+';  // which some clients write before an action
constexpr std::string_view kLineEnd = "\r\n";

// Takes a line off the text, with its end: CR, LF or both.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of(kLineEnd), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with(kLineEnd) ? 2 : std::min<std::size_t>(1, text.size()));
    return line;
}

std::string_view From(std::string_view text, std::size_t position) {
    return text.substr(std::min(position, text.size()));
}

// What the first line of a block says.
struct KeyLine {
    std::string_view name;
    std::string_view flags;
};

// The first characters of the line if they are the name of a function key and a blank.
std::size_t LengthOfFunctionKey(std::string_view line) {
    if (line.size() >= 3 && line[0] == 'F' && line[1] >= '1' && line[1] <= '9' && line[2] == ' ') {
        return 2;
    }
    if (line.starts_with("F10 ") || line.starts_with("F11 ") || line.starts_with("F12 ")) {
        return 3;
    }
    return 0;
}

KeyLine ReadKeyLine(std::string_view line) {
    // ODDITY(macro-key-name): a key whose name has several letters is read as its first letter with
    // modifiers from the wrong places, Alt+Tab as Shift+T, and a lower-case f1 as the letter f;
    // kept because the table holds single characters and F1 to F12, and has no place for other
    // keys.
    const std::size_t length =
        std::max(LengthOfFunctionKey(line), std::min<std::size_t>(1, line.size()));
    return {line.substr(0, length), From(line, length + 1)};
}

bool IsHeld(const KeyLine& key, std::size_t position) {
    return position < key.flags.size() && key.flags[position] == '1';
}

Macro MacroOfKeyLine(const KeyLine& key) {
    std::string name = Utf8FromWindows1252(key.name);
    return {.alt = IsHeld(key, 2),
            .ctrl = IsHeld(key, 0),
            .shift = IsHeld(key, 4),
            .key = key.name.size() < 2 ? name : "{" + name + "}"};
}

// Rows of the spell table by their names.
using RowsByName = std::map<std::string, std::vector<i32>, std::less<>>;

RowsByName FindRows(const SpellTable& spells) {
    RowsByName rows;
    for (i32 row = 0; row <= std::min(kLastRow, spells.Last()); ++row) {
        rows[spells(row).Name].push_back(row);
    }
    return rows;
}

// A name of the spell table counts before one that only a client uses.
RowsByName::const_iterator FindSpell(const RowsByName& rows, const std::string& spell) {
    const auto found = rows.find(spell);
    if (found != rows.end()) {
        return found;
    }
    const std::string_view ours = SpellOfClientName(spell);
    return ours.empty() ? rows.end() : rows.find(ours);
}

void TakeMacro(SharedState& state, const RowsByName& rows, const std::string& spell,
               const KeyLine& key, MacroLoad& load) {
    // ODDITY(macro-exact-name): a spell whose name in the file differs by a letter, its case or a
    // blank at the end from ours and from the clients' own keeps its old key; kept because a guess
    // could change the key of another.
    const auto found = FindSpell(rows, spell);
    if (found == rows.end()) {
        load.left.push_back({LeftReason::kUnknownSpell, spell});
    } else {
        const Macro macro = MacroOfKeyLine(key);
        // ODDITY(macro-nameless-spell): a line CastSpell without a name gives its key to all rows
        // without a spell and ends the load there; kept because the last of these rows has no
        // macro, and what was loaded before is kept.
        for (const i32 row : found->second) {
            SetMacro(state, row + 1, macro);
            if (!spell.empty()) {
                load.taken.insert(row + 1);
            }
        }
    }
    if (state.Spells.Last() < kLastRow) {
        throw RuntimeFailure(
            FailureKind::kSubscript,
            "The spell table ends at row " + std::to_string(state.Spells.Last()) + ".");
    }
}

// No macro file is that large, and a larger one might not fit into memory.
constexpr std::uintmax_t kMostMacroBytes = 1U << 30U;

}  // namespace

void MergeMacroText(std::string_view text, SharedState& state, MacroLoad& load) {
    load.isCutShort = true;
    const RowsByName rows = FindRows(state.Spells);
    std::string_view previous = kEndOfBlock;
    KeyLine key;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (previous == kEndOfBlock) {
            key = ReadKeyLine(line);
        }
        // ODDITY(macro-block-without-key): a block that begins with its CastSpell line binds the
        // spell to C, and one that begins with an empty line leaves the spell without a key; kept
        // because the first line of a block is its key, whatever it says.
        const std::string_view action = line.substr(line.starts_with(kActionMark) ? 1 : 0);
        if (action.starts_with(kCastSpell)) {
            TakeMacro(state, rows, Utf8FromWindows1252(From(action, kCastSpell.size() + 1)), key,
                      load);
        }
        previous = line;
    }
    load.isCutShort = false;
}

void MergeMacroFile(const fs::path& file, SharedState& state, MacroLoad& load) {
    MergeMacroText(ReadFileBytes(file, kMostMacroBytes), state, load);
}

std::string MacroBlock(const SharedState& state, i32 row) {
    const Macro macro = MacroOf(state, row + 1);
    std::string key = Windows1252FromUtf8(macro.key);
    if (key.starts_with('{')) {
        // ODDITY(macro-brace): a spell on the key { is written without a key and read back with a
        // blank as its key; kept because braces only mark the names of function keys here.
        key = key.size() > 2 ? key.substr(1, key.size() - 2) : std::string();
    }
    // ODDITY(macro-capitals): a lower-case key is written as a capital and read back as one; kept
    // because the client's own file has capitals, and a spell's key is typed in lower case.
    std::ranges::transform(key, key.begin(), [](char letter) {
        return static_cast<char>(UpperCaseWindows1252(static_cast<unsigned char>(letter)));
    });
    for (const bool held : {macro.ctrl, macro.alt, macro.shift}) {
        key += held ? " 1" : " 0";
    }
    std::string block = key;
    block.append(kLineEnd).append(kCastSpell).append(" ");
    block.append(Windows1252FromUtf8(state.Spells(row).Name)).append(kLineEnd);
    return block.append(kEndOfBlock).append(kLineEnd);
}

void WriteMacroFile(const fs::path& file, const SharedState& state) {
    std::string blocks;
    for (i32 row = 0; row < kLastRow; ++row) {
        blocks += MacroBlock(state, row);
    }
    if (!ReplaceFileBytes(file, blocks)) {
        throw RuntimeFailure(FailureKind::kFile,
                             "The file \"" + file.string() + "\" cannot be written.");
    }
    // ODDITY(macro-save-ends): saving the macros to a file ends the program with an error report;
    // kept because the loop over the spells has always run one row past the macro tables, and by
    // then the file is complete and all data are saved.
    throw RuntimeFailure(FailureKind::kSubscript,
                         "There is no macro for row 96. The file \"" + file.string() +
                             "\" is complete: it holds the macros of all 96 spells.");
}

}  // namespace spellwick
