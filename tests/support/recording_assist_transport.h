// Assist tools that a test makes up, and the record of what was sent to them.
#pragma once

#include <string>
#include <vector>

#include "platform/assist_transport.h"

namespace spellwick {

class RecordingAssistTransport : public AssistTransport {
  public:
    struct Window {
        WindowHandle handle = 0;
        std::string title;
    };

    struct Sent {
        WindowHandle window = 0;
        std::uint32_t number = 0;
        std::uint32_t wParam = 0;
        i32 word = 0;  // the word at the address

        bool operator==(const Sent&) const = default;
    };

    void EnumWindows(const WindowVisitor& visit) override;
    i32 SendToWindow(WindowHandle window, std::uint32_t number, std::uint32_t wParam,
                     const i32& word) override;
    void Attach(WindowHandle own, MessageReceiver& receiver) override {
        attachedTo = own;
        m_receiver = &receiver;
    }
    void Detach() override {
        attachedTo = 0;
        m_receiver = nullptr;
    }

    bool IsAttached() const { return m_receiver != nullptr; }

    // Delivers a message from a tool; returns the receiver's answer, or nothing if it is left to
    // the default handling.
    std::optional<i32> Deliver(const WindowMessage& message) const;

    // The desktop, in the order of enumeration. A test may change it at any time.
    std::vector<Window> windows;
    std::vector<Sent> sent;
    int searches = 0;
    WindowHandle attachedTo = 0;
    // Gives the tool's answer; called inside SendToWindow.
    std::function<i32(const Sent&)> onSend = [](const Sent&) { return 1; };

  private:
    MessageReceiver* m_receiver = nullptr;
};

}  // namespace spellwick
