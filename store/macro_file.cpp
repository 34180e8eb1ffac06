#include "store/macro_file.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <map>
#include <system_error>
#include <vector>

#include "store/macro_code.h"
#include "text/windows_1252.h"

namespace spellwick {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kEndOfBlock = "########";
constexpr std::string_view kCastSpell = "CastSpell";
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

void TakeMacro(SharedState& state, const RowsByName& rows, const std::string& spell,
               const KeyLine& key) {
    // ODDITY(macro-exact-name): a spell whose name in the file differs by a letter, its case or a
    // blank at the end keeps its old key; kept because the file and the spell table name the same
    // spells, and a guess could change the key of another.
    const auto found = rows.find(spell);
    if (found != rows.end()) {
        const Macro macro = MacroOfKeyLine(key);
        // ODDITY(macro-nameless-spell): a line CastSpell without a name gives its key to all rows
        // without a spell and ends the load there; kept because the last of these rows has no
        // macro, and what was loaded before is kept.
        for (const i32 row : found->second) {
            SetMacro(state, row + 1, macro);
        }
    }
    if (state.Spells.Last() < kLastRow) {
        throw RuntimeFailure(
            FailureKind::kSubscript,
            "The spell table ends at row " + std::to_string(state.Spells.Last()) + ".");
    }
}

// No macro file is that large, and a larger one might not fit into memory.
constexpr std::uintmax_t kMostBytes = 1U << 30U;

std::string ReadWhole(const fs::path& file) {
    std::error_code trouble;
    std::ifstream input;
    if (fs::is_regular_file(file, trouble)) {
        input.open(file, std::ios::binary);
    }
    const std::uintmax_t size = fs::file_size(file, trouble);
    const bool fits = input.is_open() && !trouble && size <= kMostBytes;
    std::string bytes;
    if (fits) {
        bytes.resize(size);
        input.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<std::size_t>(input.gcount()));
    }
    if (!fits || input.bad()) {
        throw RuntimeFailure(FailureKind::kFile,
                             "The file \"" + file.string() + "\" cannot be read.");
    }
    return bytes;
}

bool Write(const fs::path& file, const std::string& bytes) {
    std::ofstream output(file, std::ios::binary | std::ios::trunc);
    output << bytes;
    output.close();
    return output.good();
}

// Replaces the contents of a file. The bytes are written beside it first, so that nothing is lost
// if the disk is full.
bool Replace(const fs::path& file, const std::string& bytes) {
    std::error_code trouble;
    if (!fs::exists(file, trouble)) {
        return Write(file, bytes);
    }
    const fs::path target = fs::canonical(file, trouble);
    if (trouble || !fs::is_regular_file(target, trouble) ||
        !std::ofstream(target, std::ios::binary | std::ios::app).is_open()) {
        return false;
    }
    fs::path beside = target;
    beside += ".spellwick-new";
    if (!std::ofstream(beside, std::ios::binary | std::ios::trunc).is_open()) {
        // The file may be writable even if its folder is not.
        return Write(target, bytes);
    }
    const fs::perms rights = fs::status(target, trouble).permissions();
    bool isReplaced = Write(beside, bytes);
    if (isReplaced) {
        fs::permissions(beside, rights, trouble);
        fs::rename(beside, target, trouble);
        isReplaced = !trouble;
    }
    if (!isReplaced) {
        fs::remove(beside, trouble);
    }
    return isReplaced;
}

}  // namespace

void MergeMacroText(std::string_view text, SharedState& state) {
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
        if (line.starts_with(kCastSpell)) {
            TakeMacro(state, rows, Utf8FromWindows1252(From(line, kCastSpell.size() + 1)), key);
        }
        previous = line;
    }
}

void MergeMacroFile(const fs::path& file, SharedState& state) {
    MergeMacroText(ReadWhole(file), state);
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
    if (!Replace(file, blocks)) {
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
