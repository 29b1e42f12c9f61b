#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstdlib>

#include "platform/windows/wide_text.h"
#include "platform/windows_services.h"

entry_kind kind_of(const char *path) {
    struct stat status;
    if (stat(path, &status) != 0) {
        return entry_kind::missing;
    }
    return (status.st_mode & S_IFMT) == S_IFDIR ? entry_kind::directory : entry_kind::file;
}

// fopen() has no sign for the handle's inheritance that every msvcrt.dll knows.
FILE *open_text_file(const char *path, const char *mode) {
    const bool reads = *mode == 'r';
    const int kind = reads ? _O_RDONLY : _O_RDWR | _O_CREAT | _O_TRUNC;
    const int descriptor = _open(path, kind | _O_TEXT | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    FILE *file = descriptor < 0 ? nullptr : _fdopen(descriptor, mode);
    if (file == nullptr && descriptor >= 0) {
        _close(descriptor);
    }
    return file;
}

// The runtime's _getcwd() holds 260 bytes.
char *current_directory() {
    const DWORD size = GetCurrentDirectoryW(0, nullptr);
    wchar_t *wide = static_cast<wchar_t *>(malloc(size * sizeof(wchar_t)));
    const DWORD length = wide == nullptr ? 0 : GetCurrentDirectoryW(size, wide);
    char *directory =
        length == 0 || length >= size ? nullptr : narrow_text(wide, static_cast<int>(length));
    free(wide);
    return directory;
}
