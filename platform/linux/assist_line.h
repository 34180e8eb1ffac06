// The lines that an assist tool and this program write to each other's socket, and the reader that
// takes them from a stream of bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/assist_transport.h"

namespace spellwick {

inline constexpr std::size_t kLongestAssistLine = 512;  // bytes, including the line end

struct TitleLine {
    std::string title;
    bool operator==(const TitleLine&) const = default;
};

struct SendLine {
    WindowMessage message;
    bool operator==(const SendLine&) const = default;
};

struct ResultLine {
    i32 number = 0;
    bool operator==(const ResultLine&) const = default;
};

using AssistLine = std::variant<TitleLine, SendLine, ResultLine>;

// Parses a line without its end: `title TEXT`, `send MESSAGE WPARAM LPARAM` or `result NUMBER`,
// with decimal numbers of 32 bits, with or without a sign. Nothing for any other line, invalid
// UTF-8 or a NUL byte.
std::optional<AssistLine> ParseAssistLine(std::string_view line);

// The same lines, with the line end.
std::string WrittenSend(const WindowMessage& message);
std::string WrittenResult(i32 number);

// Cuts a stream of bytes into lines. A line that is too long breaks the stream for good.
class AssistLineReader {
  public:
    void Append(std::string_view bytes);

    bool HasLine() const;
    // The next complete line without its end; nothing if there is none, or if the stream is broken.
    std::optional<std::string> TakeLine();

    // True if the rest cannot become a valid line.
    bool Broken() const;

  private:
    std::string m_bytes;
    std::size_t m_taken = 0;  // bytes at the start of m_bytes that are consumed
};

}  // namespace spellwick
