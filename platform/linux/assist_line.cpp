#include "platform/linux/assist_line.h"

#include <charconv>
#include <limits>

#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr std::string_view kTitle = "title ";
constexpr std::string_view kSend = "send ";
constexpr std::string_view kResult = "result ";

// Takes the 32-bit word, with or without a sign, off the start of `text`.
std::optional<i32> TakeWord(std::string_view& text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    constexpr std::int64_t kHighest = std::numeric_limits<std::uint32_t>::max();
    if (error != std::errc() || value > kHighest || value < std::numeric_limits<i32>::min()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return static_cast<i32>(static_cast<std::uint32_t>(value));
}

bool TakeBlank(std::string_view& text) {
    const bool blank = text.starts_with(' ');
    if (blank) {
        text.remove_prefix(1);
    }
    return blank;
}

std::optional<AssistLine> ParseSend(std::string_view text) {
    const bool negative = text.starts_with('-');
    const auto number = TakeWord(text);
    if (!number || negative || !TakeBlank(text)) {
        return std::nullopt;
    }
    const auto wParam = TakeWord(text);
    if (!wParam || !TakeBlank(text)) {
        return std::nullopt;
    }
    const auto lParam = TakeWord(text);
    if (!lParam || !text.empty()) {
        return std::nullopt;
    }
    return SendLine{{static_cast<std::uint32_t>(*number), *wParam, *lParam}};
}

}  // namespace

std::optional<AssistLine> ParseAssistLine(std::string_view line) {
    if (line.find('\0') != std::string_view::npos || ValidUtf8(line) != line) {
        return std::nullopt;
    }
    if (line.starts_with(kTitle)) {
        return TitleLine{std::string(line.substr(kTitle.size()))};
    }
    if (line.starts_with(kSend)) {
        return ParseSend(line.substr(kSend.size()));
    }
    if (line.starts_with(kResult)) {
        std::string_view text = line.substr(kResult.size());
        const auto number = TakeWord(text);
        return number && text.empty() ? std::optional<AssistLine>(ResultLine{*number})
                                      : std::nullopt;
    }
    return std::nullopt;
}

std::string WrittenSend(const WindowMessage& message) {
    return "send " + std::to_string(message.number) + ' ' + std::to_string(message.wParam) + ' ' +
           std::to_string(message.lParam) + '\n';
}

std::string WrittenResult(i32 number) {
    return "result " + std::to_string(number) + '\n';
}

void AssistLineReader::Append(std::string_view bytes) {
    m_bytes.erase(0, m_taken);
    m_taken = 0;
    m_bytes.append(bytes);
}

bool AssistLineReader::HasLine() const {
    return !Broken() && m_bytes.find('\n', m_taken) != std::string::npos;
}

std::optional<std::string> AssistLineReader::TakeLine() {
    if (!HasLine()) {
        return std::nullopt;
    }
    const std::size_t end = m_bytes.find('\n', m_taken);
    std::string line = m_bytes.substr(m_taken, end - m_taken);
    m_taken = end + 1;
    return line;
}

bool AssistLineReader::Broken() const {
    const std::string_view rest = std::string_view(m_bytes).substr(m_taken);
    return rest.size() >= kLongestAssistLine &&
           rest.substr(0, kLongestAssistLine).find('\n') == std::string_view::npos;
}

}  // namespace spellwick
