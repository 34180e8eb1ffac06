// How the clients with a macros.xml write down keys and spells: keys as numbers, spells and skills
// as pairs of numbers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "text/number_types.h"

namespace spellwick {

// What a macro does: code 15 casts a spell, 13 uses a skill; the subcode says which.
struct ClientAction {
    i32 code = 0;
    i32 subcode = 0;

    bool operator==(const ClientAction&) const = default;
};

// Number 1 to 96 of the macro that this action is, -1 for Meditation; nothing for other actions.
std::optional<i32> MacroOfAction(const ClientAction& action);

// The action of macro number -1 to 96; nothing where there is no spell.
std::optional<ClientAction> ActionOfMacro(i32 number);

// The key as the macro tables hold it, or nothing if they cannot. Letters are small.
std::optional<std::string> MacroKeyOfCode(i32 code);

// The number of a key of the macro tables; nothing for what is no key. Capitals count as small.
std::optional<i32> CodeOfMacroKey(std::string_view key);

// "Tab", "Keypad 5", "{"; a number where there is no name.
std::string NameOfCode(i32 code);

}  // namespace spellwick
