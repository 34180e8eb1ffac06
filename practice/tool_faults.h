// The faults that the practice assist tool can play: what real tools do at bad moments, and values
// that no program expects.
#pragma once

#include <span>
#include <string_view>

namespace spellwick::practice {

enum class Fault {
    kAnswersTwoThenOne,
    kAnswersZero,
    kAnswersTwo,
    kMute,
    kGoneLong,
    kGoneShort,
    kSecondTool,
    kLowerCaseTitle,
    kSilentCount,
    kEarlyCount,
    kUnknownItems,
    kSameTwice,
    kMuchTithing,
    kBurst,
    kStream,
    kFizzleAfterReport,
    kCast0,
    kCast118,
    kCast211,
    kCast250,
    kBigStock,
    kBigMagery,
    kBigIntelligence,
    kBigMana,
    kBigSkill,
};

struct FaultRow {
    Fault fault;
    // Its name on the standard input.
    std::string_view name;
    // Its text in the menu.
    std::string_view caption;
    // Whether it lasts until the tool is told to return to the script.
    bool lasts;
    // Groups are separated in the menu.
    int group;
};

std::span<const FaultRow> AllFaults();

// Null for an unknown name.
const FaultRow* FindFault(std::string_view name);

}  // namespace spellwick::practice
