/* An assist tool with the title told: it registers one window, counts and reports to it.
 *   assist_tool TITLE [WINDOWS]
 * WINDOWS more windows, hidden and without a title, crowd the desktop.
 * A test steers it by messages: WM_APP is answered with 1; WM_APP + 1 sets what the registration
 * answers; WM_APP + 2 tells how often it was asked; WM_APP + 3 tells the registered window;
 * WM_APP + 4 tells the other argument of the last registration; WM_APP + 5 sets the number of the
 * reports, wParam 1 that they are posted; WM_APP + 6 reports its two arguments, by sending with the
 * answer handed on; WM_APP + 7 posts so many reports as wParam says, each with its number as count;
 * WM_APP + 8 hangs for wParam milliseconds, at once; WM_APP + 9 makes the next count hang for so
 * long; WM_APP + 10 makes the next registrations take so long, in which other messages are served, as
 * in a box that is shown there.
 */
#include <stdlib.h>
#include <windows.h>

#define REGISTER 0x4C8
#define COUNT 0x465
#define STOCK 0x52D

static HWND registered;
static LRESULT answer = 1;
static int asked;
static LPARAM argument;
static UINT number = STOCK;
static BOOL posts;
static DWORD hang;
static DWORD box;

static LRESULT Report(UINT what, WPARAM wParam, LPARAM lParam) {
    if (posts) {
        return PostMessageW(registered, what, wParam, lParam) ? 0 : -1;
    }
    return SendMessageW(registered, what, wParam, lParam);
}

static void Count(void) {
    static const int counted[] = {1, 2, 3, 4, 5, 6, 7, 8, 100, 101, 102, 103, 104, 200};
    for (size_t i = 0; i < sizeof counted / sizeof *counted; ++i) {
        Report(STOCK, (WPARAM)counted[i], 1000 + counted[i]);
    }
}

static void ServeFor(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < milliseconds) {
        MSG message;
        MsgWaitForMultipleObjects(0, NULL, FALSE, 10, QS_ALLINPUT);
        while (PeekMessageW(&message, NULL, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
}

static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case REGISTER:
            ++asked;
            ServeFor(box);
            registered = (HWND)wParam;
            argument = lParam;
            return answer;
        case COUNT:
            Sleep(hang);
            hang = 0;
            Count();
            return 0;
        case WM_APP:
            return 1;
        case WM_APP + 1:
            answer = (LRESULT)wParam;
            return 1;
        case WM_APP + 2:
            return asked;
        case WM_APP + 3:
            return (LRESULT)registered;
        case WM_APP + 4:
            return argument;
        case WM_APP + 5:
            number = (UINT)lParam;
            posts = wParam == 1;
            return 1;
        case WM_APP + 6:
            return Report(number, wParam, lParam);
        case WM_APP + 7:
            for (WPARAM i = 1; i <= wParam; ++i) {
                PostMessageW(registered, number, 1, (LPARAM)i);
            }
            return 1;
        case WM_APP + 8:
            Sleep((DWORD)wParam);
            return 1;
        case WM_APP + 9:
            hang = (DWORD)wParam;
            return 1;
        case WM_APP + 10:
            box = (DWORD)wParam;
            return 1;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int wmain(int argc, wchar_t** argv) {
    if (argc < 2) {
        return 2;
    }
    WNDCLASSW windowClass = {0};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(NULL);
    windowClass.lpszClassName = L"assist tool";
    if (RegisterClassW(&windowClass) == 0) {
        return 3;
    }
    for (int i = 0, last = argc > 2 ? _wtoi(argv[2]) : 0; i < last; ++i) {
        /* Made where nothing is drawn, and brought up from there: that is much faster. */
        HWND window = CreateWindowExW(WS_EX_TOOLWINDOW, windowClass.lpszClassName, NULL, WS_POPUP,
                                      0, 0, 0, 0, HWND_MESSAGE, NULL, windowClass.hInstance, NULL);
        if (window == NULL || SetParent(window, NULL) == NULL) {
            return 4;
        }
    }
    CreateWindowExW(0, windowClass.lpszClassName, argv[1], WS_OVERLAPPEDWINDOW, 400, 50, 200, 100,
                    NULL, NULL, windowClass.hInstance, NULL);
    MSG message;
    while (GetMessageW(&message, NULL, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
