/* A library to plant where it must not be found: whoever loads it makes the file <its path>.loaded. */

#include "platform/windows_services.h"

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID reserved) {
    (void)reserved;
    if (reason == DLL_PROCESS_ATTACH) {
        char mark[2 * MAX_PATH];
        GetModuleFileNameA(library, mark, MAX_PATH);
        lstrcatA(mark, ".loaded");
        CloseHandle(CreateFileA(mark, GENERIC_WRITE, 0, NULL, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, NULL));
    }
    return TRUE;
}
