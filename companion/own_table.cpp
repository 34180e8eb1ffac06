#include "companion/own_table.h"

#include <fstream>

#include "link/player_table.h"
#include "model/shared_state.h"

namespace spellwick {

namespace fs = std::filesystem;

bool ReplaceFile(const fs::path& file, const std::string& text) {
    std::error_code trouble;
    fs::create_directories(file.parent_path(), trouble);
    fs::path beside = file;
    beside += ".new";
    std::ofstream output(beside, std::ios::binary | std::ios::trunc);
    output << text;
    output.close();
    if (output) {
        fs::rename(beside, file, trouble);
    }
    if (!output || trouble) {
        std::error_code ignored;
        fs::remove(beside, ignored);
        return false;
    }
    return true;
}

std::string NotWritten(const fs::path& file) {
    return "The file \"" + file.string() + "\" cannot be written.";
}

std::string NotOpened(const fs::path& file) {
    return "No program could be started for the file \"" + file.string() + "\".";
}

std::string MakeOwnTable(const std::optional<fs::path>& own, std::string_view delivered) {
    if (!own) {
        return "There is no folder for the settings.";
    }
    if (IsThere(*own) || ReplaceFile(*own, std::string(delivered))) {
        return {};
    }
    return NotWritten(*own);
}

SpellTableFile::SpellTableFile(const fs::path& program, const std::optional<fs::path>& settings)
    : m_delivered(program / kSpellDataFile),
      m_own(settings ? std::optional(*settings / kSpellDataFile) : std::nullopt) {}

bool SpellTableFile::HasOwn() const {
    return m_own && IsThere(*m_own);
}

std::string SpellTableFile::MakeOwn() const {
    if (HasOwn()) {
        return {};
    }
    std::string delivered;
    try {
        delivered = ReadTableFile(m_delivered);
    } catch (const RuntimeFailure& failure) {
        return m_delivered.string() + ": " + failure.what() + ".";
    }
    return MakeOwnTable(m_own, delivered);
}

}  // namespace spellwick
