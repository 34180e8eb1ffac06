// A decimal comma in the C library's numbers; each system has its own way to such a locale.
#pragma once

#include <filesystem>

namespace spellwick {

// In force until it is undone; false if the system has none. `folder` is empty and outlives it.
bool SetCommaForC(const std::filesystem::path& folder);
void TakeCommaBack();

}  // namespace spellwick
