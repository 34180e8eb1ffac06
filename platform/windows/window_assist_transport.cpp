#include "platform/windows/window_assist_transport.h"

#include <bit>

#include "platform/windows/desktop_windows.h"
#include "platform/windows/wide_text.h"

namespace spellwick {

namespace {

constexpr const wchar_t* kProperty = L"SpellwickAssist";

// Handling a report serves events, and with them further reports, so a burst must not nest them
// without limit.
constexpr int kDeepest = 8;

// Messages from here on are registered by name.
constexpr UINT kFirstRegistered = 0xc000;

constexpr std::chrono::milliseconds kLongestPending{500};

// How long a window that has hung gets to show that it no longer does.
constexpr UINT kStirMilliseconds = 20;

// Tools are 32-bit programs, and some fail on an address that does not fit.
i32* AllocateLowWord() {
    constexpr std::uintptr_t kFirst = 0x10000000;
    constexpr std::uintptr_t kLast = 0x70000000;
    constexpr std::uintptr_t kStep = 0x100000;
    void* place = nullptr;
    for (std::uintptr_t address = kFirst; place == nullptr && address < kLast; address += kStep) {
        place = VirtualAlloc(std::bit_cast<void*>(address), sizeof(i32), MEM_RESERVE | MEM_COMMIT,
                             PAGE_READWRITE);
    }
    return static_cast<i32*>(place);
}

// The sender waits in SendMessage until this message is answered.
bool SenderWaits() {
    return (InSendMessageEx(nullptr) & (ISMEX_SEND | ISMEX_REPLIED)) == ISMEX_SEND;
}

bool TakesMessages(HWND window) {
    DWORD_PTR ignored = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kStirMilliseconds, &ignored) !=
           0;
}

// Titles that are read in one enumeration. On a desktop with more windows, those that are known are
// read in turn; a window that is new is always read.
constexpr std::size_t kTitlesAtOnce = 1000;

}  // namespace

WindowMessage WindowAssistTransport::MessageOf(const Deferred& message) {
    return {message.number, static_cast<i32>(message.wParam), static_cast<i32>(message.lParam)};
}

WindowAssistTransport::WindowAssistTransport(AssistPatience patience)
    : m_patience(patience), m_word(AllocateLowWord()) {}

WindowAssistTransport::~WindowAssistTransport() {
    Detach();
    if (m_word != nullptr) {
        VirtualFree(m_word, 0, MEM_RELEASE);
    }
}

void WindowAssistTransport::EnumWindows(const WindowVisitor& visit) {
    // The handle of a window that is gone may be reused.
    std::erase_if(m_silent, [](const auto& entry) { return IsWindow(entry.first) == FALSE; });
    const std::vector<HWND> windows = DesktopWindows();
    std::unordered_map<HWND, std::string> known;
    known.reserve(windows.size());
    const std::size_t first = m_firstToRead < windows.size() ? m_firstToRead : 0;
    m_firstToRead = first + kTitlesAtOnce;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        HWND window = windows[index];
        const auto before = m_titles.find(window);
        const bool due = index >= first && index < first + kTitlesAtOnce;
        known.emplace(window, before == m_titles.end() || due ? Utf8FromWide(WideTitle(window))
                                                              : std::move(before->second));
    }
    // A visitor may enter here again.
    m_titles = std::move(known);
    std::vector<std::pair<HWND, std::string>> titles;
    titles.reserve(windows.size());
    for (HWND window : windows) {
        titles.emplace_back(window, m_titles[window]);
    }
    for (const auto& [window, title] : titles) {
        visit(HandleOf(window), title);
    }
}

bool WindowAssistTransport::MayBeAsked(HWND window) {
    const auto silent = m_silent.find(window);
    if (silent == m_silent.end()) {
        return true;
    }
    Silence& silence = silent->second;
    if (silence.hangs) {
        silence.hangs = !TakesMessages(window);
        if (silence.hangs) {
            return false;
        }
        silence.answers.Stir();
    }
    return silence.answers.MayAsk(Clock::now());
}

// One that hangs is asked again when it no longer does. One that takes messages but never finishes
// this one, because it shows a box for example, is asked at intervals.
void WindowAssistTransport::NoteSilence(HWND window) {
    Silence& silence = m_silent[window];
    silence.answers.GiveUp(Clock::now(), m_patience);
    silence.hangs = !TakesMessages(window);
}

