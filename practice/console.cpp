#include "practice/console.h"

#include <array>
#include <cerrno>
#include <cstdio>

#include <unistd.h>

namespace spellwick::practice {

void WriteLine(const std::string& line) {
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

bool Console::Read() {
    std::array<char, 4096> buffer{};
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        return count < 0 && errno == EINTR;
    }
    m_pending.append(buffer.data(), static_cast<std::size_t>(count));
    for (std::size_t end = m_pending.find('\n'); end != std::string::npos;
         end = m_pending.find('\n')) {
        const std::string line = m_pending.substr(0, end);
        m_pending.erase(0, end + 1);
        m_take(line);
    }
    return true;
}

}  // namespace spellwick::practice
