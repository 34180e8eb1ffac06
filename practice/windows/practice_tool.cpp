// spellwick-practice-tool for Windows: a stand-in for an assist tool. It registers one window,
// counts the stock of a pack when asked, and reports what its buttons say.
#include <array>
#include <bit>

#include <windows.h>

#include "practice/tool_numbers.h"
#include "practice/windows/program.h"

namespace spellwick::practice {
namespace {

constexpr const wchar_t* kToolClass = L"Spellwick practice tool";

struct Button {
    const wchar_t* text;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

constexpr std::array<Button, 5> kButtons{{
    {L"Magery 100, Intelligence 100, mana 100", kMageryMessage, 100, 0},
    {L"The first spell was cast", kCastMessage, 1, 0},
    {L"The sixth spell was cast", kCastMessage, 6, 0},
    {L"Mana has fallen to 20", kManaMessage, 100, 20},
    {L"Say that the tool is there", kLoginMessage, 0, 0},
}};
constexpr UINT kFirstButton = 100;

HWND Registered(HWND window) {
    return std::bit_cast<HWND>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// The timeout keeps a hung program from hanging the tool.
void Report(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr UINT kPatience = 5000;
    DWORD_PTR ignored = 0;
    SendMessageTimeoutW(Registered(window), message, wParam, lParam, SMTO_NORMAL, kPatience,
                        &ignored);
}

void Press(HWND window, const Button& button) {
    Report(window, button.message, button.wParam, button.lParam);
    if (button.message == kMageryMessage) {
        Report(window, kManaMessage, 100, 100);
    }
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case kRegisterMessage:
            // There is room for one; registering again removes it, as in real tools.
            if (std::bit_cast<HWND>(wParam) == Registered(window)) {
                SetWindowLongPtrW(window, GWLP_USERDATA, 0);
                return 0;
            }
            SetWindowLongPtrW(window, GWLP_USERDATA, static_cast<LONG_PTR>(wParam));
            return 1;
        case kCountMessage:
            for (const StockItem& item : kStockItems) {
                Report(window, kStockMessage, static_cast<WPARAM>(item.number), item.atStart);
            }
            return 0;
        case WM_COMMAND:
            if (const UINT button = LOWORD(wParam) - kFirstButton; button < kButtons.size()) {
                Press(window, kButtons.at(button));
            }
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace
}  // namespace spellwick::practice

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*before*/, PWSTR /*line*/, int show) {
    using namespace spellwick::practice;
    constexpr int kWidth = 320;
    constexpr int kButtonHeight = 28;
    constexpr int kStep = 34;
    constexpr int kMargin = 8;
    RegisterWindowClass(instance, kToolClass, &Procedure, COLOR_BTNFACE);

    constexpr DWORD kStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    RECT frame{0, 0, kWidth, kMargin + static_cast<int>(kButtons.size()) * kStep};
    AdjustWindowRect(&frame, kStyle, FALSE);
    HWND window = CreateWindowExW(0, kToolClass, L"UOAssist (practice)", kStyle, 620, 220,
                                  frame.right - frame.left, frame.bottom - frame.top, nullptr,
                                  nullptr, instance, nullptr);
    if (window == nullptr) {
        return 1;
    }
    for (std::size_t i = 0; i < kButtons.size(); ++i) {
        CreateWindowExW(0, L"BUTTON", kButtons.at(i).text, WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                        kMargin, kMargin + static_cast<int>(i) * kStep, kWidth - 2 * kMargin,
                        kButtonHeight, window, std::bit_cast<HMENU>(kFirstButton + i), instance,
                        nullptr);
    }
    ShowWindow(window, show);
    RunMessages(window);
    return 0;
}
