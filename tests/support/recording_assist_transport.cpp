#include "tests/support/recording_assist_transport.h"

#include <algorithm>

namespace spellwick {

void RecordingAssistTransport::EnumWindows(const WindowVisitor& visit) {
    ++searches;
    for (const Window& window : windows) {
        visit(window.handle, window.title);
    }
}

i32 RecordingAssistTransport::SendToWindow(WindowHandle window, std::uint32_t number,
                                           std::uint32_t wParam, const i32& word) {
    const bool there = std::ranges::find(windows, window, &Window::handle) != windows.end();
    const Sent message{window, number, wParam, word};
    sent.push_back(message);
    return there ? onSend(message) : 0;
}

std::optional<i32> RecordingAssistTransport::Deliver(const WindowMessage& message) const {
    return m_receiver == nullptr ? std::nullopt : m_receiver->OnMessage(message);
}

}  // namespace spellwick
