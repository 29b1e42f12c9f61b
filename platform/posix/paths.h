#ifndef PLATFORM_POSIX_PATHS_H
#define PLATFORM_POSIX_PATHS_H

// Windows paths as texts, and the Unix paths behind them. Each function writes a null-terminated
// text into `buffer` and returns its length; 0 means failure, with the last error set and nothing
// useful in the buffer. None of them allocates, none looks at what the path names.

#include <cstddef>
#include <span>

inline bool is_separator(char c) {
    return c == '\\' || c == '/';
}

// What GetFullPathNameA says of `path`.
size_t full_path(const char *path, std::span<char> buffer);

// The current directory, without a trailing separator unless it is the root of a drive.
size_t current_windows_directory(std::span<char> buffer);

// ---- Drives: QVL_HOST_DRIVE_<letter> (drives.cpp) ----

// The Unix path of a full Windows path. Only paths on a drive have one, and only those without the
// bytes that Windows refuses in names: '"', '*', '<', '>', '?', '|' and all below 32.
size_t unix_path_of_full(const char *full, std::span<char> buffer);

// An absolute, canonical Unix path as a Windows path on the drive whose directory is the longest
// that holds it.
size_t windows_path(const char *unix_path, std::span<char> buffer);

// The Unix path of any Windows path.
size_t unix_path(const char *path, std::span<char> buffer);

#endif
