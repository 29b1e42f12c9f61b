// Full paths, the program's own path and the current directory. The current directory is
// C:\qvl_test\d.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "platform/files.h"
#include "platform/windows_services.h"

namespace {

struct path_row {
    const char *path;
    const char *full;
    const char *file_part; // null when the path ends with a separator
};

std::string here(const char *rest) {
    return std::string("C:\\qvl_test\\d") + rest;
}

void expect_full_paths(const path_row *rows, size_t count) {
    for (const path_row &row : std::span(rows, count)) {
        char buffer[300];
        char *part = buffer;
        DWORD length = GetFullPathNameA(row.path, sizeof buffer, buffer, &part);
        std::string expected = *row.full == '~' ? here(row.full + 1) : row.full;
        EXPECT_EQ(std::string(buffer, length), expected) << '"' << row.path << '"';
        EXPECT_STREQ(part, row.file_part) << '"' << row.path << '"';
    }
}

TEST(full_path, relative) {
    static constexpr path_row ROWS[] = {
        {"a", "~\\a", "a"},
        {"a\\", "~\\a\\", nullptr},
        {"a/b", "~\\a\\b", "b"},
        {"a//b/\\", "~\\a\\b\\", nullptr},
        {".", "~", "d"},
        {".\\", "~\\", nullptr},
        {".\\a\\.\\b", "~\\a\\b", "b"},
        {"a\\.", "~\\a", "a"},
        {"a\\..", "~", "d"},
        {"a\\..\\", "~\\", nullptr},
        {"a\\b\\..\\..\\c", "~\\c", "c"},
        {"..", "C:\\qvl_test", "qvl_test"},
        {"..\\..\\..\\..", "C:\\", nullptr},
        {"..\\..\\..\\x", "C:\\x", "x"},
        {" a", "~\\ a", " a"},
        {"a b", "~\\a b", "a b"},
        {"a*b", "~\\a*b", "a*b"},
        {"ab:c", "~\\ab:c", "ab:c"},
        {"\xC3\xA9\xE6\x97\xA5", "~\\\xC3\xA9\xE6\x97\xA5", "\xC3\xA9\xE6\x97\xA5"},
    };
    expect_full_paths(ROWS, std::size(ROWS));
}

TEST(full_path, dots_and_blanks_at_the_end) {
    static constexpr path_row ROWS[] = {
        {"a.", "~\\a", "a"},           {"a . .", "~\\a", "a"},
        {"a. \\b ", "~\\a. \\b", "b"}, {"a.\\b", "~\\a\\b", "b"},
        {"a \\b", "~\\a \\b", "b"},    {"a\\...", "~\\a\\", nullptr},
        {"a\\ ", "~\\a\\", nullptr},   {"C:\\a\\.. ", "C:\\a\\", nullptr},
        {"C:\\ ", "C:\\", nullptr},    {"C: ", "~\\", nullptr},
        {".a", "~\\.a", ".a"},         {"C:\\.. \\x", "C:\\.. \\x", "x"},
    };
    expect_full_paths(ROWS, std::size(ROWS));
}

TEST(full_path, drives_roots_and_shares) {
    static constexpr path_row ROWS[] = {
        {"C:\\", "C:\\", nullptr},
        {"C:/", "C:\\", nullptr},
        {"c:\\A\\b", "c:\\A\\b", "b"},
        {"C:\\\\a", "C:\\a", "a"},
        {"C:\\a\\..\\..\\b", "C:\\b", "b"},
        {"C:\\.", "C:\\", nullptr},
        {"C:\\x\\..", "C:\\", nullptr},
        {"C:", "~\\", nullptr},
        {"C:.", "~", "d"},
        {"c:..", "C:\\qvl_test", "qvl_test"},
        {"c:foo", "~\\foo", "foo"},
        {"C:a\\", "~\\a\\", nullptr},
        {"q:", "q:\\", nullptr},
        {"Q:foo", "Q:\\foo", "foo"},
        {"Q:..\\foo", "Q:\\foo", "foo"},
        {"\\", "C:\\", nullptr},
        {"\\x\\y", "C:\\x\\y", "y"},
        {"\\..\\x", "C:\\x", "x"},
        {"\\\\s\\h", "\\\\s\\h", "h"},
        {"\\\\s\\h\\", "\\\\s\\h\\", nullptr},
        {"//s/h/x//y", "\\\\s\\h\\x\\y", "y"},
        {"\\\\s\\h\\..\\..\\x", "\\\\s\\h\\x", "x"},
        {"\\\\s\\h\\..", "\\\\s\\h\\", nullptr},
        {"\\\\s.\\h.", "\\\\s.\\h.", "h."},
        {"\\\\?\\C:\\x\\..\\y", "\\\\?\\C:\\y", "y"},
    };
    expect_full_paths(ROWS, std::size(ROWS));
}

TEST(full_path, room_and_failure) {
    const DWORD needed = static_cast<DWORD>(here("\\x").size()) + 1;
    for (DWORD size : {DWORD(0), DWORD(1), needed - 1}) {
        char buffer[100] = "untouched";
        EXPECT_EQ(GetFullPathNameA("x", size, buffer, nullptr), needed);
        EXPECT_STREQ(buffer, "untouched");
    }
    char buffer[100];
    EXPECT_EQ(GetFullPathNameA("x", needed, buffer, nullptr), needed - 1);
    EXPECT_EQ(buffer, here("\\x"));
    for (const char *path : {static_cast<const char *>(nullptr), "", " ", "   "}) {
        EXPECT_EQ(GetFullPathNameA(path, sizeof buffer, buffer, nullptr), 0u);
    }
}

TEST(current_directory, is_shown_on_its_drive) {
    std::unique_ptr<char, decltype(&free)> directory(current_directory(), free);
    EXPECT_EQ(directory.get(), here(""));
    std::filesystem::current_path("../..");
    directory.reset(current_directory());
    char full[100];
    GetFullPathNameA("x", sizeof full, full, nullptr);
    std::filesystem::current_path("qvl_test/d");
    EXPECT_STREQ(directory.get(), "C:\\");
    EXPECT_STREQ(full, "C:\\x");
}

TEST(module_file_name, is_cut_to_the_buffer) {
    char path[1000];
    DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    ASSERT_TRUE(is_file(path));
    EXPECT_EQ(length, strlen(path));
    EXPECT_EQ(std::string(path + 1, 2), ":\\");
    for (DWORD size : {length, DWORD(4)}) {
        char cut[1000];
        EXPECT_EQ(GetModuleFileNameA(nullptr, cut, size), size);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
        EXPECT_EQ(std::string(cut, size - 1), std::string(path, size - 1));
    }
    EXPECT_EQ(GetModuleFileNameA(nullptr, path, length + 1), length);
}

} // namespace
