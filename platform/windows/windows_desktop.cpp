#include "platform/windows/windows_desktop.h"

#include <cwchar>
#include <system_error>

#include <shlwapi.h>
#include <windows.h>

#include "platform/windows/wide_text.h"

namespace spellwick {

namespace {

// The shell reports success by values above this.
constexpr INT_PTR kLastShellError = 32;

bool Open(const std::wstring& what) {
    // Errors are returned as numbers in the form of a handle.
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", what.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > kLastShellError;
}

bool OpenWith(const std::wstring& program, const std::wstring& file) {
    const std::wstring argument = L"\"" + file + L"\"";
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", program.c_str(), argument.c_str(), nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > kLastShellError;
}

// The program for files of this kind; empty if there is none.
std::wstring ProgramFor(const wchar_t* extension) {
    std::wstring program(MAX_PATH, L'\0');
    auto size = static_cast<DWORD>(program.size());
    if (AssocQueryStringW(ASSOCF_INIT_IGNOREUNKNOWN, ASSOCSTR_EXECUTABLE, extension, L"open",
                          program.data(), &size) != S_OK) {
        return {};
    }
    program.resize(std::wcslen(program.c_str()));
    return program;
}

// The help is rich text with an old file extension, which Windows no longer has a program for. A
// system without any program for rich text still has one for plain text.
bool OpenAsText(const std::wstring& file) {
    const std::wstring program = ProgramFor(L".rtf");
    return (!program.empty() && OpenWith(program, file)) || OpenWith(L"notepad.exe", file);
}

}  // namespace

void WindowsDesktop::Beep() {
    MessageBeep(MB_OK);
}

bool WindowsDesktop::OpenDocument(const std::filesystem::path& file) {
    std::error_code trouble;
    if (!std::filesystem::is_regular_file(file, trouble)) {
        return false;
    }
    return Open(file.wstring()) || OpenAsText(file.wstring());
}

// A program for rich text opens the help too.
bool WindowsDesktop::HasProgramFor(const std::filesystem::path& file) {
    return !ProgramFor(file.extension().c_str()).empty() || !ProgramFor(L".rtf").empty();
}

bool WindowsDesktop::OpenWebPage(const std::string& address) {
    return Open(WideFromUtf8(address));
}

bool WindowsDesktop::SetTopMost(WindowHandle window, bool topMost) {
    return window != 0 &&
           SetWindowPos(HwndOf(window), topMost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                        SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER) != FALSE;
}

bool WindowsDesktop::LeaveTaskList(WindowHandle window) {
    HWND own = HwndOf(window);
    if (window == 0 || IsWindow(own) == FALSE) {
        return false;
    }
    // The taskbar reads these when the window is shown.
    const LONG_PTR style = GetWindowLongPtrW(own, GWL_EXSTYLE);
    SetWindowLongPtrW(own, GWL_EXSTYLE, (style | WS_EX_TOOLWINDOW) & ~LONG_PTR{WS_EX_APPWINDOW});
    return (GetWindowLongPtrW(own, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) != 0;
}

}  // namespace spellwick
