#include "bridge/windows/connections.h"

#include <bit>

#include "bridge/bridge_line.h"

namespace spellwick::bridge {

namespace {

constexpr const wchar_t* kClass = L"SpellwickBridge";
constexpr UINT kRegister = WM_USER + 200;
// Messages from here on are registered by name.
constexpr UINT kFirstRegistered = 0xc000;

// Others belong to the system, some with an address in them.
bool IsForPrograms(UINT number) {
    return number >= WM_USER && number < kFirstRegistered;
}

// The system's callback has room for a number only.
Connections* theConnections = nullptr;

}  // namespace

Connections::~Connections() {
    theConnections = nullptr;
    for (const auto& [id, connection] : m_connections) {
        DestroyWindow(connection.own);
    }
}

bool Connections::RegisterWindowClass() {
    WNDCLASSW own{};
    own.lpfnWndProc = &Procedure;
    own.hInstance = GetModuleHandleW(nullptr);
    own.lpszClassName = kClass;
    return RegisterClassW(&own) != 0;
}

void Connections::Open(std::uint32_t id, HWND tool) {
    theConnections = this;
    Close(id);
    // A message-only window needs no display.
    HWND own = CreateWindowExW(0, kClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               GetModuleHandleW(nullptr), nullptr);
    if (own != nullptr) {
        SetWindowLongPtrW(own, GWLP_USERDATA, static_cast<LONG_PTR>(id));
        m_connections[id] = {tool, own};
    }
}

void Connections::Close(std::uint32_t id) {
    const auto found = m_connections.find(id);
    if (found != m_connections.end()) {
        DestroyWindow(found->second.own);
        m_connections.erase(found);
    }
}

void Connections::CloseDead() {
    std::erase_if(m_connections, [](const auto& entry) {
        const bool dead = IsWindow(entry.second.tool) == FALSE;
        if (dead) {
            DestroyWindow(entry.second.own);
        }
        return dead;
    });
}

void Connections::Send(std::uint32_t id, std::uint32_t number, std::uint32_t wParam,
                       std::int32_t lParam) {
    const auto found = m_connections.find(id);
    if (found == m_connections.end() || !IsForPrograms(number)) {
        WriteResult(id, 0);
        return;
    }
    const auto& [tool, own] = found->second;
    const WPARAM first = number == kRegister ? std::bit_cast<WPARAM>(own) : wParam;
    // A tool that hangs holds up nobody: it gets the message, and gives the result, when it is
    // back.
    if (SendMessageCallbackW(tool, number, first, lParam, &Answered, id) == FALSE) {
        WriteResult(id, 0);
    }
}

void CALLBACK Connections::Answered(HWND /*tool*/, UINT /*number*/, ULONG_PTR id, LRESULT result) {
    const auto connection = static_cast<std::uint32_t>(id);
    if (theConnections != nullptr && theConnections->m_connections.contains(connection)) {
        theConnections->WriteResult(connection, static_cast<std::int32_t>(result));
    }
}

void Connections::WriteResult(std::uint32_t id, std::int32_t result) {
    m_pipes.Write(WrittenBridgeLine({id, BridgeVerb::kResult, {result}, {}}));
}

LRESULT CALLBACK Connections::Procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
    if (!IsForPrograms(number) || theConnections == nullptr) {
        return DefWindowProcW(window, number, wParam, lParam);
    }
    // Answered at once: the tool does not wait for another program beyond Wine.
    const auto id = static_cast<std::uint32_t>(GetWindowLongPtrW(window, GWLP_USERDATA));
    theConnections->m_pipes.Write(WrittenBridgeLine(
        {id,
         BridgeVerb::kSend,
         {number, static_cast<std::int32_t>(wParam), static_cast<std::int32_t>(lParam)},
         {}}));
    return 0;
}

}  // namespace spellwick::bridge
