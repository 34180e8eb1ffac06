/* Windows program: a window that appends each line that is typed into it to a file. It is an edit
 * control, or a window that reads WM_KEYDOWN and the state of Shift alone.
 *   typing_window edit|keydown FILE
 */
#include <stdio.h>
#include <string.h>
#include <windows.h>

static FILE *lines;
static char text[512];
static int length;
static WNDPROC edit_procedure;

static void write_line(const char *line) {
    fprintf(lines, "%s\n", line);
    fflush(lines);
}

static char character_of(WPARAM key) {
    const int shift = GetKeyState(VK_SHIFT) < 0;
    if (key >= 'A' && key <= 'Z') {
        return (char)(shift ? key : key - 'A' + 'a');
    }
    if (key >= '0' && key <= '9') {
        return (char)(shift ? '#' : key);
    }
    return key == VK_SPACE ? ' ' : key == VK_OEM_PERIOD ? '.' : '?';
}

static LRESULT CALLBACK by_keydown(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
    } else if (message == WM_KEYDOWN && w == VK_RETURN) {
        text[length] = 0;
        write_line(text);
        length = 0;
    } else if (message == WM_KEYDOWN && w != VK_SHIFT && length < 500) {
        text[length++] = character_of(w);
    }
    return DefWindowProcA(window, message, w, l);
}

static LRESULT CALLBACK edit(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_KEYDOWN && w == VK_RETURN) {
        GetWindowTextA(window, text, sizeof text);
        write_line(text);
        SetWindowTextA(window, "");
    }
    if (message == WM_CHAR && w == VK_RETURN) {
        return 0;
    }
    return CallWindowProcA(edit_procedure, window, message, w, l);
}

int main(int argc, char **argv) {
    WNDCLASSA window_class = {0};
    HWND window;
    MSG message;
    if (argc != 3 || !(lines = fopen(argv[2], "a"))) {
        return 2;
    }
    window_class.lpfnWndProc = by_keydown;
    window_class.lpszClassName = "typing window";
    window_class.hInstance = GetModuleHandleA(NULL);
    RegisterClassA(&window_class);
    window = CreateWindowA("typing window", "typing entry", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20,
                           400, 120, NULL, NULL, window_class.hInstance, NULL);
    if (strcmp(argv[1], "edit") == 0) {
        HWND control = CreateWindowA("EDIT", "", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0, 390,
                                     30, window, NULL, window_class.hInstance, NULL);
        edit_procedure = (WNDPROC)SetWindowLongPtrA(control, GWLP_WNDPROC, (LONG_PTR)edit);
        SetFocus(control);
    }
    while (GetMessageA(&message, NULL, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}
