/* An assist tool in Wine. It registers windows as such tools do, a second time takes one out again,
 * and counts and reports as one of the kinds that there are.
 *   wine_tool KIND CLASS TITLE
 * KIND: "uoassist" and "razor" report stock when asked to count, the latter posts; the others answer
 * and say nothing. A test steers it by messages: WM_APP + 1 sends a report with wParam and lParam, of
 * the number that WM_APP + 2 has set before; WM_APP + 3 posts wParam stock reports that count up,
 * WM_APP + 4 sends them; WM_APP + 5 hangs for wParam milliseconds once it has answered; WM_APP + 6
 * tells how many windows are registered; WM_APP + 7 ends it at once; WM_APP + 8 gives its window the
 * title with an "X" behind it; WM_APP + 9 tells the number of the last other message.
 */
#include <wchar.h>
#include <windows.h>

#define REGISTER 0x4C8
#define COUNT 0x465
#define STOCK 0x52D
#define MOST 16

static HWND registered[MOST];
static int count;
static UINT number = STOCK;
static UINT last;
static int counts;
static int posts;

static LRESULT Register(HWND window) {
    for (int i = 0; i < count; ++i) {
        if (registered[i] == window) {
            registered[i] = registered[--count];
            return 2;
        }
    }
    if (count == MOST || !IsWindow(window)) {
        return 0;
    }
    registered[count++] = window;
    return 1;
}

static void Report(UINT what, WPARAM wParam, LPARAM lParam, int posted) {
    for (int i = count - 1; i >= 0; --i) {
        if (!IsWindow(registered[i])) {
            registered[i] = registered[--count];
        } else if (posted) {
            PostMessageW(registered[i], what, wParam, lParam);
        } else {
            SendMessageW(registered[i], what, wParam, lParam);
        }
    }
}

static void Count(void) {
    static const int pack[][2] = {{1, 80},   {2, 120},  {3, 60},   {4, 60},   {5, 150},
                                  {6, 40},   {7, 90},   {8, 75},   {100, 30}, {101, 20},
                                  {102, 40}, {103, 15}, {104, 25}, {200, 15000}};
    for (size_t i = 0; counts && i < sizeof pack / sizeof *pack; ++i) {
        Report(STOCK, (WPARAM)pack[i][0], pack[i][1], posts);
    }
}

static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case REGISTER:
            return Register((HWND)wParam);
        case COUNT:
            Count();
            return 0;
        case WM_APP + 1:
            Report(number, wParam, lParam, 0);
            return 1;
        case WM_APP + 2:
            number = (UINT)wParam;
            return 1;
        case WM_APP + 3:
        case WM_APP + 4:
            for (WPARAM i = 1; i <= wParam; ++i) {
                Report(STOCK, 1, (LPARAM)i, message == WM_APP + 3);
            }
            return 1;
        case WM_APP + 5:
            ReplyMessage(1);
            Sleep((DWORD)wParam);
            return 1;
        case WM_APP + 6:
            return count;
        case WM_APP + 7:
            ExitProcess(0);
        case WM_APP + 8: {
            wchar_t title[512];
            GetWindowTextW(window, title, 500);
            wcscat(title, L"X");
            return SetWindowTextW(window, title);
        }
        case WM_APP + 9:
            return (LRESULT)last;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
    }
    if (message >= WM_USER && message < 0xC000) {
        last = message;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int wmain(int argc, wchar_t** argv) {
    if (argc != 4) {
        return 2;
    }
    posts = wcscmp(argv[1], L"razor") == 0;
    counts = posts || wcscmp(argv[1], L"uoassist") == 0;
    WNDCLASSW windowClass = {0};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(NULL);
    windowClass.lpszClassName = argv[2];
    if (RegisterClassW(&windowClass) == 0 ||
        CreateWindowExW(0, argv[2], argv[3], WS_OVERLAPPEDWINDOW, 400, 50, 200, 100, NULL, NULL,
                        windowClass.hInstance, NULL) == NULL) {
        return 3;
    }
    MSG message;
    while (GetMessageW(&message, NULL, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
