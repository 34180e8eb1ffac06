// The connection with one assist tool: lines in, lines out, never waiting.
#pragma once

#include <string>

#include "platform/assist_silence.h"
#include "platform/linux/assist_line.h"
#include "platform/linux/file_descriptor.h"

namespace spellwick {

class AssistPeer {
  public:
    AssistPeer(std::string name, WindowHandle window, FileDescriptor connection)
        : m_name(std::move(name)), m_window(window), m_connection(std::move(connection)) {}

    // The socket's name.
    const std::string& Name() const { return m_name; }
    WindowHandle Window() const { return m_window; }
    int Descriptor() const { return m_connection.Number(); }

    // Reads what has arrived, a few thousand bytes at most, unless a line is waiting to be taken.
    void Read();

    // The next line; nothing if there is none yet. A malformed line ends the peer; the lines before
    // it can still be taken.
    std::optional<AssistLine> TakeLine();
    bool HasLine() const { return !m_brokeForm && m_lines.HasLine(); }

    // Writes as much as the peer accepts now and keeps the rest. A peer that leaves too much unread
    // is ended.
    void Write(std::string_view text);
    void Flush();
    bool WantsToWrite() const { return !m_unwritten.empty(); }

    // It has sent its title and is still connected, so it stands for a window.
    bool IsWindow() const { return m_greeted && !Ended(); }
    // It has not sent its title for this time.
    bool IsMuteFor(std::chrono::milliseconds time) const {
        return !m_greeted && !Ended() && std::chrono::steady_clock::now() - m_since >= time;
    }
    const std::string& Title() const { return m_title; }

    void End() { m_connection.Close(); }
    bool Ended() const { return !m_connection; }

    AssistSilence& Silence() { return m_silence; }
    // Answers that it owes and that nobody is waiting for any more.
    int Owed() const { return m_owed; }
    void SetOwed(int answers) { m_owed = answers; }
    // Counts an answer as one that is owed; false if none is.
    bool TakeLateAnswer();

    // Whether the event loop watches it.
    bool IsWatched() const { return m_watched; }
    void SetWatched(bool watched) { m_watched = watched; }

  private:
    void Drop(std::string_view why);

    std::string m_name;
    WindowHandle m_window;
    FileDescriptor m_connection;
    AssistLineReader m_lines;
    std::string m_unwritten;
    std::string m_title;
    std::chrono::steady_clock::time_point m_since = std::chrono::steady_clock::now();
    bool m_greeted = false;
    bool m_brokeForm = false;
    bool m_watched = false;
    int m_owed = 0;
    AssistSilence m_silence;
};

}  // namespace spellwick
