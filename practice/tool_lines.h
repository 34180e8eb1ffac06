// The lines on the assist tool's socket, as the tool reads and writes them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace spellwick::practice {

inline constexpr std::size_t kLongestToolLine = 512;  // bytes, with the line's end

// A numbered message, in either direction.
struct ToolMessage {
    std::uint32_t number = 0;
    std::int32_t wParam = 0;
    std::int32_t lParam = 0;

    bool operator==(const ToolMessage&) const = default;
};

struct ToolResult {
    std::int32_t number = 0;

    bool operator==(const ToolResult&) const = default;
};

// Reads `send MESSAGE WPARAM LPARAM` or `result NUMBER`, without the line end; nothing for any
// other line. Numbers have 32 bits, with or without a sign.
std::optional<std::variant<ToolMessage, ToolResult>> ParseToolLine(std::string_view line);

// Without the line end.
std::string WrittenTitle(std::string_view title);
std::string WrittenMessage(const ToolMessage& message);
std::string WrittenResult(std::int32_t number);

}  // namespace spellwick::practice
