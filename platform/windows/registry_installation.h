// The game's installation, as recorded in the machine's part of the registry.
#pragma once

#include "platform/installation.h"

namespace spellwick {

class RegistryInstallation : public Installation {
  public:
    bool HasKey(const std::string& key) override;
    std::string ReadText(const std::string& key, const std::string& value) override;
    std::filesystem::path LocalPath(const std::string& drivePath) override;
};

}  // namespace spellwick
