#include "platform/windows/mutex_owner.h"

#include <bit>
#include <chrono>
#include <thread>

#include "platform/windows/folder_name.h"
#include "platform/windows/wide_text.h"

namespace spellwick {

namespace {

std::wstring NameOf(const std::wstring& folder) {
    return L"Spellwick-" + FolderName(folder);
}

struct Search {
    const std::wstring& name;
    HWND found = nullptr;
};

BOOL CALLBACK LookAt(HWND window, LPARAM parameter) {
    auto* const search = std::bit_cast<Search*>(parameter);
    if (GetPropW(window, search->name.c_str()) == nullptr) {
        return TRUE;
    }
    search->found = window;
    return FALSE;
}

}  // namespace

MutexOwner::~MutexOwner() {
    CloseHandle(m_mutex);
}

void MutexOwner::SetWindow(WindowHandle window) {
    const HWND own = HwndOf(window);
    SetPropW(own, m_name.c_str(), own);
}

Ownership OwnByMutex(const std::wstring& folder) {
    const std::wstring name = NameOf(folder);
    // "Local": the users of one computer do not meet.
    const HANDLE mutex = CreateMutexW(nullptr, TRUE, (L"Local\\" + name).c_str());
    if (mutex == nullptr) {
        // One that runs as administrator keeps its mutex from one that does not.
        return {.another = GetLastError() == ERROR_ACCESS_DENIED, .owner = nullptr};
    }
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        CloseHandle(mutex);
        return {.another = true, .owner = nullptr};
    }
    return {.another = false, .owner = std::make_unique<MutexOwner>(mutex, name)};
}

bool RaiseOwner(const std::wstring& folder) {
    constexpr int kTries = 10;
    const std::wstring name = NameOf(folder);
    Search search{.name = name};
    // A program that is only starting has no window yet.
    for (int tries = 0; tries < kTries && search.found == nullptr; ++tries) {
        EnumWindows(LookAt, std::bit_cast<LPARAM>(&search));
        if (search.found == nullptr) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
    if (search.found == nullptr) {
        return false;
    }
    if (IsIconic(search.found) != 0) {
        ShowWindow(search.found, SW_RESTORE);
    }
    return SetForegroundWindow(search.found) != 0;
}

}  // namespace spellwick
