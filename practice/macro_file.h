// The file macros.xml, in which some clients keep their macro keys.
#pragma once

#include <QIODevice>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "practice/macro_table.h"

namespace spellwick::practice {

// A key that casts a spell; the key is named as on its cap.
struct MacroKey {
    Modifiers modifiers;
    std::string key;
    std::string spell;

    bool operator==(const MacroKey&) const = default;
};

// The keys that cast a spell; of two macros on one chord the first counts. None for a file that is
// no such XML.
std::optional<std::vector<MacroKey>> ReadMacroFile(QIODevice& file);

}  // namespace spellwick::practice
