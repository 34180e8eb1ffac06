#include "practice/tool_commands.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace spellwick::practice {
namespace {

using ToolKind = ToolCommand::Kind;

TEST(ParseToolCommand, EachWord_GivesItsCommand) {
    struct Row {
        const char* line = "";
        ToolCommand command;
    };
    for (const Row& row : {
             Row{"gain 1 5", {.kind = ToolKind::kGain, .which = 0, .amount = 5}},
             Row{"lose 104 7", {.kind = ToolKind::kLose, .which = 12, .amount = 7}},
             Row{"gain 200 1000", {.kind = ToolKind::kGain, .which = 13, .amount = 1000}},
             Row{"mana 40", {.kind = ToolKind::kMana, .amount = 40}},
             Row{"skill 25 1013", {.kind = ToolKind::kSkill, .which = 25, .amount = 1013}},
             Row{"skill 0 -5", {.kind = ToolKind::kSkill, .which = 0, .amount = -5}},
             Row{"cast Greater Heal", {.kind = ToolKind::kCast, .name = "Greater Heal"}},
             Row{"cast Wall of Stone", {.kind = ToolKind::kCast, .name = "Wall of Stone"}},
             Row{"fizzle", {.kind = ToolKind::kFizzle}},
             Row{"send 1325 9 -1", {.kind = ToolKind::kSend, .message = {1325, 9, -1}}},
             Row{"fault burst", {.kind = ToolKind::kFault, .fault = Fault::kBurst}},
             Row{"mend", {.kind = ToolKind::kMend}},
             Row{"close", {.kind = ToolKind::kClose}},
             Row{"open", {.kind = ToolKind::kOpen}},
             Row{"logout", {.kind = ToolKind::kLogout}},
             Row{"idle on", {.kind = ToolKind::kIdle, .which = 1}},
             Row{"idle off", {.kind = ToolKind::kIdle, .which = 0}},
             Row{"state", {.kind = ToolKind::kState}},
             Row{"wait", {.kind = ToolKind::kWait}},
             Row{"quit", {.kind = ToolKind::kQuit}},
         }) {
        EXPECT_EQ(ParseToolCommand(row.line), row.command) << row.line;
    }
}

TEST(ParseToolCommand, AnythingElse_GivesNothing) {
    for (const char* line : {"",
                             " ",
                             "gain",
                             "gain 1",
                             "gain 9 1",
                             "gain 99 1",
                             "gain 1 x",
                             "gain 1 -1",
                             "gain 1 2 3",
                             "lose 0 1",
                             "mana",
                             "mana x",
                             "mana 4 4",
                             "skill 58 1",
                             "skill -1 1",
                             "skill 1",
                             "cast",
                             "cast heal",
                             "cast ",
                             "send 1 2",
                             "send 1 2 3 4",
                             "result 1",
                             "fault",
                             "fault none",
                             "fault burst 2",
                             "idle",
                             "idle maybe",
                             "Quit",
                             "quit now",
                             " wait"}) {
        EXPECT_EQ(ParseToolCommand(line), std::nullopt) << '"' << line << '"';
    }
}

TEST(AllFaults, EachFault_HasANameOfItsOwnAndIsFoundByIt) {
    std::set<Fault> faults;
    for (const FaultRow& row : AllFaults()) {
        faults.insert(row.fault);
        EXPECT_EQ(FindFault(row.name), &row) << row.name;
        EXPECT_FALSE(row.caption.empty()) << row.name;
    }
    EXPECT_EQ(faults.size(), AllFaults().size());
    EXPECT_EQ(static_cast<int>(*faults.rbegin()) + 1, static_cast<int>(faults.size()));
    EXPECT_EQ(FindFault("no such"), nullptr);
}

}  // namespace
}  // namespace spellwick::practice
