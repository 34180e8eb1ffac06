// What the program is told when it is started.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/system.h"

namespace spellwick {

struct LogOptions {
    std::optional<std::filesystem::path> file;  // "-" for standard output; nothing for no log
    bool details = false;
};

struct CommandLine {
    Options options;
    LogOptions log;
    // A text for standard output in place of the program; empty for none.
    std::string answer;
    // Why this cannot be done, as one sentence; empty if it can.
    std::string trouble;
};

// Takes our own options out of the arguments, which begin with the program's name. Short ones are
// left: the toolkit may know them.
CommandLine TakeOptions(std::vector<char*>& arguments);

// A sentence about the first argument that nobody has taken; empty if there is none.
std::string UnknownArgument(int count, char** arguments);

}  // namespace spellwick
