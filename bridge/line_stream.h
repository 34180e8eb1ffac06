// Lines in and out of a socket or a pair of pipes, never waiting.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/assist_line.h"
#include "platform/linux/file_descriptor.h"

namespace spellwick::bridge {

class LineStream {
  public:
    // Both descriptors do not block. A socket goes both ways: its `output` is none.
    explicit LineStream(FileDescriptor input, FileDescriptor output = FileDescriptor())
        : m_input(std::move(input)), m_output(std::move(output)) {}

    int Input() const { return m_input.Number(); }
    int Output() const { return m_output ? m_output.Number() : m_input.Number(); }

    // Reads what has arrived; a line that is too long, or the end of the stream, ends it.
    void Read();
    // The next line without its end; also those that came before the end.
    std::optional<std::string> TakeLine() { return m_lines.TakeLine(); }

    // Writes what is taken now and keeps the rest; one that leaves too much unread is ended.
    void Write(std::string_view text);
    void Flush();
    bool WantsToWrite() const { return !Ended() && !m_unwritten.empty(); }

    void End();
    bool Ended() const { return !m_input; }

  private:
    FileDescriptor m_input;
    FileDescriptor m_output;
    AssistLineReader m_lines;
    std::string m_unwritten;
};

}  // namespace spellwick::bridge
