// The standard streams of a practice program: a line each for commands and for what happens.
#pragma once

#include <functional>
#include <string>

namespace spellwick::practice {

// Writes a line to standard output at once, for a program that waits for it.
void WriteLine(const std::string& line);

// The lines of standard input, as they arrive.
class Console {
  public:
    explicit Console(std::function<void(const std::string& line)> take) : m_take(std::move(take)) {}

    // Reads what has arrived and hands over the lines that are complete; false at the input's end.
    bool Read();

  private:
    std::function<void(const std::string& line)> m_take;
    std::string m_pending;
};

}  // namespace spellwick::practice
