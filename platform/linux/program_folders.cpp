#include "platform/linux/program_folders.h"

#include <algorithm>
#include <fstream>
#include <string>

#include "text/ascii_case.h"

namespace spellwick {

namespace fs = std::filesystem;

namespace {

constexpr int kMostMappings = 20000;

void Add(std::vector<fs::path>& folders, const fs::path& folder) {
    if (folder.is_absolute() && std::ranges::find(folders, folder) == folders.end()) {
        folders.push_back(folder);
    }
}

// The files that a process has mapped stand at the ends of lines, behind the first slash.
void AddWindowsPrograms(std::vector<fs::path>& folders, const fs::path& maps) {
    std::ifstream file(maps);
    std::string line;
    for (int count = 0; count < kMostMappings && std::getline(file, line); ++count) {
        const std::size_t slash = line.find('/');
        if (slash != std::string::npos && EndsInExe(line)) {
            Add(folders, fs::path(line.substr(slash)).parent_path());
        }
    }
}

}  // namespace

std::vector<fs::path> ProgramFoldersOf(pid_t process, const fs::path& proc) {
    std::vector<fs::path> folders;
    if (process <= 0) {
        return folders;
    }
    const fs::path ours = proc / std::to_string(process);
    std::error_code trouble;
    AddWindowsPrograms(folders, ours / "maps");
    Add(folders, fs::read_symlink(ours / "exe", trouble).parent_path());
    Add(folders, fs::read_symlink(ours / "cwd", trouble));
    return folders;
}

}  // namespace spellwick
