// The game's installation in a Wine prefix: its registry is a text file, its drives are links.
#pragma once

#include <cstddef>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/installation.h"

namespace spellwick {

// The prefix of this user: $WINEPREFIX if that is a whole path, else ~/.wine; empty without a home.
std::filesystem::path WinePrefix();

class WineInstallation : public Installation {
  public:
    explicit WineInstallation(std::filesystem::path prefix) : m_prefix(std::move(prefix)) {}

    // Each call reads the registry as it is now.
    bool HasKey(const std::string& key) override;
    std::string ReadText(const std::string& key, const std::string& value) override;

    // Names are matched as Wine does it: exactly, else without regard to the case of Latin letters.
    std::filesystem::path LocalPath(const std::string& drivePath) override;

  private:
    std::filesystem::path m_prefix;
};

// The text values of one key of such a registry file, by their names in small letters; nothing when
// the key is not there. Lines that make no sense are passed over.
std::optional<std::map<std::string, std::string>> ReadWineKey(std::istream& registry,
                                                              std::string_view key);

}  // namespace spellwick
