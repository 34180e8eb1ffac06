// Wine's registry file: any bytes give texts or nothing, whatever stands before and behind the key,
// and what Wine writes comes back.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include "platform/linux/wine_installation.h"
#include "text/utf8.h"

namespace {

using namespace spellwick;

using Values = std::optional<std::map<std::string, std::string>>;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

Values Read(const std::string& file, std::string_view key) {
    std::istringstream registry(file);
    return ReadWineKey(registry, key);
}

// As Wine writes a text: all that is not plain in units of UTF-16.
std::string Escaped(std::string_view text, char closing) {
    std::string written;
    const auto unit = [&written](char32_t value) {
        written += "\\x";
        for (const unsigned shift : {12U, 8U, 4U, 0U}) {
            written += "0123456789abcdef"[(value >> shift) & 0xfU];
        }
    };
    while (!text.empty()) {
        const char32_t codePoint = TakeCodePoint(text);
        if (codePoint == '\\' || codePoint == static_cast<char32_t>(closing)) {
            written += '\\';
            written += static_cast<char>(codePoint);
        } else if (codePoint >= ' ' && codePoint < 0x7f) {
            written += static_cast<char>(codePoint);
        } else if (codePoint >= 0x10000) {
            unit(0xd800 + ((codePoint - 0x10000) >> 10U));
            unit(0xdc00 + ((codePoint - 0x10000) & 0x3ffU));
        } else {
            unit(codePoint);
        }
    }
    return written;
}

std::string Small(std::string text) {
    for (char& sign : text) {
        sign = sign >= 'A' && sign <= 'Z' ? static_cast<char>(sign + 32) : sign;
    }
    return text;
}

// Three texts, parted by bars.
void TryWritten(std::string_view input) {
    std::array<std::string, 3> texts;
    std::size_t at = 0;
    for (const char byte : ValidUtf8(input)) {
        if (byte == '|' && at < 2) {
            ++at;
        } else {
            texts[at] += byte;
        }
    }
    const auto& [key, name, value] = texts;
    const std::string section = "[" + Escaped(key, ']') + "] 1234567\n#time=1d\n";
    const std::string line = "\"" + Escaped(name, '"') + "\"=";
    const std::string text = "\"" + Escaped(value, '"') + "\"\n";
    for (const char* type : {"", "str(2):"}) {
        const Values values =
            Read("WINE REGISTRY Version 2\n\n" + section + line + type + text, key);
        Require(values && values->size() == 1 && values->begin()->first == Small(name) &&
                values->begin()->second == value);
    }
    // Of two values with one name the first stands, and a number is none.
    const std::string file =
        section + line + "dword:00000001\n" + line + text + line + "\"other\"\n";
    const Values values = Read(file, Small(key));
    Require(values && values->size() == 1 && values->begin()->second == value);
}

void TryBytes(const std::string& input) {
    const std::string key = "Software\\Game";
    // As the values of a key, up to the next key.
    const std::string ours = "[Software\\\\Game] 1\n";
    const std::string others = "\n[Software\\\\Gamf] 2\n\"x\"=\"y\"\n";
    const Values values = Read(ours + input + others, key);
    Require(values.has_value());
    for (const auto& [name, text] : *values) {
        Require(ValidUtf8(name) == name && ValidUtf8(text) == text && Small(name) == name);
    }
    Require(Read(others + ours + input, key) == values);
    // As a whole file, in which the key may stand or not; behind it, it is found.
    const Values found = Read(input, key);
    const Values behind = Read(input + "\n" + ours + "\"last\"=\"z\"\n", key);
    Require(behind && (found ? behind == found || behind->contains("last")
                             : *behind == std::map<std::string, std::string>{{"last", "z"}}));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string input(data + 1, data + size);
    if (data[0] % 2 == 0) {
        TryBytes(input);
    } else {
        TryWritten(input);
    }
    return 0;
}
