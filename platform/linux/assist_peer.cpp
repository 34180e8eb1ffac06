#include "platform/linux/assist_peer.h"

#include <array>
#include <cerrno>

#include <sys/socket.h>

#include "text/log.h"

namespace spellwick {

namespace {

constexpr std::size_t kReadAtOnce = 4096;
// Answers to a million and a half reports that a peer has not read yet.
constexpr std::size_t kMostUnwritten = std::size_t{16} << 20U;

}  // namespace

void AssistPeer::Read() {
    if (Ended() || m_lines.HasLine()) {
        return;
    }
    std::array<char, kReadAtOnce> bytes{};
    const ssize_t count = recv(Descriptor(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (count > 0) {
        m_lines.Append({bytes.data(), static_cast<std::size_t>(count)});
    } else if (count == 0 || (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR)) {
        End();
    }
    if (m_lines.Broken()) {
        Drop("a line is too long");
    }
}

void AssistPeer::Drop(std::string_view why) {
    LogEvent(LogTopic::kDropped,
             [&] { return "the assist tool " + m_name + ": " + std::string(why); });
    End();
}

std::optional<AssistLine> AssistPeer::TakeLine() {
    if (m_brokeForm) {
        return std::nullopt;
    }
    const auto text = m_lines.TakeLine();
    if (m_lines.Broken()) {
        Drop("a line is too long");
    }
    if (!text) {
        return std::nullopt;
    }
    auto line = ParseAssistLine(*text);
    // The title must come first, and once.
    if (!line || std::holds_alternative<TitleLine>(*line) == m_greeted) {
        m_brokeForm = true;
        Drop("a line is not of the form, or the title is not the first");
        return std::nullopt;
    }
    if (const auto* greeting = std::get_if<TitleLine>(&*line)) {
        m_title = greeting->title;
        m_greeted = true;
    }
    return line;
}

bool AssistPeer::TakeLateAnswer() {
    const bool late = m_owed > 0;
    if (late) {
        --m_owed;
        m_silence.Stir();
    }
    return late;
}

void AssistPeer::Write(std::string_view text) {
    if (Ended()) {
        return;
    }
    if (m_unwritten.size() + text.size() > kMostUnwritten) {
        Drop("it leaves too much unread");
        return;
    }
    m_unwritten.append(text);
    Flush();
}

void AssistPeer::Flush() {
    while (!Ended() && !m_unwritten.empty()) {
        const ssize_t count =
            send(Descriptor(), m_unwritten.data(), m_unwritten.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            if (errno != EAGAIN && errno != EWOULDBLOCK) {
                End();
            }
            return;
        }
        m_unwritten.erase(0, static_cast<std::size_t>(count));
    }
}

}  // namespace spellwick
