// What spellwick-bridge is told on its command line.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace spellwick::bridge {

struct BridgeOptions {
    bool once = false;
    bool verbose = false;
    bool endsWithInput = false;
    // Look into these Wine prefixes only; empty for all.
    std::vector<std::filesystem::path> prefixes;
};

struct BridgeCommandLine {
    BridgeOptions options;
    std::string answer;   // to be printed, and nothing else to be done
    std::string trouble;  // what cannot be understood
};

BridgeCommandLine ReadCommandLine(const std::vector<std::string>& arguments);

}  // namespace spellwick::bridge
