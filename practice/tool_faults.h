// The faults that the practice assist tool can play: what real tools do at bad times, and values
// that no program expects.
#pragma once

#include <span>
#include <string_view>

namespace spellwick::practice {

enum class Fault {
    kAnswersTwoThenOne,
    kAnswersZero,
    kAnswersTwo,
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
    // For the standard input.
    std::string_view name;
    // For the menu.
    std::string_view caption;
    // It stays until the tool is told to go back to the script.
    bool lasts;
    // Groups are apart in the menu.
    int group;
};

std::span<const FaultRow> AllFaults();

// Null for an unknown name.
const FaultRow* FindFault(std::string_view name);

}  // namespace spellwick::practice
