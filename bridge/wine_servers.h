// The Wine prefixes that run: each has one wineserver, and a program started in the same prefix by
// the same Wine meets the others there.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace spellwick::bridge {

struct WineServer {
    pid_t process = 0;
    std::string name;  // of its folder, without "server-": device and inode of the prefix, in hex

    bool operator==(const WineServer&) const = default;
};

// How to start a program in a prefix.
struct WinePrefix {
    std::filesystem::path folder;
    std::filesystem::path wine;
    bool is32Bit = false;
    std::vector<std::string> variables;  // NAME=VALUE, the whole environment
};

// Those of this user, in the order of their process numbers. `processes` is /proc.
std::vector<WineServer> FindWineServers(const std::filesystem::path& processes = "/proc");
bool IsRunning(const WineServer& server, const std::filesystem::path& processes = "/proc");

// None, with the reason in `trouble`, if prefix or Wine cannot be made out.
std::optional<WinePrefix> FindPrefix(const WineServer& server, std::string& trouble,
                                     const std::filesystem::path& processes = "/proc");

// Whether the folder is the one that the name of a server stands for.
bool IsPrefixOf(const std::filesystem::path& folder, std::string_view serverName);

}  // namespace spellwick::bridge
