// Makes a macros.xml out of another one: changes keys, adds macros, and keeps every other byte.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "store/client_keys.h"
#include "store/macro_code.h"
#include "store/macro_xml.h"

namespace spellwick {

class MacroWriter {
  public:
    // Both outlive the writer.
    MacroWriter(std::string_view bytes, const MacroXml& xml);

    // Puts a macro of the file on this key; false if it is there already. Macros come in the order
    // of the file.
    bool Change(const XmlMacro& macro, i32 code, const Macro& wanted);

    // Adds a macro behind all others. A name that another macro has gets a number.
    void Add(const std::string& spell, const ClientAction& action, i32 code, const Macro& wanted);

    // The new file. Nothing can be changed after it.
    std::string Finish();

  private:
    void Replace(std::size_t begin, std::size_t end, std::string_view text);
    void AddTheNew();

    std::string_view m_bytes;
    const MacroXml& m_xml;
    std::string m_lineEnd;
    std::string m_indent = "\t";
    std::set<std::string, std::less<>> m_names;
    std::string m_added;
    std::string m_out;
    std::size_t m_taken = 0;  // bytes of the old file that are in the new one
};

}  // namespace spellwick
