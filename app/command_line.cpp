#include "app/command_line.h"

#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

namespace {

constexpr std::string_view kHelp =
    "Usage: spellwick [--data DIR]\n"
    "\n"
    "  --data DIR   keep settings and characters in this folder\n"
    "  --version    say which version this is\n"
    "  --help       say this\n";

constexpr std::string_view kData = "--data";

std::string UnknownText(std::string_view argument) {
    return "There is no option \"" + std::string(argument) + "\"; --help lists them.";
}

}  // namespace

CommandLine TakeOptions(std::vector<char*>& arguments) {
    CommandLine line;
    std::vector<char*> left;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (i == 0 || !argument.starts_with("--")) {
            left.push_back(arguments[i]);
        } else if (argument == "--help") {
            line.answer = kHelp;
        } else if (argument == "--version") {
            line.answer = std::string("Spellwick ") + kVersion + "\n";
        } else if (argument == kData || argument.starts_with(std::string(kData) + "=")) {
            std::string_view folder = argument.substr(kData.size());
            if (!folder.empty()) {
                folder.remove_prefix(1);
            } else if (i + 1 < arguments.size()) {
                folder = arguments[++i];
            }
            line.options.data = folder;
            if (folder.empty()) {
                line.trouble = "--data needs a folder.";
            }
        } else if (line.trouble.empty()) {
            line.trouble = UnknownText(argument);
        }
    }
    arguments = std::move(left);
    return line;
}

std::string UnknownArgument(int count, char** arguments) {
    return count > 1 ? UnknownText(arguments[1]) : std::string();
}

}  // namespace spellwick
