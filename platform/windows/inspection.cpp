#include "platform/inspection.h"

#include <io.h>

#include <cstdlib>
#include <cstring>

#include "platform/windows_services.h"

namespace {

constexpr DWORD SHARED = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE open_existing(const char *path, DWORD access, DWORD flags = 0) {
    return CreateFileA(path, access, SHARED, nullptr, OPEN_EXISTING, flags, nullptr);
}

bool close_opened(HANDLE handle) {
    return handle != INVALID_HANDLE_VALUE && CloseHandle(handle);
}

bool could_be_made(const char *path) {
    const char *last = strrchr(path, '\\');
    char *folder = _strdup(path);
    if (last == nullptr || last[1] == '\0' || folder == nullptr) {
        free(folder);
        return false;
    }
    folder[last + 1 - path] = '\0';
    const HANDLE handle = open_existing(folder, FILE_ADD_FILE, FILE_FLAG_BACKUP_SEMANTICS);
    free(folder);
    return close_opened(handle);
}

} // namespace

// What is hidden or the system's cannot be emptied by opening it.
bool could_be_written(const char *path) {
    if (close_opened(open_existing(path, GENERIC_READ | GENERIC_WRITE))) {
        return (GetFileAttributesA(path) & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) == 0;
    }
    return GetLastError() == ERROR_FILE_NOT_FOUND && could_be_made(path);
}

DWORD error_of_program(const char *path) {
    DWORD kind;
    if (GetBinaryTypeA(path, &kind)) {
        return ERROR_SUCCESS;
    }
    const DWORD error = GetLastError(); // none for what is only no program, under Wine
    return error == ERROR_SUCCESS ? DWORD{ERROR_BAD_EXE_FORMAT} : error;
}

char *bytes_of_file(const char *path, size_t *size) {
    const HANDLE file = open_existing(path, GENERIC_READ);
    LARGE_INTEGER length = {};
    char *bytes = nullptr;
    if (file != INVALID_HANDLE_VALUE && GetFileSizeEx(file, &length) && length.HighPart == 0) {
        bytes = static_cast<char *>(malloc(static_cast<size_t>(length.LowPart) + 1));
    }
    if (bytes != nullptr) {
        DWORD read = 0;
        *size = ReadFile(file, bytes, length.LowPart, &read, nullptr) ? read : 0;
        bytes[*size] = '\0';
    }
    close_opened(file);
    return bytes;
}

void list_folder(const char *folder, void (*take)(void *context, const char *name), void *context) {
    constexpr char ALL[] = "\\*";
    const size_t length = strlen(folder);
    char *pattern = static_cast<char *>(malloc(length + sizeof ALL));
    if (pattern == nullptr) {
        return;
    }
    memcpy(pattern, folder, length);
    memcpy(pattern + length, ALL, sizeof ALL);
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA(pattern, &entry);
    free(pattern);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        take(context, entry.cFileName);
    } while (FindNextFileA(search, &entry));
    FindClose(search);
}

int columns_of(FILE *stream) {
    CONSOLE_SCREEN_BUFFER_INFO screen;
    const HANDLE console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    return GetConsoleScreenBufferInfo(console, &screen) ? screen.dwSize.X : 0;
}
