#include "tests/platform/windows/peer_process.h"

#include <stdexcept>

namespace spellwick::testing_support {

PeerProcess::PeerProcess(const std::wstring& program, const std::vector<std::wstring>& arguments,
                         const std::wstring& title) {
    std::wstring own(MAX_PATH, L'\0');
    own.resize(GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size())));
    const std::wstring path = own.substr(0, own.rfind(L'\\') + 1) + program + L".exe";
    std::wstring line = L"\"" + path + L"\"";
    for (const std::wstring& argument : arguments) {
        line += L" \"" + argument + L"\"";
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &start, &m_process) == FALSE) {
        throw std::runtime_error("the peer does not start");
    }
    const bool appeared = WaitUntil(
        [&] {
            m_window = nullptr;
            HWND candidate = nullptr;
            do {
                candidate = FindWindowExW(nullptr, candidate, nullptr, title.c_str());
                DWORD process = 0;
                GetWindowThreadProcessId(candidate, &process);
                if (candidate != nullptr && process == m_process.dwProcessId) {
                    m_window = candidate;
                }
            } while (candidate != nullptr && m_window == nullptr);
            return m_window != nullptr;
        },
        std::chrono::seconds(90));
    if (!appeared || Ask(0) != 1) {
        End();
        throw std::runtime_error("the peer shows no window that answers");
    }
}

LRESULT PeerProcess::Ask(UINT command, WPARAM wParam, LPARAM lParam) const {
    constexpr UINT kPatience = 20000;
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(m_window, WM_APP + command, wParam, lParam, SMTO_NORMAL, kPatience,
                            &answer) == 0) {
        throw std::runtime_error("the peer does not answer");
    }
    return static_cast<LRESULT>(answer);
}

void PeerProcess::End() {
    if (m_process.hProcess == nullptr) {
        return;
    }
    TerminateProcess(m_process.hProcess, 0);
    WaitForSingleObject(m_process.hProcess, INFINITE);
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
    m_process = {};
}

}  // namespace spellwick::testing_support
