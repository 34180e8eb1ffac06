#include "platform/keymap.h"

#include <algorithm>

namespace spellwick {

Symbol SymbolAt(const Key& key, ModifierMask modifiers) {
    const auto at = [&key](ModifierMask mask) {
        return std::ranges::find(key.levels, mask, &KeyLevel::modifiers);
    };
    auto level = at(modifiers & key.relevant);
    if (level == key.levels.end()) {
        level = at(0);
    }
    return level == key.levels.end() ? Symbol::kNothing : level->symbol;
}

}  // namespace spellwick
