#include "practice/tool_faults.h"

#include <algorithm>
#include <array>

namespace spellwick::practice {
namespace {

constexpr std::array<FaultRow, 25> kFaults{{
    {Fault::kAnswersTwoThenOne, "answers-2-1", "Answer 2, then 1, to a registration", false, 1},
    {Fault::kAnswersZero, "answers-0", "Answer 0 to each registration", true, 1},
    {Fault::kAnswersTwo, "answers-2", "Answer 2 to each registration", true, 1},
    {Fault::kMute, "mute", "Never answer", true, 1},
    {Fault::kGoneLong, "gone-3000", "Close for 3 seconds", false, 2},
    {Fault::kGoneShort, "gone-500", "Close for half a second", false, 2},
    {Fault::kSecondTool, "second-tool", "A second tool beside this one", true, 2},
    {Fault::kLowerCaseTitle, "lower-case-title", "A title in lower case", true, 2},
    {Fault::kSilentCount, "silent-count", "Silence after a count", true, 3},
    {Fault::kEarlyCount, "early-count", "Count before answering", true, 3},
    {Fault::kUnknownItems, "unknown-items", "Report items with unknown numbers", false, 3},
    {Fault::kSameTwice, "same-twice", "Report the same count twice", false, 3},
    {Fault::kMuchTithing, "tithing-40000", "Report 40000 tithing points", false, 3},
    {Fault::kBurst, "burst", "Report 200 items at once", false, 3},
    {Fault::kStream, "stream", "Report all the time for 3 seconds", false, 3},
    {Fault::kFizzleAfterReport, "fizzle-reported", "Report the next cast, which fizzles", false, 4},
    {Fault::kCast0, "cast-0", "Report a cast with number 0", false, 4},
    {Fault::kCast118, "cast-118", "Report a cast with number 118", false, 4},
    {Fault::kCast211, "cast-211", "Report a cast with number 211", false, 4},
    {Fault::kCast250, "cast-250", "Report a cast with number 250", false, 4},
    {Fault::kBigStock, "big-stock", "Report 40000 Bloodmoss", false, 5},
    {Fault::kBigMagery, "big-magery", "Report Magery of 40000", false, 5},
    {Fault::kBigIntelligence, "big-intelligence", "Report intelligence of 40000", false, 5},
    {Fault::kBigMana, "big-mana", "Report mana of 40000", false, 5},
    {Fault::kBigSkill, "big-skill", "Report a skill of 400000 tenths", false, 5},
}};

}  // namespace

std::span<const FaultRow> AllFaults() {
    return kFaults;
}

const FaultRow* FindFault(std::string_view name) {
    const auto* const found = std::ranges::find(kFaults, name, &FaultRow::name);
    return found == kFaults.end() ? nullptr : found;
}

}  // namespace spellwick::practice
