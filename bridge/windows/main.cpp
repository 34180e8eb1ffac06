// The half of the bridge that runs in Wine: finds the windows of assist tools, and carries messages
// between them and its standard input and output. Writes nothing, shows nothing, needs no display.
#include <bit>

#include <windows.h>

#include "bridge/bridge_line.h"
#include "bridge/windows/connections.h"
#include "bridge/windows/line_pipes.h"
#include "bridge/windows/tool_windows.h"

namespace {

using namespace spellwick::bridge;

constexpr DWORD kSearchInterval = 250;
// The native half kills one that says nothing for long.
constexpr DWORD kSignInterval = 2000;
// Without a tool's window for so long, the program ends where it would keep Wine running.
constexpr DWORD kLongestIdle = 10000;
constexpr DWORD kLongestGoodbye = 500;

// Makes this one of Wine's own programs, which do not keep it running. The event is signalled when
// the last other program has ended; null where that is not to be had.
HANDLE JoinSystem() {
    using SetInformation = LONG(WINAPI*)(HANDLE, int, void*, ULONG);
    constexpr int kMakeSystemProcess = 1000;
    HMODULE system = GetModuleHandleW(L"ntdll.dll");
    HANDLE ending = nullptr;
    if (system == nullptr || GetProcAddress(system, "wine_get_version") == nullptr) {
        return nullptr;
    }
    const auto set =
        std::bit_cast<SetInformation>(GetProcAddress(system, "NtSetInformationProcess"));
    return set != nullptr &&
                   set(GetCurrentProcess(), kMakeSystemProcess, &ending, sizeof ending) == 0
               ? ending
               : nullptr;
}

class Bridge {
  public:
    int Run();

  private:
    void Search();
    void GiveSign();
    void TakeLines();
    static void ServeMessages();

    LinePipes m_pipes;
    Connections m_connections{m_pipes};
    ToolWindows m_tools;
    DWORD m_lastSearch = 0;
    DWORD m_lastSign = 0;
    DWORD m_lastTool = GetTickCount();
};

int Bridge::Run() {
    if (!Connections::RegisterWindowClass() || !m_pipes.Start()) {
        return 1;
    }
    HANDLE ending = JoinSystem();
    Search();
    GiveSign();
    const HANDLE waited[] = {m_pipes.Input(), ending};
    while (!m_pipes.Ended()) {
        const DWORD since = GetTickCount() - m_lastSearch;
        const DWORD left = since < kSearchInterval ? kSearchInterval - since : 0;
        const DWORD count = ending != nullptr ? 2 : 1;
        const DWORD event =
            MsgWaitForMultipleObjectsEx(count, waited, left, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        if (ending != nullptr && event == WAIT_OBJECT_0 + 1) {
            break;
        }
        TakeLines();
        ServeMessages();
        if (GetTickCount() - m_lastSearch >= kSearchInterval) {
            Search();
        }
        if (GetTickCount() - m_lastSign >= kSignInterval) {
            GiveSign();
        }
        if (ending == nullptr && GetTickCount() - m_lastTool > kLongestIdle) {
            break;
        }
    }
    m_pipes.Flush(kLongestGoodbye);
    return 0;
}

void Bridge::Search() {
    const ToolChanges changes = m_tools.Search();
    for (const std::uint32_t gone : changes.gone) {
        m_pipes.Write(WrittenBridgeLine({gone, BridgeVerb::kGone, {}, {}}));
    }
    m_connections.CloseDead();
    for (const ToolWindow& tool : changes.titles) {
        m_pipes.Write(WrittenBridgeLine({tool.id, BridgeVerb::kTitle, {}, tool.title}));
    }
    m_lastSearch = GetTickCount();
    if (!m_tools.Empty()) {
        m_lastTool = m_lastSearch;
    }
}

void Bridge::GiveSign() {
    m_pipes.Write(WrittenBridgeLine({0, BridgeVerb::kReady, {}, {}}));
    m_lastSign = GetTickCount();
}

void Bridge::TakeLines() {
    while (const auto text = m_pipes.TakeLine()) {
        const auto line = ParseBridgeLine(*text);
        if (!line) {
            continue;
        }
        const auto& numbers = line->numbers;
        if (line->verb == BridgeVerb::kOpen) {
            m_connections.Open(line->id, m_tools.Find(static_cast<std::uint32_t>(numbers[0])));
        } else if (line->verb == BridgeVerb::kClose) {
            m_connections.Close(line->id);
        } else if (line->verb == BridgeVerb::kSend) {
            m_connections.Send(line->id, static_cast<std::uint32_t>(numbers[0]),
                               static_cast<std::uint32_t>(numbers[1]),
                               static_cast<std::int32_t>(numbers[2]));
        }
    }
}

// A few at a time: what comes in by the pipe does not wait for a flood to end.
void Bridge::ServeMessages() {
    constexpr int kAtOnce = 64;
    MSG message{};
    for (int i = 0; i < kAtOnce && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE; ++i) {
        DispatchMessageW(&message);
    }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    Bridge bridge;
    return bridge.Run();
}
