#include "bridge/bridge_line.h"

#include <charconv>
#include <limits>

namespace spellwick::bridge {

namespace {

struct VerbForm {
    BridgeVerb verb;
    std::string_view word;
    std::size_t numbers;
};

constexpr std::array kVerbs{
    VerbForm{BridgeVerb::kReady, "ready", 0},   VerbForm{BridgeVerb::kTitle, "title", 0},
    VerbForm{BridgeVerb::kGone, "gone", 0},     VerbForm{BridgeVerb::kOpen, "open", 1},
    VerbForm{BridgeVerb::kClose, "close", 0},   VerbForm{BridgeVerb::kSend, "send", 3},
    VerbForm{BridgeVerb::kResult, "result", 1},
};

bool TakeNumber(std::string_view& text, std::int64_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    constexpr std::int64_t kHighest = std::numeric_limits<std::uint32_t>::max();
    constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
    if (error != std::errc() || number > kHighest || number < kLowest) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool TakeText(std::string_view& text, std::string_view wanted) {
    const bool there = text.starts_with(wanted);
    if (there) {
        text.remove_prefix(wanted.size());
    }
    return there;
}

const VerbForm* TakeVerb(std::string_view& text) {
    for (const VerbForm& form : kVerbs) {
        if (TakeText(text, form.word)) {
            return &form;
        }
    }
    return nullptr;
}

// Not std::to_string, which brings half of the library into a small program.
void AppendNumber(std::string& text, std::int64_t number) {
    constexpr std::size_t kMostDigits = 24;
    std::array<char, kMostDigits> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

// At most so many bytes, without a torn letter.
std::string_view Cut(std::string_view text, std::size_t most) {
    constexpr unsigned kContinues = 0x80;
    constexpr unsigned kKind = 0xc0;
    if (text.size() > most) {
        while (most > 0 && (static_cast<unsigned char>(text[most]) & kKind) == kContinues) {
            --most;
        }
        text = text.substr(0, most);
    }
    return text;
}

}  // namespace

std::optional<BridgeLine> ParseBridgeLine(std::string_view line) {
    BridgeLine parsed;
    std::int64_t id = 0;
    if (!TakeNumber(line, id) || id < 0 || !TakeText(line, " ")) {
        return std::nullopt;
    }
    parsed.id = static_cast<std::uint32_t>(id);
    const VerbForm* form = TakeVerb(line);
    if (form == nullptr) {
        return std::nullopt;
    }
    parsed.verb = form->verb;
    if (form->verb == BridgeVerb::kTitle) {
        if (!TakeText(line, " ")) {
            return std::nullopt;
        }
        parsed.text = line;
        return parsed;
    }
    for (std::size_t i = 0; i < form->numbers; ++i) {
        if (!TakeText(line, " ") || !TakeNumber(line, parsed.numbers[i])) {
            return std::nullopt;
        }
    }
    return line.empty() ? std::optional(parsed) : std::nullopt;
}

std::string WrittenBridgeLine(const BridgeLine& line) {
    std::string written;
    AppendNumber(written, line.id);
    for (const VerbForm& form : kVerbs) {
        if (form.verb == line.verb) {
            written.append(" ").append(form.word);
            for (std::size_t i = 0; i < form.numbers; ++i) {
                written += ' ';
                AppendNumber(written, line.numbers[i]);
            }
        }
    }
    if (line.verb == BridgeVerb::kTitle) {
        written += ' ';
        for (const char letter : Cut(line.text, kLongestBridgeTitle)) {
            written += static_cast<unsigned char>(letter) < ' ' ? ' ' : letter;
        }
    }
    written += '\n';
    return written;
}

}  // namespace spellwick::bridge
