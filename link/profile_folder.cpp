#include "link/profile_folder.h"

#include <functional>

namespace spellwick {

namespace fs = std::filesystem;

namespace {

constexpr int kMostEntries = 20000;

// The names in the game are UTF-8 on every system.
fs::path PathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string TextOf(const fs::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

// A name that leads elsewhere, or nowhere.
bool IsFileName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\\:\0", 4)) == std::string::npos;
}

class Walk {
  public:
    void Each(const fs::path& folder, const std::function<void(const fs::path&)>& visit) {
        std::error_code trouble;
        fs::directory_iterator entry(folder, trouble);
        const fs::directory_iterator end;
        while (!trouble && entry != end && ++m_entries < kMostEntries) {
            visit(entry->path());
            entry.increment(trouble);
        }
    }

  private:
    int m_entries = 0;
};

// Of the folder and the files in it: writing a file anew leaves the folder's own time as it was.
fs::file_time_type NewestTime(const fs::path& folder, Walk& walk) {
    std::error_code trouble;
    fs::file_time_type newest = fs::last_write_time(folder, trouble);
    walk.Each(folder, [&](const fs::path& file) {
        const fs::file_time_type time = fs::last_write_time(file, trouble);
        if (!trouble && time > newest) {
            newest = time;
        }
    });
    return newest;
}

}  // namespace

std::optional<ProfileFolder> NewestProfile(const std::vector<fs::path>& programFolders,
                                           const std::string& name, const std::string& shard) {
    std::optional<ProfileFolder> best;
    if (!IsFileName(name)) {
        return best;
    }
    fs::file_time_type newest{};
    Walk walk;
    for (const fs::path& program : programFolders) {
        walk.Each(program / "Data" / "Profiles", [&](const fs::path& account) {
            walk.Each(account, [&](const fs::path& server) {
                std::error_code trouble;
                const fs::path folder = server / PathOf(name);
                std::string ours = TextOf(server.filename());
                if ((!shard.empty() && ours != shard) || !fs::is_directory(folder, trouble)) {
                    return;
                }
                const fs::file_time_type time = NewestTime(folder, walk);
                if (!best || time > newest) {
                    newest = time;
                    best = {folder, std::move(ours)};
                }
            });
        });
    }
    return best;
}

}  // namespace spellwick
