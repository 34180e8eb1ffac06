/* A window like the game client's: of the class and with the title told, it writes down the key
 * messages that it gets, one line each.
 *   client_window CLASS TITLE JOURNAL
 * A test steers it by messages: WM_APP is answered with 1; WM_APP + 1 hangs for wParam
 * milliseconds; WM_APP + 2 gives it the title of wParam letters lParam; WM_APP + 3 changes the
 * title again and again for wParam milliseconds; WM_APP + 4 tells the state of the lock key wParam.
 */
#include <stdio.h>
#include <windows.h>

static FILE* journal;

static void Note(const char* what, WPARAM wParam, LPARAM lParam) {
    fprintf(journal, "%s %u %u%s\n", what, (unsigned)wParam, (unsigned)(lParam >> 16) & 0xff,
            (lParam & (1 << 24)) != 0 ? " prefixed" : "");
    fflush(journal);
}

static void SetLongTitle(HWND window, size_t length, wchar_t letter) {
    wchar_t* title = malloc((length + 1) * sizeof *title);
    for (size_t i = 0; i < length; ++i) {
        title[i] = letter;
    }
    title[length] = 0;
    SetWindowTextW(window, title);
    free(title);
}

static void ChangeTitles(HWND window, DWORD milliseconds) {
    const DWORD start = GetTickCount();
    for (size_t length = 0; GetTickCount() - start < milliseconds; length = (length + 37) % 500) {
        SetLongTitle(window, length, L'x');
    }
}

static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_KEYDOWN:
            Note("down", wParam, lParam);
            break;
        case WM_KEYUP:
            Note("up", wParam, lParam);
            break;
        case WM_SYSKEYDOWN:
            Note("sysdown", wParam, lParam);
            break;
        case WM_SYSKEYUP:
            Note("sysup", wParam, lParam);
            return 0; /* No menu by the Alt key. */
        case WM_CHAR:
            Note("char", wParam, 0);
            return 0;
        case WM_SYSCHAR:
            Note("syschar", wParam, 0);
            return 0;
        case WM_APP:
            return 1;
        case WM_APP + 1:
            Sleep((DWORD)wParam);
            return 1;
        case WM_APP + 2:
            SetLongTitle(window, wParam, (wchar_t)lParam);
            return 1;
        case WM_APP + 3:
            ChangeTitles(window, (DWORD)wParam);
            return 1;
        case WM_APP + 4:
            return GetKeyState((int)wParam) & 1;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

int wmain(int argc, wchar_t** argv) {
    if (argc != 4) {
        return 2;
    }
    journal = _wfopen(argv[3], L"wb");
    WNDCLASSW windowClass = {0};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(NULL);
    windowClass.lpszClassName = argv[1];
    if (journal == NULL || RegisterClassW(&windowClass) == 0) {
        return 3;
    }
    HWND window = CreateWindowExW(0, argv[1], argv[2], WS_OVERLAPPEDWINDOW, 50, 50, 300, 200, NULL,
                                  NULL, windowClass.hInstance, NULL);
    ShowWindow(window, SW_SHOWNORMAL);
    UpdateWindow(window);
    MSG message;
    while (GetMessageW(&message, NULL, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    fclose(journal);
    return 0;
}
