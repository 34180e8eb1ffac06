// The commands that the practice assist tool takes on its standard input, one per line.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "practice/tool_faults.h"
#include "practice/tool_lines.h"

namespace spellwick::practice {

struct ToolCommand {
    enum class Kind {
        kGain,
        kLose,
        kMana,
        kSkill,
        kCast,
        kFizzle,
        kSend,
        kFault,
        kMend,
        kClose,
        kOpen,
        kLogout,
        kIdle,
        kState,
        kWait,
        kQuit
    };
    Kind kind;
    // For kGain and kLose the index in kStockItems, for kSkill the number of the skill, for kIdle
    // 0 or 1.
    int which = 0;
    // An amount, points of mana, tenths of a skill.
    int amount = 0;
    // For kCast: the name of the spell.
    std::string name = {};
    // For kSend.
    ToolMessage message = {};
    Fault fault = Fault::kAnswersTwoThenOne;

    bool operator==(const ToolCommand&) const = default;
};

// The part of --help that lists the commands.
extern const char* const kToolCommandHelp;

// Nothing for a line that is not a command.
std::optional<ToolCommand> ParseToolCommand(std::string_view line);

}  // namespace spellwick::practice