i32 WindowAssistTransport::SendToWindow(WindowHandle window, std::uint32_t number,
                                        std::uint32_t wParam, const i32& word) {
    HWND target = HwndOf(window);
    if (window == 0 || IsWindow(target) == FALSE || !MayBeAsked(target)) {
        return 0;
    }
    if (m_word != nullptr) {
        *m_word = word;
    }
    const auto silent = m_silent.find(target);
    const AssistSilence silence =
        silent == m_silent.end() ? AssistSilence() : silent->second.answers;
    const auto wait = silence.Wait(m_patience, m_starting);
    DWORD_PTR answer = 0;
    const LRESULT answered =
        SendMessageTimeoutW(target, number, wParam, std::bit_cast<LPARAM>(m_word), SMTO_NORMAL,
                            static_cast<UINT>(wait.count()), &answer);
    if (answered != 0) {
        m_silent.erase(target);
        return static_cast<i32>(answer);
    }
    NoteSilence(target);
    return 0;
}

void WindowAssistTransport::Attach(WindowHandle own, MessageReceiver& receiver) {
    Detach();
    m_starting = false;
    HWND window = HwndOf(own);
    if (own == 0 || SetPropW(window, kProperty, this) == FALSE) {
        return;
    }
    m_own = window;
    m_receiver = &receiver;
    m_replaced = std::bit_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, std::bit_cast<LONG_PTR>(&WindowProcedure)));
}

void WindowAssistTransport::Detach() {
    if (m_own == nullptr) {
        return;
    }
    // If another procedure has been installed since, it still calls ours; leave ours in place,
    // doing nothing.
    if (GetWindowLongPtrW(m_own, GWLP_WNDPROC) == std::bit_cast<LONG_PTR>(&WindowProcedure)) {
        SetWindowLongPtrW(m_own, GWLP_WNDPROC, std::bit_cast<LONG_PTR>(m_replaced));
        RemovePropW(m_own, kProperty);
        m_own = nullptr;
    }
    m_receiver = nullptr;
    m_deferred.clear();
}

std::optional<i32> WindowAssistTransport::Receive(const WindowMessage& message) {
    if (m_receiver == nullptr) {
        return std::nullopt;
    }
    ++m_depth;
    const std::optional<i32> answer = m_receiver->OnMessage(message);
    --m_depth;
    return answer;
}

void WindowAssistTransport::ReceiveDeferred() {
    while (m_depth == 0 && !m_deferred.empty()) {
        ReceiveFirst();
    }
}

void WindowAssistTransport::ReceiveFirst() {
    const Deferred deferred = m_deferred.front();
    m_deferred.pop_front();
    if (!Receive(MessageOf(deferred))) {
        CallWindowProcW(m_replaced, deferred.window, deferred.number, deferred.wParam,
                        deferred.lParam);
    }
}

// A request to close that is taken in the middle of a report overtakes the deferred ones, and it
// may have been sent and not posted.
void WindowAssistTransport::ServePending() {
    const auto deadline = Clock::now() + kLongestPending;
    const auto start = static_cast<LONG>(GetTickCount());
    bool more = true;
    while (more && m_receiver != nullptr && Clock::now() < deadline) {
        if (!m_deferred.empty()) {
            ReceiveFirst();
            continue;
        }
        MSG message{};
        more = PeekMessageW(&message, m_own, WM_USER, kFirstRegistered - 1, PM_REMOVE) != FALSE;
        if (more) {
            DispatchMessageW(&message);
            // Posted since: the tool goes on, and the end does not wait for it.
            more = static_cast<LONG>(message.time) - start <= 0;
        }
    }
}

LRESULT CALLBACK WindowAssistTransport::WindowProcedure(HWND window, UINT number, WPARAM wParam,
                                                        LPARAM lParam) {
    auto* transport = static_cast<WindowAssistTransport*>(GetPropW(window, kProperty));
    if (transport == nullptr) {
        return DefWindowProcW(window, number, wParam, lParam);
    }
    const WNDPROC replaced = transport->m_replaced;
    if (number == WM_NCDESTROY) {
        transport->Detach();
        return CallWindowProcW(replaced, window, number, wParam, lParam);
    }
    if (number >= WM_USER && number < kFirstRegistered) {
        const Deferred message{window, number, wParam, lParam};
        const bool mustWait = transport->m_depth >= kDeepest || !transport->m_deferred.empty();
        if (mustWait && transport->m_depth > 0 && !SenderWaits()) {
            transport->m_deferred.push_back(message);
            return 0;
        }
        const std::optional<i32> answer = transport->Receive(MessageOf(message));
        transport->ReceiveDeferred();
        if (answer) {
            return *answer;
        }
    }
    return CallWindowProcW(replaced, window, number, wParam, lParam);
}

}  // namespace spellwick
