#include "store/journal_lines.h"

#include <array>
#include <charconv>
#include <optional>

#include "text/fnv.h"

namespace spellwick {

namespace {

constexpr char kBetween = '\t';
constexpr std::size_t kSumDigits = 16;

// Control characters that would end a field or a line.
struct Escape {
    char plain;
    char letter;
};
constexpr std::array<Escape, 5> kEscapes{
    {{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}, {'\0', '0'}}};

void AppendField(std::string& line, std::string_view text) {
    for (const char character : text) {
        char letter = '\0';
        for (const Escape& escape : kEscapes) {
            letter = escape.plain == character ? escape.letter : letter;
        }
        if (letter == '\0') {
            line += character;
        } else {
            line += '\\';
            line += letter;
        }
    }
}

std::optional<std::string> FieldText(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\') {
            text += field[i];
            continue;
        }
        if (++i == field.size()) {
            return std::nullopt;
        }
        const Escape* found = nullptr;
        for (const Escape& escape : kEscapes) {
            found = escape.letter == field[i] ? &escape : found;
        }
        if (found == nullptr) {
            return std::nullopt;
        }
        text += found->plain;
    }
    return text;
}

std::string Sum(std::string_view bytes) {
    return FnvDigits(bytes);
}

// Cuts the text up to the next mark off the front; the rest if there is no more mark.
std::string_view TakeUntil(std::string_view& rest, char mark) {
    const std::size_t end = rest.find(mark);
    const std::string_view taken = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + 1);
    return taken;
}

// A line without its sum and its line feed.
std::string Body(const JournalEntry& entry) {
    std::string line = std::to_string(entry.time);
    for (const std::string* field : {&entry.section, &entry.key, &entry.value}) {
        line += kBetween;
        AppendField(line, *field);
    }
    return line;
}

// A line without its line feed.
std::optional<JournalEntry> ReadLine(std::string_view line) {
    const std::string_view sum = TakeUntil(line, kBetween);
    if (sum.size() != kSumDigits || sum != Sum(line)) {
        return std::nullopt;
    }
    const std::string_view body = line;
    JournalEntry entry;
    const std::string_view time = TakeUntil(line, kBetween);
    const auto [end, error] = std::from_chars(time.data(), time.data() + time.size(), entry.time);
    if (error != std::errc{} || end != time.data() + time.size()) {
        return std::nullopt;
    }
    for (std::string* field : {&entry.section, &entry.key, &entry.value}) {
        const auto text = FieldText(TakeUntil(line, kBetween));
        if (!text) {
            return std::nullopt;
        }
        *field = *text;
    }
    // Only what is written here is read: a line of another spelling is not ours.
    return Body(entry) == body ? std::optional(std::move(entry)) : std::nullopt;
}

}  // namespace

std::string JournalLine(const JournalEntry& entry) {
    const std::string line = Body(entry);
    return Sum(line) + kBetween + line + '\n';
}

std::vector<JournalEntry> ReadJournal(std::string_view bytes) {
    std::vector<JournalEntry> entries;
    if (!bytes.starts_with(kJournalHead)) {
        return entries;
    }
    bytes.remove_prefix(kJournalHead.size());
    while (bytes.find('\n') != std::string_view::npos) {
        std::optional<JournalEntry> entry = ReadLine(TakeUntil(bytes, '\n'));
        if (!entry) {
            break;
        }
        entries.push_back(std::move(*entry));
    }
    return entries;
}

}  // namespace spellwick
