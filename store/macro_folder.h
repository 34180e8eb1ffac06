// The folder of the client's macro files, found through its installation.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/installation.h"

namespace spellwick {

// The folder "Desktop" beside the client program at this path; the path unchanged if it does not
// name the client.
std::string MacroFolderOf(std::string_view startPath);

// Looks up the installation: the first of its two keys counts. Empty if nothing is found. Does not
// check that the folder exists.
std::filesystem::path FindMacroFolder(Installation& installation);

}  // namespace spellwick
