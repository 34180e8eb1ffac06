// The C library's own numbers with a comma; each system has its way to such a locale.
#pragma once

#include <filesystem>

namespace spellwick {

// In force until it is taken back; false if the system has none. `folder` is empty and outlives it.
bool SetCommaForC(const std::filesystem::path& folder);
void TakeCommaBack();

}  // namespace spellwick
