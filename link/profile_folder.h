// Where a client keeps what belongs to a character: Data/Profiles/ACCOUNT/SHARD/NAME below its own
// folder.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace spellwick {

struct ProfileFolder {
    std::filesystem::path path;
    std::string shard;

    bool operator==(const ProfileFolder&) const = default;
};

// The folder of this name that was written last, below any of these; only one of this shard, unless
// it is empty. Reads only names and times, and gives up after 20,000 entries. Throws nothing.
std::optional<ProfileFolder> NewestProfile(const std::vector<std::filesystem::path>& programFolders,
                                           const std::string& name, const std::string& shard = {});

}  // namespace spellwick
