// The player's own tables in the settings' folder, which are read instead of the delivered ones.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace spellwick {

// Writes a whole file, whose folder is made if it is not there; false if it cannot be written. What
// was there before stays whole until the new one is.
[[nodiscard]] bool ReplaceFile(const std::filesystem::path& file, const std::string& text);

// Makes the player's own table of the delivered one if there is none yet. Why not, as a sentence;
// empty if it is there. `own` is nothing where there is no folder for the settings.
[[nodiscard]] std::string MakeOwnTable(const std::optional<std::filesystem::path>& own,
                                       std::string_view delivered);

// As sentences.
[[nodiscard]] std::string NotWritten(const std::filesystem::path& file);
[[nodiscard]] std::string NotOpened(const std::filesystem::path& file);

// Where the table of spells is read from: the player's own, else the one beside the program.
class SpellTableFile {
  public:
    // `settings` is nothing if there is no such folder.
    SpellTableFile(const std::filesystem::path& program,
                   const std::optional<std::filesystem::path>& settings);

    // The player's own, whether it is there or not; nothing without a folder for the settings.
    [[nodiscard]] const std::optional<std::filesystem::path>& Own() const { return m_own; }
    [[nodiscard]] bool HasOwn() const;
    // What the start reads.
    [[nodiscard]] std::filesystem::path Path() const { return HasOwn() ? *m_own : m_delivered; }

    // Copies the delivered table if there is no own one. Why not, as a sentence.
    [[nodiscard]] std::string MakeOwn() const;

  private:
    std::filesystem::path m_delivered;
    std::optional<std::filesystem::path> m_own;
};

}  // namespace spellwick
