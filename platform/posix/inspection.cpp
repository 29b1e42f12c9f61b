#include "platform/inspection.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "platform/posix/last_error.h"
#include "platform/posix/paths.h"

bool could_be_written(const char *path) {
    char name[PATH_MAX];
    struct stat status;
    if (unix_path(path, name) == 0) {
        return false;
    }
    if (stat(name, &status) == 0) {
        return !S_ISDIR(status.st_mode) && access(name, R_OK | W_OK) == 0;
    }
    char *last = errno == ENOENT ? strrchr(name, '/') : nullptr;
    if (last == nullptr || last[1] == '\0') {
        return false;
    }
    last[1] = '\0';
    return access(name, W_OK | X_OK) == 0;
}

DWORD error_of_program(const char *path) {
    char name[PATH_MAX];
    char first[4] = {};
    if (unix_path(path, name) == 0) {
        return GetLastError();
    }
    if (access(name, X_OK) != 0) {
        return windows_error(errno);
    }
    const int file = open(name, O_RDONLY | O_CLOEXEC);
    const bool is_read = file >= 0 && read(file, first, sizeof first) >= 0;
    close(file);
    const bool is_program = memcmp(first, "\177ELF", 4) == 0 || memcmp(first, "#!", 2) == 0;
    return is_program || !is_read ? DWORD{ERROR_SUCCESS} : DWORD{ERROR_BAD_EXE_FORMAT};
}

char *bytes_of_file(const char *path, size_t *size) {
    char name[PATH_MAX];
    struct stat status;
    const int file = unix_path(path, name) == 0 ? -1 : open(name, O_RDONLY | O_CLOEXEC);
    char *bytes = nullptr;
    if (file >= 0 && fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        bytes = static_cast<char *>(malloc(static_cast<size_t>(status.st_size) + 1));
    }
    if (bytes != nullptr) {
        const ssize_t length = read(file, bytes, static_cast<size_t>(status.st_size));
        *size = length < 0 ? 0 : static_cast<size_t>(length);
        bytes[*size] = '\0';
    }
    close(file);
    return bytes;
}

void list_folder(const char *folder, void (*take)(void *context, const char *name), void *context) {
    char name[PATH_MAX];
    DIR *directory = unix_path(folder, name) == 0 ? nullptr : opendir(name);
    while (directory != nullptr) {
        const dirent *entry = readdir(directory);
        if (entry == nullptr) {
            closedir(directory);
            return;
        }
        take(context, entry->d_name);
    }
}

int columns_of(FILE *stream) {
    winsize size;
    constexpr int USUAL = 80;
    if (!isatty(fileno(stream))) {
        return 0;
    }
    const bool is_told = ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return is_told ? size.ws_col : USUAL;
}
