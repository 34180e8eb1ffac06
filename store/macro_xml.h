// What stands in a macros.xml, as a reader of XML tells it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "text/number_types.h"

namespace spellwick {

// Names and values in the order of the file; values without escapes.
using XmlAttributes = std::vector<std::pair<std::string, std::string>>;

// A macro of the file. Places are in bytes from the beginning of the file.
struct XmlMacro {
    std::size_t tagBegin = 0;  // the '<' of its start tag
    std::size_t tagEnd = 0;    // behind the '>' of it
    XmlAttributes attributes;
    std::vector<XmlAttributes> actions;
};

struct MacroXml {
    std::vector<XmlMacro> macros;
    std::size_t rootTagEnd = 0;   // behind the '>' of the start tag that holds the macros
    std::size_t endTagBegin = 0;  // the '<' of its end tag; rootTagEnd if it has none: <macros/>
};

// The value of an attribute; empty if there is none.
std::string_view ValueOf(const XmlAttributes& attributes, std::string_view name);

// A whole number that fits; 0 where there is none.
i32 NumberOf(const XmlAttributes& attributes, std::string_view name);

// A mark of the clients: "True", in any case, or 1.
bool IsOn(const XmlAttributes& attributes, std::string_view name);

}  // namespace spellwick
