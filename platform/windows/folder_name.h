// A short name for a folder, for things of the system that are named after it.
#pragma once

#include <string>

namespace spellwick {

// Sixteen digits, the same for every spelling of its letters.
std::wstring FolderName(std::wstring folder);

}  // namespace spellwick
