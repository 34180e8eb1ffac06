/* A program for documents: beside the document that it is started with it leaves a file of the same
 * name with ".opened" behind it.
 *   opener DOCUMENT
 */
#include <stdio.h>
#include <windows.h>

int wmain(int argc, wchar_t** argv) {
    wchar_t mark[MAX_PATH];
    if (argc != 2 || swprintf(mark, MAX_PATH, L"%ls.opened", argv[1]) < 0) {
        return 2;
    }
    HANDLE file = CreateFileW(mark, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, 0, NULL);
    if (file == INVALID_HANDLE_VALUE) {
        return 3;
    }
    CloseHandle(file);
    return 0;
}
