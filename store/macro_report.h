// What a load or a save of macros has done, and how it is told.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "text/number_types.h"

namespace spellwick {

// Why a macro is left as it is.
enum class LeftReason {
    kUnknownSpell,  // the name is that of no spell
    kNoKey,
    kMouse,     // a mouse button or the wheel
    kOtherKey,  // one that is neither a single character nor F1 to F12
    kSecond,    // another macro of the same spell counts
    kMoreActions,
};

struct LeftMacro {
    LeftReason why;
    std::string name;  // of the spell; with the key in brackets where that is the reason

    bool operator==(const LeftMacro&) const = default;
};

struct MacroLoad {
    std::set<i32> taken;  // macro numbers
    std::vector<LeftMacro> left;
    bool isCutShort = false;  // at a spell beyond the tables
};

struct MacroSave {
    std::set<i32> replaced;  // macro numbers
    std::set<i32> added;
    std::set<i32> unchanged;
    std::vector<LeftMacro> left;
    std::vector<std::string> moved;   // spells whose mouse button or other key was replaced
    std::vector<std::string> shared;  // spells whose key is that of another macro too
};

// How many names of each reason are told before the rest is only counted.
inline constexpr std::size_t kFewNames = 4;
inline constexpr std::size_t kManyNames = 10;
inline constexpr std::size_t kLoggedNames = 100;

// The spells first, then a line for each reason. Lines end in a line feed, but for the last.
std::string LoadText(const MacroLoad& load, std::string_view file, std::size_t mostNames);
std::string SaveText(const MacroSave& save, std::string_view file, std::size_t mostNames);

// "91 spells and Meditation"
std::string CountedSpells(const std::set<i32>& macros);

}  // namespace spellwick
