#include "companion/version_copy.h"

#include <fstream>

#include "text/log.h"

namespace spellwick {

namespace {

constexpr const char* kVersionFile = "version";

std::string LastVersion(const std::filesystem::path& file) {
    std::ifstream input(file, std::ios::binary);
    std::string version;
    std::getline(input, version);
    return version;
}

}  // namespace

void CopyForNewVersion(SettingsStore& store, const std::filesystem::path& folder,
                       const std::string& version, std::chrono::system_clock::time_point now) {
    const std::filesystem::path file = folder / kVersionFile;
    if (LastVersion(file) == version) {
        return;
    }
    if (!store.Sections().empty()) {
        if (const StoreResult copied = store.KeepCopy(now); !copied.ok) {
            LogLine("no copy of the settings was made for this version: " + copied.trouble);
            return;
        }
    }
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    std::ofstream output(file, std::ios::binary | std::ios::trunc);
    output << version << '\n';
    output.close();
    if (!output) {
        LogLine("the version could not be noted; the settings are copied again at the next start");
    }
}

}  // namespace spellwick
