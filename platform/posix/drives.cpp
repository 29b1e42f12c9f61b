// The directories that stand for drives.

#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/posix/last_error.h"
#include "platform/posix/paths.h"

namespace {

constexpr std::string_view VARIABLE = "QVL_HOST_DRIVE_";
constexpr int DRIVES = 'Z' - 'A' + 1;

const char *directory_of(char letter) {
    char name[] = "QVL_HOST_DRIVE_A";
    name[VARIABLE.size()] = static_cast<char>(letter & ~('a' ^ 'A'));
    const char *directory = getenv(name);
    if (directory != nullptr && *directory != '\0') {
        return directory;
    }
    return name[VARIABLE.size()] == 'Z' ? "/" : nullptr;
}

bool is_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// The directory without symbolic links, as getcwd() tells it. It is looked up again only when the
// variable's value has changed: every relative path comes by here.
const char *canonical_directory(int drive, const char *directory) {
    struct known_directory {
        char *named;
        char *canonical;
    };
    static std::array<known_directory, DRIVES> known;
    known_directory &entry = known[static_cast<size_t>(drive)];
    if (entry.canonical == nullptr || strcmp(entry.named, directory) != 0) {
        free(entry.named);
        free(entry.canonical);
        entry.named = strdup(directory);
        entry.canonical = entry.named == nullptr ? nullptr : realpath(directory, nullptr);
    }
    return entry.canonical;
}

struct drive_match {
    int drive = -1;
    size_t length = 0;
};

void match_drive(drive_match *best, int drive, const char *directory, std::string_view path) {
    const char *canonical = canonical_directory(drive, directory);
    if (canonical == nullptr) {
        return;
    }
    std::string_view prefix = canonical;
    if (prefix == "/") {
        prefix = "";
    }
    bool holds =
        path.starts_with(prefix) && (path.size() == prefix.size() || path[prefix.size()] == '/');
    bool better = best->drive < 0 || prefix.size() > best->length ||
                  (prefix.size() == best->length && drive < best->drive);
    if (holds && better) {
        *best = {drive, prefix.size()};
    }
}

// One pass over the environment instead of 26 questions.
drive_match longest_match(std::string_view path) {
    drive_match best;
    bool z_is_set = false;
    for (char **entry = environ; entry != nullptr && *entry != nullptr; entry++) {
        if (strncmp(*entry, VARIABLE.data(), VARIABLE.size()) != 0) {
            continue;
        }
        const char *rest = *entry + VARIABLE.size();
        if (*rest >= 'A' && *rest <= 'Z' && rest[1] == '=' && rest[2] != '\0') {
            z_is_set = z_is_set || *rest == 'Z';
            match_drive(&best, *rest - 'A', rest + 2, path);
        }
    }
    if (!z_is_set) {
        match_drive(&best, 'Z' - 'A', "/", path);
    }
    return best;
}

// Joins two texts into the buffer, with `from` of the second turned into `to`.
size_t join(std::string_view first, std::string_view second, char from, char to,
            std::span<char> buffer) {
    size_t length = first.size() + second.size();
    if (length >= buffer.size()) {
        fail_with(ERROR_FILENAME_EXCED_RANGE);
        return 0;
    }
    char *out = buffer.data();
    memcpy(out, first.data(), first.size());
    out += first.size();
    for (char c : second) {
        *out++ = c == from ? to : c;
    }
    *out = '\0';
    return length;
}

// What Windows refuses in names. A name with a quote or a tab could not be told apart within a
// command line: half of it might name another program.
bool holds_forbidden_bytes(const char *path) {
    return std::any_of(path, path + strlen(path),
                       [](unsigned char c) { return c < ' ' || strchr("\"*<>?|", c) != nullptr; });
}

} // namespace

size_t unix_path_of_full(const char *full, std::span<char> buffer) {
    const char *directory = is_letter(full[0]) && full[1] == ':' ? directory_of(full[0]) : nullptr;
    if (directory == nullptr) {
        fail_with(ERROR_PATH_NOT_FOUND);
        return 0;
    }
    if (holds_forbidden_bytes(full + 2)) {
        fail_with(ERROR_INVALID_NAME);
        return 0;
    }
    std::string_view base = directory;
    while (base.ends_with('/')) {
        base.remove_suffix(1);
    }
    return join(base, full + 2, '\\', '/', buffer);
}

size_t windows_path(const char *unix_path, std::span<char> buffer) {
    drive_match match = longest_match(unix_path);
    if (match.drive < 0) {
        fail_with(ERROR_PATH_NOT_FOUND);
        return 0;
    }
    const char drive[] = {static_cast<char>('A' + match.drive), ':'};
    const char *rest = unix_path + match.length;
    return join({drive, sizeof drive}, *rest == '\0' ? "/" : rest, '/', '\\', buffer);
}

size_t unix_path(const char *path, std::span<char> buffer) {
    char full[PATH_MAX];
    return full_path(path, full) == 0 ? 0 : unix_path_of_full(full, buffer);
}
