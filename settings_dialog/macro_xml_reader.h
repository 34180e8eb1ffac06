// Reads a macros.xml. What no client writes is refused, so that bytes made to do harm cost neither
// time nor memory.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "store/macro_xml.h"

namespace spellwick {

inline constexpr std::uintmax_t kMostXmlBytes = 4U << 20U;

// What stands in the file, or a sentence about it that says why not.
std::variant<MacroXml, std::string> ReadMacroXml(const std::string& bytes);

}  // namespace spellwick
