#ifndef TESTS_SUPPORT_DISK_H
#define TESTS_SUPPORT_DISK_H

// A disk of the test's own. Tests name it as drive C: the Linux build maps that drive, on Windows
// here() puts the folder that it really is in its place.

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

constexpr bool on_windows = fs::path::preferred_separator == '\\';

// File names of every script: the library's own conversion of narrow texts is not UTF-8 everywhere.
inline fs::path to_path(const std::string &text) {
    return std::u8string(text.begin(), text.end());
}

inline std::string to_text(const fs::path &path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// The text with `to` for each `from`.
std::string replaced(std::string text, const std::string &from, const std::string &to);

// Empties the disk, or makes it.
void make_disk();

std::string here(std::string text);
fs::path on_disk(const std::string &windows_path);

// Folders on the way are made as well.
void put_file(const std::string &windows_path, const std::string &content);
void put_folder(const std::string &windows_path);

// The file's bytes, and its text, with LF alone.
std::string read_bytes(const fs::path &file);
std::string read_file(const fs::path &file);

#endif
