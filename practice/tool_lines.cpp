#include "practice/tool_lines.h"

#include <charconv>
#include <limits>

namespace spellwick::practice {
namespace {

constexpr std::string_view kSend = "send ";
constexpr std::string_view kResult = "result ";

// Takes the number at the start of `text` off it, with the blank that may follow.
std::optional<std::int32_t> TakeNumber(std::string_view& text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (!text.empty()) {
        if (text.front() != ' ' || text.size() == 1) {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

}  // namespace

std::optional<std::variant<ToolMessage, ToolResult>> ParseToolLine(std::string_view line) {
    if (line.starts_with(kSend)) {
        line.remove_prefix(kSend.size());
        if (line.starts_with('-')) {
            return std::nullopt;
        }
        const auto number = TakeNumber(line);
        const auto wParam = TakeNumber(line);
        const auto lParam = TakeNumber(line);
        if (!number || !wParam || !lParam || !line.empty()) {
            return std::nullopt;
        }
        return ToolMessage{static_cast<std::uint32_t>(*number), *wParam, *lParam};
    }
    if (line.starts_with(kResult)) {
        line.remove_prefix(kResult.size());
        const auto number = TakeNumber(line);
        if (!number || !line.empty()) {
            return std::nullopt;
        }
        return ToolResult{*number};
    }
    return std::nullopt;
}

std::string WrittenTitle(std::string_view title) {
    return "title " + std::string(title);
}

std::string WrittenMessage(const ToolMessage& message) {
    return "send " + std::to_string(message.number) + ' ' + std::to_string(message.wParam) + ' ' +
           std::to_string(message.lParam);
}

std::string WrittenResult(std::int32_t number) {
    return "result " + std::to_string(number);
}

}  // namespace spellwick::practice
