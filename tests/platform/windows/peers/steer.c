/* Sends one message to the window whose title starts with a text, and prints what it answers.
 *   steer TITLE MESSAGE WPARAM LPARAM
 * MESSAGE "close" asks the window to close, "log-off" does what the system does when the user logs
 * off, "log-off called off" the same when another program prevents it; none is waited for.
 */
#include <stdio.h>
#include <wchar.h>
#include <windows.h>

static const wchar_t* wanted;
static HWND found;

static BOOL CALLBACK Visit(HWND window, LPARAM unused) {
    wchar_t title[512];
    (void)unused;
    GetWindowTextW(window, title, 512);
    if (wcsncmp(title, wanted, wcslen(wanted)) == 0 && IsWindowVisible(window)) {
        found = window;
    }
    return TRUE;
}

static int LogOff(BOOL ends) {
    return PostMessageW(found, WM_QUERYENDSESSION, 0, (LPARAM)ENDSESSION_LOGOFF) &&
                   PostMessageW(found, WM_ENDSESSION, ends, (LPARAM)ENDSESSION_LOGOFF)
               ? 0
               : 4;
}

int wmain(int argc, wchar_t** argv) {
    if (argc != 5) {
        return 2;
    }
    wanted = argv[1];
    EnumWindows(Visit, 0);
    if (found == NULL) {
        /* A window that is not shown: the assist tool's. */
        found = FindWindowW(NULL, wanted);
    }
    if (found == NULL) {
        return 3;
    }
    if (wcscmp(argv[2], L"close") == 0) {
        return PostMessageW(found, WM_CLOSE, 0, 0) ? 0 : 4;
    }
    if (wcscmp(argv[2], L"log-off") == 0) {
        return LogOff(TRUE);
    }
    if (wcscmp(argv[2], L"log-off called off") == 0) {
        return LogOff(FALSE);
    }
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(found, (UINT)wcstoul(argv[2], NULL, 0),
                            (WPARAM)wcstoll(argv[3], NULL, 0), (LPARAM)wcstoll(argv[4], NULL, 0),
                            SMTO_NORMAL, 20000, &answer) == 0) {
        return 5;
    }
    printf("%lld\n", (long long)answer);
    return 0;
}
