// Full paths, the program's own path and the current directory. The current directory is
// C:\qvl_test\d.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>

#include "platform/files.h"
#include "platform/windows_services.h"

namespace {

std::string here(const char *rest) {
    return std::string("C:\\qvl_test\\d") + rest;
}

// Each row is "path -> full path"; "~" stands for the current directory.
void expect_full_paths(std::initializer_list<std::string> rows) {
    for (const std::string &row : rows) {
        size_t arrow = row.find(" -> ");
        std::string expected = row.substr(arrow + 4);
        expected = expected[0] == '~' ? here(expected.c_str() + 1) : expected;
        std::string last = expected.substr(expected.rfind('\\') + 1);
        char buffer[300];
        char *part = buffer;
        DWORD length = GetFullPathNameA(row.substr(0, arrow).c_str(), 300, buffer, &part);
        EXPECT_EQ(std::string(buffer, length), expected) << row;
        EXPECT_STREQ(part, last.empty() ? nullptr : last.c_str()) << row;
    }
}

TEST(full_path, relative) {
    expect_full_paths({"a -> ~\\a", "a\\ -> ~\\a\\", "a/b -> ~\\a\\b", "a//b/\\ -> ~\\a\\b\\", ". -> ~", ".\\ -> ~\\",
                       ".\\a\\.\\b -> ~\\a\\b", "a\\. -> ~\\a", "a\\.. -> ~", "a\\..\\ -> ~\\",
                       "a\\b\\..\\..\\c -> ~\\c", ".. -> C:\\qvl_test", "..\\..\\..\\.. -> C:\\",
                       "..\\..\\..\\x -> C:\\x", " a -> ~\\ a", "a b -> ~\\a b", "a*b -> ~\\a*b", "ab:c -> ~\\ab:c",
                       "\xC3\xA9\xE6\x97\xA5 -> ~\\\xC3\xA9\xE6\x97\xA5"});
}

TEST(full_path, dots_and_blanks_at_the_end) {
    expect_full_paths({"a. -> ~\\a", "a . . -> ~\\a", "a. \\b  -> ~\\a. \\b", "a.\\b -> ~\\a\\b", "a \\b -> ~\\a \\b",
                       "a\\... -> ~\\a\\", "a\\  -> ~\\a\\", "C:\\a\\..  -> C:\\a\\", "C:\\  -> C:\\", "C:  -> ~\\",
                       ".a -> ~\\.a", "C:\\.. \\x -> C:\\.. \\x"});
}

TEST(full_path, drives_and_roots) {
    expect_full_paths({"C:\\ -> C:\\",
                       "C:/ -> C:\\",
                       "c:\\A\\b -> c:\\A\\b",
                       "C:\\\\a -> C:\\a",
                       "C:\\a\\..\\..\\b -> C:\\b",
                       "C:\\. -> C:\\",
                       "C:\\x\\.. -> C:\\",
                       "C: -> ~\\",
                       "C:. -> ~",
                       "c:.. -> C:\\qvl_test",
                       "c:foo -> ~\\foo",
                       "C:a\\ -> ~\\a\\",
                       "q: -> q:\\",
                       "Q:foo -> Q:\\foo",
                       "Q:..\\foo -> Q:\\foo",
                       "\\ -> C:\\",
                       "\\x\\y -> C:\\x\\y",
                       "\\..\\x -> C:\\x",
                       "\\:x\\y -> C:\\:x\\y",
                       "/:\\..\\x -> C:\\x"});
}

TEST(full_path, shares) {
    expect_full_paths({"\\\\s\\h -> \\\\s\\h", "\\\\s\\h\\ -> \\\\s\\h\\", "//s/h/x//y -> \\\\s\\h\\x\\y",
                       "\\\\s\\h\\..\\..\\x -> \\\\s\\h\\x", "\\\\s\\h\\.. -> \\\\s\\h\\", "\\\\s.\\h. -> \\\\s.\\h.",
                       "\\\\?\\C:\\x\\..\\y -> \\\\?\\C:\\y"});
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
