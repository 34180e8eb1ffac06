// The folder of the client's macro files, found through its installation.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/installation.h"

namespace spellwick {

// The folder "Desktop" beside the client program of this path; the path as it is when it does not
// name the client.
std::string MacroFolderOf(std::string_view startPath);

// Looks the installation up: the first of its two keys counts. Empty when nothing is found. Whether
// the folder is there is not asked.
std::filesystem::path FindMacroFolder(Installation& installation);

}  // namespace spellwick
