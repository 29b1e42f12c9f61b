#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/posix/paths.h"

namespace {

constexpr char CTRL_Z = 0x1A;
constexpr int NOTHING = -1;

// The full path of the entry that stat() of the Windows runtime asks for. A bare drive names
// nothing there, and of several separators at the end only one is forgiven, except after a drive.
bool status_path(std::string_view path, std::span<char> full) {
    if (path.empty() || (path.size() == 2 && path[1] == ':')) {
        return false;
    }
    if (path.size() > 1 && is_separator(path[0]) && is_separator(path[1])) {
        return false;
    }
    bool is_drive_root = path.size() == 3 && path[1] == ':';
    if (path.size() > 1 && !is_drive_root && is_separator(path.back())) {
        path.remove_suffix(1);
    }
    char shortened[PATH_MAX];
    if (path.size() >= sizeof shortened) {
        return false;
    }
    memcpy(shortened, path.data(), path.size());
    shortened[path.size()] = '\0';
    size_t length = full_path(shortened, full);
    return length > 0 && (length == 3 || full[length - 1] != '\\');
}

// A file that is being read in text mode. `ahead` is a byte that was read to see whether a CR at
// the end of a block belongs to a CR LF, or NOTHING.
struct text_source {
    int descriptor;
    int ahead;
    bool ended;
};

// A block of the file into the buffer, the byte read ahead first.
ssize_t read_block(text_source *source, char *buffer, size_t size) {
    size_t held = 0;
    if (source->ahead != NOTHING) {
        buffer[0] = static_cast<char>(source->ahead);
        source->ahead = NOTHING;
        held = 1;
    }
    if (held == size) {
        return 1;
    }
    ssize_t length = TEMP_FAILURE_RETRY(read(source->descriptor, buffer + held, size - held));
    if (length < 0) {
        return held > 0 ? 1 : -1;
    }
    return length + static_cast<ssize_t>(held);
}

// Whether the byte after the block is an LF; any other is kept for the next block.
bool line_feed_follows(text_source *source) {
    unsigned char next;
    if (TEMP_FAILURE_RETRY(read(source->descriptor, &next, 1)) != 1) {
        return false;
    }
    source->ahead = next == '\n' ? NOTHING : next;
    return next == '\n';
}

// Turns CR LF into LF within the block, which starts with a CR; returns where the text ends.
char *translate(text_source *source, char *from, char *end) {
    char *to = from;
    while (from < end) {
        char c = *from++;
        if (c == '\r') {
            if (from < end && *from == '\n') {
                c = *from++;
            } else if (from == end && !source->ended && line_feed_follows(source)) {
                c = '\n';
            }
        }
        *to++ = c;
    }
    return to;
}

ssize_t read_text(void *cookie, char *buffer, size_t size) {
    text_source *source = static_cast<text_source *>(cookie);
    ssize_t length = source->ended ? 0 : read_block(source, buffer, size);
    if (length <= 0) {
        return length;
    }
    char *end = buffer + length;
    if (void *mark = memchr(buffer, CTRL_Z, static_cast<size_t>(length)); mark != nullptr) {
        source->ended = true;
        end = static_cast<char *>(mark);
    }
    void *carriage_return = memchr(buffer, '\r', static_cast<size_t>(end - buffer));
    if (carriage_return != nullptr) {
        end = translate(source, static_cast<char *>(carriage_return), end);
    }
    return end - buffer;
}

int close_text(void *cookie) {
    text_source *source = static_cast<text_source *>(cookie);
    int result = close(source->descriptor);
    free(source);
    return result;
}

FILE *close_and_fail(int descriptor, int error) {
    close(descriptor);
    errno = error;
    return nullptr;
}

FILE *open_for_reading(const char *path) {
    int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    struct stat status;
    if (descriptor < 0) {
        return nullptr;
    }
    if (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
        return close_and_fail(descriptor, EACCES);
    }
    text_source *source = static_cast<text_source *>(malloc(sizeof(text_source)));
    if (source == nullptr) {
        return close_and_fail(descriptor, ENOMEM);
    }
    *source = {descriptor, NOTHING, false};
    FILE *file = fopencookie(source, "r", {read_text, nullptr, nullptr, close_text});
    if (file == nullptr) {
        free(source);
        return close_and_fail(descriptor, ENOMEM);
    }
    return file;
}

} // namespace

entry_kind kind_of(const char *path) {
    char full[PATH_MAX];
    char name[PATH_MAX];
    struct stat status;
    if (!status_path(path, full) || unix_path_of_full(full, name) == 0 ||
        stat(name, &status) != 0) {
        return entry_kind::missing;
    }
    return S_ISDIR(status.st_mode) ? entry_kind::directory : entry_kind::file;
}

FILE *open_text_file(const char *path, const char *mode) {
    char name[PATH_MAX];
    if (unix_path(path, name) == 0) {
        errno = ENOENT;
        return nullptr;
    }
    if (strcmp(mode, "r") == 0) {
        return open_for_reading(name);
    }
    FILE *file = fopen(name, "w+e");
    if (file == nullptr && errno == EISDIR) {
        errno = EACCES; // as on Windows
    }
    return file;
}

char *current_directory() {
    char directory[PATH_MAX];
    return current_windows_directory(directory) == 0 ? nullptr : strdup(directory);
}
