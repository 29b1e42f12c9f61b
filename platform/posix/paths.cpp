// Full paths, by text alone.

#include "platform/posix/paths.h"

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <string_view>

#include "platform/posix/last_error.h"

namespace {

// kernel32 counts a path's length, terminator included, in a 16-bit number of bytes of UTF-16.
constexpr size_t LONGEST_FULL_PATH = 32767;

// The full path as it grows. `root` is the length that ".." never goes below.
struct path_text {
    std::span<char> room;
    size_t length;
    size_t root;
    bool too_long;
};

void append(path_text *out, std::string_view text) {
    if (text.size() >= out->room.size() - out->length) {
        out->too_long = true;
        return;
    }
    memcpy(out->room.data() + out->length, text.data(), text.size());
    out->length += text.size();
}

bool ends_with_separator(const path_text &out) {
    return out.length > 0 && out.room[out.length - 1] == '\\';
}

// The text up to the next separator, taken off the path.
std::string_view take_component(std::string_view *path) {
    size_t length = 0;
    while (length < path->size() && !is_separator((*path)[length])) {
        length++;
    }
    std::string_view component(path->data(), length);
    path->remove_prefix(length);
    return component;
}

void take_share(path_text *out, std::string_view *path) {
    path->remove_prefix(2);
    append(out, "\\\\");
    for (int part = 0; part < 2; part++) { // server, share
        append(out, take_component(path));
        if (!path->empty()) {
            path->remove_prefix(1);
            append(out, "\\");
        }
    }
    out->root = out->length;
}

bool start_from_current_directory(path_text *out) {
    out->length = current_windows_directory(out->room);
    if (out->length > 0 && !ends_with_separator(*out)) {
        append(out, "\\");
    }
    return out->length > 0;
}

// A path on a drive without a separator is relative to the current directory where that is on the
// drive, else to the root of the drive.
void take_drive(path_text *out, std::string_view *path) {
    const char root[] = {path->front(), ':', '\\'};
    path->remove_prefix(2);
    bool absolute = !path->empty() && is_separator(path->front());
    bool here = !absolute && start_from_current_directory(out) &&
                ((out->room[0] ^ root[0]) & ~('a' ^ 'A')) == 0;
    if (!here) {
        out->length = 0;
        append(out, {root, sizeof root});
    }
}

// Writes what the path starts from and takes that off the path. The text ends with a separator
// then, except for a share without one.
bool take_root(path_text *out, std::string_view *path) {
    out->root = 3;
    if (path->size() > 1 && is_separator((*path)[0]) && is_separator((*path)[1])) {
        take_share(out, path);
        return true;
    }
    if (path->size() > 1 && (*path)[1] == ':' && !is_separator(path->front())) {
        take_drive(out, path);
        return true;
    }
    if (!start_from_current_directory(out)) {
        return false;
    }
    if (is_separator(path->front())) {
        out->length = out->root;
    }
    return true;
}

void drop_separator(path_text *out) {
    if (out->length > out->root && ends_with_separator(*out)) {
        out->length--;
    }
}

void drop_component(path_text *out) {
    drop_separator(out);
    while (out->length > out->root && !ends_with_separator(*out)) {
        out->length--;
    }
}

void add_component(path_text *out, std::string_view component, bool is_last) {
    if (component == "." || component == "..") {
        if (component.size() == 2) {
            drop_component(out);
        }
        if (is_last) {
            drop_separator(out);
        }
        return;
    }
    if (!is_last && component.ends_with('.') && !component.ends_with("..")) {
        component.remove_suffix(1);
    }
    append(out, component);
    if (!is_last) {
        append(out, "\\");
    }
}

void add_components(path_text *out, std::string_view path) {
    while (true) {
        while (!path.empty() && is_separator(path.front())) {
            path.remove_prefix(1);
        }
        if (path.empty()) {
            break;
        }
        std::string_view component = take_component(&path);
        add_component(out, component, path.empty());
    }
    while (out->length > out->root &&
           (out->room[out->length - 1] == ' ' || out->room[out->length - 1] == '.')) {
        out->length--;
    }
}

} // namespace

size_t full_path(const char *path, std::span<char> buffer) {
    if (path == nullptr || path[strspn(path, " ")] == '\0') {
        fail_with(ERROR_INVALID_NAME);
        return 0;
    }
    path_text out = {buffer, 0, 0, false};
    std::string_view rest = path;
    if (!take_root(&out, &rest)) {
        return 0;
    }
    add_components(&out, rest);
    if (out.too_long) {
        fail_with(ERROR_FILENAME_EXCED_RANGE);
        return 0;
    }
    buffer[out.length] = '\0';
    return out.length;
}

size_t current_windows_directory(std::span<char> buffer) {
    char directory[PATH_MAX];
    if (getcwd(directory, sizeof directory) == nullptr) {
        fail_with(windows_error(errno));
        return 0;
    }
    return windows_path(directory, buffer);
}

DWORD GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part) {
    if (file_part != nullptr) {
        fail_with(ERROR_INVALID_PARAMETER);
        return 0;
    }
    char full[LONGEST_FULL_PATH];
    size_t length = full_path(path, full);
    if (length == 0 || length >= size) {
        return static_cast<DWORD>(length == 0 ? 0 : length + 1);
    }
    memcpy(buffer, full, length + 1);
    return static_cast<DWORD>(length);
}

DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size) {
    if (module != nullptr) {
        fail_with(ERROR_INVALID_PARAMETER);
        return 0;
    }
    char program[PATH_MAX];
    ssize_t program_length = readlink("/proc/self/exe", program, sizeof program - 1);
    if (program_length < 0) {
        fail_with(windows_error(errno));
        return 0;
    }
    program[program_length] = '\0';
    char path[PATH_MAX];
    size_t length = windows_path(program, path);
    if (length == 0) {
        return 0;
    }
    if (length < size) {
        memcpy(buffer, path, length + 1);
        return static_cast<DWORD>(length);
    }
    if (size > 0) {
        memcpy(buffer, path, size - 1);
        buffer[size - 1] = '\0';
    }
    fail_with(ERROR_INSUFFICIENT_BUFFER);
    return size;
}
