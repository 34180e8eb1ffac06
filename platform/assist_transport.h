// Top-level windows of assist tools, and the numbered messages that go between them and this
// program.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "text/number_types.h"

namespace spellwick {

struct WindowMessage {
    std::uint32_t number = 0;
    i32 wParam = 0;
    i32 lParam = 0;

    bool operator==(const WindowMessage&) const = default;
};

// What stands in front of the main window's own handling of messages.
class MessageReceiver {
  public:
    virtual ~MessageReceiver() = default;

    // The answer to the sender, or nothing to leave the message to the ordinary handling. Never
    // throws. May be entered again before it has returned.
    virtual std::optional<i32> OnMessage(const WindowMessage& message) = 0;
};

// No call throws. A window that is gone is no error.
class AssistTransport {
  public:
    using WindowVisitor = std::function<void(WindowHandle window, std::string_view title)>;

    virtual ~AssistTransport() = default;

    // Visits each top-level window in the system's order.
    virtual void EnumWindows(const WindowVisitor& visit) = 0;

    // Sends a message whose lParam is the address of `word`, and waits for the answer; messages
    // that come in meanwhile are handled before it returns. 0 if the window is gone or does not
    // answer.
    [[nodiscard]] virtual i32 SendToWindow(WindowHandle window, std::uint32_t number,
                                           std::uint32_t wParam, const i32& word) = 0;

    // From Attach to Detach the receiver, which outlives that time, sees every message to our main
    // window `own` first. Otherwise the ordinary handling has them all: they are answered with 0
    // and lost.
    virtual void Attach(WindowHandle own, MessageReceiver& receiver) = 0;
    virtual void Detach() = 0;

    // A descriptor that is readable when Service has something to do; -1 where messages come by
    // the toolkit's own loop.
    virtual int Descriptor() const { return -1; }

    // Handles messages that have come in, for a few milliseconds at most; what is left keeps the
    // descriptor readable.
    virtual void Service() {}

    // Handles the messages that have come in by now, those too that wait for the end of another,
    // for half a second at most.
    virtual void ServePending() {}
};

}  // namespace spellwick
