#include "bridge/command_line.h"

namespace spellwick::bridge {

namespace {

constexpr const char* kHelp =
    "Usage: spellwick-bridge [OPTION]...\n"
    "Links Spellwick with the assist tools that run in Wine.\n"
    "\n"
    "  --once             look once, offer nothing, and end\n"
    "  --verbose          say what is found\n"
    "  --prefix DIR       look into this Wine prefix only; may be given more than once\n"
    "  --end-with-input   end when the standard input ends\n"
    "  --version          say which version this is\n"
    "  --help             list the options\n";

}  // namespace

BridgeCommandLine ReadCommandLine(const std::vector<std::string>& arguments) {
    BridgeCommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--once") {
            line.options.once = true;
        } else if (argument == "--verbose") {
            line.options.verbose = true;
        } else if (argument == "--end-with-input") {
            line.options.endsWithInput = true;
        } else if (argument == "--prefix" && i + 1 < arguments.size()) {
            line.options.prefixes.emplace_back(arguments[++i]);
        } else if (argument == "--prefix") {
            line.trouble = "--prefix needs a folder";
        } else if (argument == "--version") {
            line.answer = "spellwick-bridge " SPELLWICK_VERSION "\n";
        } else if (argument == "--help") {
            line.answer = kHelp;
        } else {
            line.trouble = "unknown option " + argument;
        }
        if (!line.answer.empty() || !line.trouble.empty()) {
            break;
        }
    }
    return line;
}

}  // namespace spellwick::bridge
