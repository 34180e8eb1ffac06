// The macros of a macros.xml: which of them cast our spells, and what a save changes in the file.
// Reading the XML is left to a library; it tells what stands in the file, and where.
#pragma once

#include <string>
#include <string_view>

#include "model/shared_state.h"
#include "store/macro_code.h"
#include "store/macro_report.h"
#include "store/macro_xml.h"

namespace spellwick {

// A macros.xml that stands apart from its bytes only by what was saved.
struct SavedMacros {
    std::string bytes;
    MacroSave save;
};

// Whether a file that begins like this is XML, in whatever encoding, rather than the classic
// client's text.
bool IsXml(std::string_view beginning);

// Takes over the key of every macro that does nothing but cast one of our spells or meditate, if
// the tables can hold that key. Of several such macros for a spell the first counts.
MacroLoad LoadClientMacros(const MacroXml& xml, const SpellTable& spells, MacroTables& tables);

// The file with the macros of our spells on our keys: the one that a load would read is changed,
// and a spell that has none gets one behind the others. No other byte changes.
SavedMacros SaveClientMacros(std::string_view bytes, const MacroXml& xml, const SpellTable& spells,
                             const MacroTables& tables);

// A macros.xml that holds no macro yet.
std::string EmptyClientMacros();

// What is pressed for macro number -1 to 96: letters are small.
Macro PressedMacro(const MacroTables& tables, i32 number);

}  // namespace spellwick
