// All settings in one text file, for systems whose store is not a file.
#pragma once

#include "platform/settings_file.h"

namespace spellwick {

// A first line with form and version, a line for each setting with a sum over it, as the recovery
// journal has them, and a last one with their number.
class TextSettingsFile final : public SettingsFile {
  public:
    std::string Extension() const override { return ".spellwick"; }
    StoreResult Write(const std::filesystem::path& file,
                      const AllSettings& settings) const override;
    ReadSettings Read(const std::filesystem::path& file) const override;
};

}  // namespace spellwick
