#include "store/macro_folder.h"

#include <array>

namespace spellwick {

namespace {

constexpr std::string_view kClientProgram = "uo.exe";
constexpr std::string_view kFolder = "Desktop";
constexpr const char* kStartPathValue = "StartExePath";

constexpr std::array<const char*, 2> kInstallationKeys{
    "Software\\Origin Worlds Online\\Ultima Online Third Dawn\\1.0",
    "Software\\Origin Worlds Online\\Ultima Online\\1.0",
};

}  // namespace

std::string MacroFolderOf(std::string_view startPath) {
    // ODDITY(client-program-capitals): if the client's program is written UO.EXE, the file dialogs
    // do not start in the folder of its macros; kept because the name is compared with the
    // installer's spelling.
    const std::size_t place = startPath.find(kClientProgram);
    if (place == std::string_view::npos) {
        return std::string(startPath);
    }
    return std::string(startPath.substr(0, place)).append(kFolder);
}

std::filesystem::path FindMacroFolder(Installation& installation) {
    for (const char* key : kInstallationKeys) {
        if (installation.HasKey(key)) {
            return installation.LocalPath(
                MacroFolderOf(installation.ReadText(key, kStartPathValue)));
        }
    }
    return {};
}

}  // namespace spellwick
