#include "store/macro_code.h"

#include <array>
#include <cstddef>

#include "text/characters.h"
#include "text/runtime_failure.h"

namespace spellwick {

namespace {

struct PageMacros {
    std::string_view flags;
    std::string_view keys;  // of slots 1 to 8; a blank where there is no spell
};

constexpr std::array<PageMacros, kPageCount> kDefaultMacros{{
    {"A--", "12345678"},
    {"-C-", "12345678"},
    {"AC-", "12345678"},
    {"A-S", "12345678"},
    {"-CS", "12345678"},
    {"ACS", "12345678"},
    {"ACS", "QWERTYUI"},
    {"ACS", "ASDFGHJK"},
    {"ACS", "ZXCVBNM,"},
    {"AC-", "QWERTYUI"},
    {"AC-", "ASDFGHJK"},
    {"AC-", "L;     O"},
}};

constexpr std::size_t kFlagCount = 3;

constexpr i32 kLastDialogDefault = 90;

}  // namespace

std::string MacroCode(const Macro& macro) {
    std::string code{macro.alt ? 'A' : '-', macro.ctrl ? 'C' : '-', macro.shift ? 'S' : '-'};
    return code + macro.key;
}

Macro ReadMacroCode(std::string_view code) {
    if (CountCharacters(code) <= kFlagCount) {
        code = kBlankMacro;
    }
    return {FirstCharacters(code, 1) == "A", FirstCharacters(SkipCharacters(code, 1), 1) == "C",
            FirstCharacters(SkipCharacters(code, 2), 1) == "S",
            std::string(SkipCharacters(code, kFlagCount))};
}

std::string DefaultMacroCode(i32 number) {
    if (number < 1 || number > kPageCount * kSlotCount) {
        throw RuntimeFailure(FailureKind::kSubscript,
                             "There is no macro number " + std::to_string(number) + ".");
    }
    const auto place = static_cast<std::size_t>(number - 1);
    const PageMacros& page = kDefaultMacros[place / kSlotCount];
    const char key = page.keys[place % kSlotCount];
    return key == ' ' ? std::string() : std::string(page.flags) + key;
}

Macro SavedOrDefaultMacro(i32 number, std::string_view code) {
    if (code != kUnsavedMacro) {
        return ReadMacroCode(code);
    }
    const std::string fallback = DefaultMacroCode(number);
    return fallback.empty() ? Macro{} : ReadMacroCode(fallback);
}

Macro MacroOfDialog(i32 number, std::string_view code) {
    // ODDITY(last-macros): the slots without a spell on the last page, and Exorcism, have the key
    // AA until the user sets another; kept because it marks macros that were never set, and their
    // saved codes contain it.
    const bool hasDefault = number <= kLastDialogDefault;
    return hasDefault ? SavedOrDefaultMacro(number, code) : ReadMacroCode(code);
}

Macro MacroOf(const MacroTables& tables, i32 number) {
    return {!tables.MacroAlt(number).empty(), !tables.MacroCtrl(number).empty(),
            !tables.MacroShift(number).empty(), tables.MacroKey(number)};
}

void SetMacro(MacroTables& tables, i32 number, const Macro& macro) {
    tables.MacroAlt(number) = macro.alt ? "%" : "";
    tables.MacroCtrl(number) = macro.ctrl ? "^" : "";
    tables.MacroShift(number) = macro.shift ? "+" : "";
    tables.MacroKey(number) = macro.key;
}

}  // namespace spellwick
