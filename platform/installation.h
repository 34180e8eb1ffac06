// Where the game is installed, as its installer wrote it into the registry of the machine. On
// Linux that is the registry of the Wine prefix.
#pragma once

#include <filesystem>
#include <string>

namespace spellwick {

class Installation {
  public:
    virtual ~Installation() = default;

    // Whether the machine's registry has the key, such as "Software\Maker\Game", in its plain or in
    // its 32-bit place. False when there is no registry.
    [[nodiscard]] virtual bool HasKey(const std::string& key) = 0;

    // The text of a value of the key, UTF-8; empty when it is not there or is no text.
    [[nodiscard]] virtual std::string ReadText(const std::string& key,
                                               const std::string& value) = 0;

    // This system's path of a path with a drive letter; empty when the drive is not there. The path
    // itself need not be there.
    [[nodiscard]] virtual std::filesystem::path LocalPath(const std::string& drivePath) = 0;
};

}  // namespace spellwick
