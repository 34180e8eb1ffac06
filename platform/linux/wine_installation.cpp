#include "platform/linux/wine_installation.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <vector>

#include "text/ascii_case.h"
#include "text/utf16.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

namespace fs = std::filesystem;

// Names in the registry and on the drives are not case-sensitive.
std::string Small(std::string_view text) {
    std::string small(text);
    std::ranges::transform(small, small.begin(), LowerAscii);
    return small;
}

int DigitOf(char sign, int base) {
    int digit = base;
    if (sign >= '0' && sign <= '9') {
        digit = sign - '0';
    } else if (sign >= 'a' && sign <= 'f') {
        digit = sign - 'a' + 10;
    } else if (sign >= 'A' && sign <= 'F') {
        digit = sign - 'A' + 10;
    }
    return digit < base ? digit : -1;
}

// Takes a number of at most `most` digits off the text.
std::optional<char32_t> TakeNumber(std::string_view& text, int base, std::size_t most) {
    char32_t number = 0;
    std::size_t digits = 0;
    while (digits < most && digits < text.size() && DigitOf(text[digits], base) >= 0) {
        number = number * static_cast<char32_t>(base) +
                 static_cast<char32_t>(DigitOf(text[digits], base));
        ++digits;
    }
    text.remove_prefix(digits);
    return digits > 0 ? std::optional(number) : std::nullopt;
}

// The UTF-16 unit after a backslash.
char32_t TakeEscape(std::string_view& text) {
    constexpr std::string_view kLetters = "abefnrtv";
    constexpr std::array<char32_t, 8> kMeanings{7, 8, 27, 12, 10, 13, 9, 11};
    if (text.starts_with('x')) {
        text.remove_prefix(1);
        return TakeNumber(text, 16, 4).value_or(U'x');
    }
    if (const auto number = TakeNumber(text, 8, 3)) {
        return *number;
    }
    const std::size_t letter = kLetters.find(text.front());
    if (letter != std::string_view::npos) {
        text.remove_prefix(1);
        return kMeanings[letter];
    }
    return TakeCodePoint(text);
}

// Takes a text off `line`, with the closing quote; nothing if it is not closed.
std::optional<std::string> TakeText(std::string_view& line, char closing) {
    std::string text;
    char32_t high = 0;
    while (!line.empty()) {
        if (line.front() == closing) {
            line.remove_prefix(1);
            return text;
        }
        char32_t unit = 0;
        if (line.front() == '\\' && line.size() > 1) {
            line.remove_prefix(1);
            unit = TakeEscape(line);
        } else {
            unit = TakeCodePoint(line);
        }
        if (IsHighSurrogate(unit)) {
            high = unit;
            continue;
        }
        if (high != 0 && IsLowSurrogate(unit)) {
            unit = FromSurrogates(high, unit);
        }
        high = 0;
        AppendUtf8(text, unit);
    }
    return std::nullopt;
}

// "name"="text" or "name"=str(2):"text".
void ReadValue(std::string_view line, std::map<std::string, std::string>& values) {
    if (!line.starts_with('"')) {
        return;
    }
    line.remove_prefix(1);
    const auto name = TakeText(line, '"');
    if (!name || !line.starts_with('=')) {
        return;
    }
    line.remove_prefix(1);
    if (line.starts_with("str(")) {
        line.remove_prefix(std::min(line.find(':'), line.size() - 1) + 1);
    }
    if (!line.starts_with('"')) {
        return;
    }
    line.remove_prefix(1);
    if (const auto text = TakeText(line, '"')) {
        values.emplace(Small(*name), *text);
    }
}

// A key, and its place for 32-bit programs.
std::array<std::string, 2> PlacesOf(const std::string& key) {
    const std::size_t end = std::min(key.find('\\'), key.size());
    return {key, key.substr(0, end) + "\\Wow6432Node" + key.substr(end)};
}

std::optional<std::map<std::string, std::string>> ReadKeyOf(const fs::path& prefix,
                                                            const std::string& key) {
    std::error_code trouble;
    const fs::path file = prefix / "system.reg";
    if (prefix.empty() || !fs::is_regular_file(file, trouble)) {
        return std::nullopt;
    }
    std::ifstream registry(file, std::ios::binary);
    return ReadWineKey(registry, key);
}

// The entry of a folder that matches a name.
fs::path EntryOf(const fs::path& folder, const std::string& name) {
    std::error_code trouble;
    fs::path exact = folder / name;
    if (fs::exists(exact, trouble)) {
        return exact;
    }
    for (fs::directory_iterator entry(folder, trouble), end; !trouble && entry != end;
         entry.increment(trouble)) {
        if (Small(entry->path().filename().string()) == Small(name)) {
            return entry->path();
        }
    }
    return exact;
}

}  // namespace

fs::path WinePrefix() {
    const char* prefix = std::getenv("WINEPREFIX");
    if (prefix != nullptr && *prefix == '/') {
        return prefix;
    }
    const char* home = std::getenv("HOME");
    return home != nullptr && *home == '/' ? fs::path(home) / ".wine" : fs::path();
}

std::optional<std::map<std::string, std::string>> ReadWineKey(std::istream& registry,
                                                              std::string_view key) {
    const std::string wanted = Small(key);
    std::optional<std::map<std::string, std::string>> values;
    for (std::string whole; std::getline(registry, whole);) {
        std::string_view line = whole;
        if (line.starts_with('[')) {
            if (values) {
                return values;
            }
            line.remove_prefix(1);
            const auto name = TakeText(line, ']');
            if (name && Small(*name) == wanted) {
                values.emplace();
            }
        } else if (values) {
            ReadValue(line, *values);
        }
    }
    return values;
}

bool WineInstallation::HasKey(const std::string& key) {
    return std::ranges::any_of(PlacesOf(key), [this](const std::string& place) {
        return ReadKeyOf(m_prefix, place).has_value();
    });
}

std::string WineInstallation::ReadText(const std::string& key, const std::string& value) {
    for (const std::string& place : PlacesOf(key)) {
        const auto values = ReadKeyOf(m_prefix, place);
        const auto found = values ? values->find(Small(value)) : decltype(values->end()){};
        if (values && found != values->end()) {
            return found->second;
        }
    }
    return {};
}

fs::path WineInstallation::LocalPath(const std::string& drivePath) {
    if (drivePath.size() < 2 || drivePath[1] != ':' || m_prefix.empty()) {
        return {};
    }
    std::error_code trouble;
    fs::path path = fs::canonical(m_prefix / "dosdevices" / Small(drivePath.substr(0, 2)), trouble);
    if (trouble) {
        return {};
    }
    std::string name;
    for (const char sign : drivePath.substr(2) + "\\") {
        if (sign != '\\' && sign != '/') {
            name.push_back(sign);
        } else if (!name.empty()) {
            path = EntryOf(path, name);
            name.clear();
        }
    }
    return path;
}

}  // namespace spellwick
