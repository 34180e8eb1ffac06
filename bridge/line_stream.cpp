#include "bridge/line_stream.h"

#include <array>
#include <cerrno>

#include <unistd.h>

namespace spellwick::bridge {

namespace {

constexpr std::size_t kReadAtOnce = 4096;
constexpr std::size_t kMostUnwritten = std::size_t{16} << 20U;

bool MayComeLater() {
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

}  // namespace

void LineStream::Read() {
    if (Ended()) {
        return;
    }
    std::array<char, kReadAtOnce> bytes{};
    const ssize_t count = read(Input(), bytes.data(), bytes.size());
    if (count > 0) {
        m_lines.Append({bytes.data(), static_cast<std::size_t>(count)});
    } else if (count == 0 || !MayComeLater()) {
        End();
    }
    if (m_lines.Broken()) {
        End();
    }
}

void LineStream::Write(std::string_view text) {
    if (Ended()) {
        return;
    }
    if (m_unwritten.size() + text.size() > kMostUnwritten) {
        End();
        return;
    }
    m_unwritten.append(text);
    Flush();
}

void LineStream::Flush() {
    while (WantsToWrite()) {
        // The program ignores the signal of a broken pipe.
        const ssize_t count = write(Output(), m_unwritten.data(), m_unwritten.size());
        if (count < 0) {
            if (!MayComeLater()) {
                End();
            }
            return;
        }
        m_unwritten.erase(0, static_cast<std::size_t>(count));
    }
}

void LineStream::End() {
    m_input.Close();
    m_output.Close();
    m_unwritten.clear();
}

}  // namespace spellwick::bridge
