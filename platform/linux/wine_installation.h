// The game's installation in a Wine prefix: the registry is a text file, the drives are links.
#pragma once

#include <cstddef>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/installation.h"

namespace spellwick {

// The user's prefix: $WINEPREFIX if it is an absolute path, else ~/.wine; empty without a home.
std::filesystem::path WinePrefix();

class WineInstallation : public Installation {
  public:
    explicit WineInstallation(std::filesystem::path prefix) : m_prefix(std::move(prefix)) {}

    // Each call reads the current registry.
    bool HasKey(const std::string& key) override;
    std::string ReadText(const std::string& key, const std::string& value) override;

    // Names are matched as in Wine: exactly, else ignoring the case of Latin letters.
    std::filesystem::path LocalPath(const std::string& drivePath) override;

  private:
    std::filesystem::path m_prefix;
};

// The text values of one key of such a registry file, by their names in lower case; nothing if the
// key is missing. Malformed lines are skipped.
std::optional<std::map<std::string, std::string>> ReadWineKey(std::istream& registry,
                                                              std::string_view key);

}  // namespace spellwick
