// The standard input and output as lines. A thread each reads and writes, so that the windows are
// served whatever the other side does.
#pragma once

#include <deque>
#include <optional>
#include <string>

#include <windows.h>

namespace spellwick::bridge {

class LinePipes {
  public:
    LinePipes();
    LinePipes(const LinePipes&) = delete;
    LinePipes& operator=(const LinePipes&) = delete;
    ~LinePipes() = default;  // of the whole run: its threads end with the program

    // Starts the threads; false if that fails.
    bool Start();

    // Signalled while a line is there to be taken, and from the end of the input on.
    HANDLE Input() const { return m_input; }
    std::optional<std::string> TakeLine();
    // The input has ended, broken its form, or the output takes nothing any more.
    bool Ended();

    // Never waits.
    void Write(const std::string& line);
    // Waits until all is written, for so many milliseconds at most.
    void Flush(DWORD milliseconds);

  private:
    static DWORD WINAPI Reader(void* pipes);
    static DWORD WINAPI Writer(void* pipes);
    void ReadAll();
    void WriteAll();
    void End();

    CRITICAL_SECTION m_lock;
    HANDLE m_input;    // manual reset
    HANDLE m_output;   // automatic reset
    HANDLE m_written;  // manual reset: nothing is left to write
    std::deque<std::string> m_lines;
    std::string m_unwritten;
    bool m_ended = false;
};

}  // namespace spellwick::bridge
