#include "app/command_line.h"

#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

namespace {

constexpr std::string_view kHelp =
    "Usage: spellwick [--data DIR] [--log FILE|-] [--debug]\n"
    "\n"
    "  --data DIR   keep settings and characters in this folder\n"
    "  --log FILE   write what is found, linked, typed, refused and dropped to this file, or to\n"
    "               standard output for \"-\"; keys by their names, never the spoken texts\n"
    "  --debug      write the details too, to standard output unless --log names a file\n"
    "  --version    say which version this is\n"
    "  --help       say this\n";

constexpr std::string_view kData = "--data";
constexpr std::string_view kLog = "--log";

std::string UnknownText(std::string_view argument) {
    return "There is no option \"" + std::string(argument) + "\"; --help lists them.";
}

// The value of an option, as "--option VALUE" or "--option=VALUE", from the argument at `at`, which
// goes on to the value. Nothing if the argument is another; empty if there is no value.
std::optional<std::string> ValueOf(std::string_view option, const std::vector<char*>& arguments,
                                   std::size_t& at) {
    std::string_view argument = arguments[at];
    if (argument == option) {
        return at + 1 < arguments.size() ? arguments[++at] : std::string();
    }
    if (argument.starts_with(option) && argument[option.size()] == '=') {
        return std::string(argument.substr(option.size() + 1));
    }
    return std::nullopt;
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
        } else if (argument == "--debug") {
            line.log.details = true;
        } else if (const auto folder = ValueOf(kData, arguments, i)) {
            line.options.data = *folder;
            if (folder->empty()) {
                line.trouble = "--data needs a folder.";
            }
        } else if (const auto file = ValueOf(kLog, arguments, i)) {
            line.log.file = *file;
            if (file->empty()) {
                line.trouble = "--log needs a file, or - for standard output.";
            }
        } else if (line.trouble.empty()) {
            line.trouble = UnknownText(argument);
        }
    }
    if (line.log.details && !line.log.file) {
        line.log.file = "-";
    }
    arguments = std::move(left);
    return line;
}

std::string UnknownArgument(int count, char** arguments) {
    return count > 1 ? UnknownText(arguments[1]) : std::string();
}

}  // namespace spellwick
