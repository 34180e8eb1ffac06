// Assist tools on Windows: their real windows, and real window messages.
#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <string>
#include <unordered_map>

#include <windows.h>

#include "platform/assist_silence.h"
#include "platform/assist_transport.h"

namespace spellwick {

class WindowAssistTransport : public AssistTransport {
  public:
    explicit WindowAssistTransport(AssistPatience patience = {});
    WindowAssistTransport(const WindowAssistTransport&) = delete;
    WindowAssistTransport& operator=(const WindowAssistTransport&) = delete;
    ~WindowAssistTransport() override;

    void EnumWindows(const WindowVisitor& visit) override;

    // Waits only briefly until the first Attach. A window that has not answered gets no other
    // message until it takes messages again; one that takes them but does not answer gets ours at
    // growing intervals.
    i32 SendToWindow(WindowHandle window, std::uint32_t number, std::uint32_t wParam,
                     const i32& word) override;

    // The window belongs to the calling thread.
    void Attach(WindowHandle own, MessageReceiver& receiver) override;
    void Detach() override;
    void ServePending() override;

  private:
    using Clock = std::chrono::steady_clock;

    // A posted message that must wait for those before it.
    struct Deferred {
        HWND window;
        UINT number;
        WPARAM wParam;
        LPARAM lParam;
    };

    struct Silence {
        AssistSilence answers;
        bool hangs = false;  // it took no message when last looked at
    };

    static WindowMessage MessageOf(const Deferred& message);
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam);
    bool MayBeAsked(HWND window);
    void NoteSilence(HWND window);
    std::optional<i32> Receive(const WindowMessage& message);
    void ReceiveDeferred();
    // Hands the first of the deferred messages on.
    void ReceiveFirst();

    AssistPatience m_patience;
    bool m_starting = true;  // no receiver has been attached yet
    i32* m_word;             // at an address below 2 GiB; null if there is none
    std::unordered_map<HWND, std::string> m_titles;  // as last read
    std::size_t m_firstToRead = 0;                   // of the windows, in the system's order
    std::map<HWND, Silence> m_silent;

    HWND m_own = nullptr;
    WNDPROC m_replaced = nullptr;
    MessageReceiver* m_receiver = nullptr;
    int m_depth = 0;  // messages being handled inside each other
    std::deque<Deferred> m_deferred;
};

}  // namespace spellwick
