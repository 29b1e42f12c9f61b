#include "platform/files.h"

#include <direct.h>
#include <sys/stat.h>

entry_kind kind_of(const char *path) {
    struct stat status;
    if (stat(path, &status) != 0) {
        return entry_kind::missing;
    }
    return (status.st_mode & S_IFMT) == S_IFDIR ? entry_kind::directory : entry_kind::file;
}

FILE *open_text_file(const char *path, const char *mode) {
    return fopen(path, mode);
}

char *current_directory() {
    return _getcwd(nullptr, 0);
}
