#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstdlib>
#include <cstring>

#include "platform/windows/wide_text.h"
#include "platform/windows_services.h"

namespace {

constexpr char SEPARATORS[] = "\\/";

// The length of "C:\", or of "\\server\share\", or 1.
size_t root_length(const char *path) {
    if (path[0] != '\0' && path[1] == ':') {
        return 3;
    }
    if (strspn(path, SEPARATORS) < 2) {
        return 1;
    }
    const char *share = path + 2 + strcspn(path + 2, SEPARATORS);
    share += *share == '\0' ? 0 : 1;
    return static_cast<size_t>(share - path) + strcspn(share, SEPARATORS) + 1;
}

entry_kind kind_without_surplus(const char *path) {
    struct _stat64 status;
    if (path == nullptr || _stat64(path, &status) != 0) {
        return entry_kind::missing;
    }
    return (status.st_mode & S_IFMT) == S_IFDIR ? entry_kind::directory : entry_kind::file;
}

} // namespace

// The runtime knows no path that ends in a separator, unless it is a root.
entry_kind kind_of(const char *path) {
    const size_t length = strlen(path);
    if (length <= root_length(path) || strchr(SEPARATORS, path[length - 1]) == nullptr) {
        return kind_without_surplus(path);
    }
    char *entry = strdup(path);
    if (entry != nullptr) {
        entry[length - 1] = '\0';
    }
    const entry_kind kind = kind_without_surplus(entry);
    free(entry);
    return kind;
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
