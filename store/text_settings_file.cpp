#include "store/text_settings_file.h"

#include "store/file_bytes.h"
#include "store/journal_lines.h"
#include "text/runtime_failure.h"

namespace spellwick {

namespace {

constexpr std::string_view kFormStart = "spellwick settings ";
constexpr std::string_view kHead = "spellwick settings 1\n";
constexpr std::string_view kEnd = "end";
constexpr std::uintmax_t kMostBytes = std::uintmax_t{64} << 20U;

std::string Named(const std::filesystem::path& file) {
    return "The file \"" + file.string() + "\" ";
}

}  // namespace

StoreResult TextSettingsFile::Write(const std::filesystem::path& file,
                                    const AllSettings& settings) const {
    std::string bytes(kHead);
    std::size_t count = 0;
    for (const auto& [section, values] : settings) {
        for (const auto& [key, value] : values) {
            bytes += JournalLine({.time = 0, .section = section, .key = key, .value = value});
            ++count;
        }
    }
    bytes += JournalLine(
        {.time = 0, .section = {}, .key = std::string(kEnd), .value = std::to_string(count)});
    if (!ReplaceFileBytes(file, bytes)) {
        return {false, Named(file) + "cannot be written. Nothing was saved to it."};
    }
    return {};
}

ReadSettings TextSettingsFile::Read(const std::filesystem::path& file) const {
    const auto refuse = [&file](const char* why) {
        return ReadSettings{{}, Named(file) + why + " Nothing was changed."};
    };
    std::string bytes;
    try {
        bytes = ReadFileBytes(file, kMostBytes);
    } catch (const RuntimeFailure&) {
        return refuse("cannot be read.");
    }
    if (!bytes.starts_with(kHead)) {
        return bytes.starts_with(kFormStart) ? refuse("was made by a newer version of Spellwick.")
                                             : refuse("is not a file of Spellwick's settings.");
    }
    std::vector<JournalEntry> entries =
        ReadJournal(std::string(kJournalHead) + bytes.substr(kHead.size()));
    if (entries.empty() || entries.back().key != kEnd || !entries.back().section.empty() ||
        entries.back().value != std::to_string(entries.size() - 1)) {
        return refuse("is damaged.");
    }
    entries.pop_back();
    ReadSettings read;
    for (JournalEntry& entry : entries) {
        read.sections[entry.section][entry.key] = std::move(entry.value);
    }
    return read.sections.empty() ? refuse("holds no settings.") : read;
}

}  // namespace spellwick
