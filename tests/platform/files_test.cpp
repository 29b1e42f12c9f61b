// Kinds of entries and text files. The current directory is C:\qvl_test\d, with the folder e and
// the file g.txt; the file f stands beside it.

#include <gtest/gtest.h>

#include <cerrno>
#include <initializer_list>
#include <string>

#include "platform/files.h"
#include "tests/platform/sandbox.h"

namespace {

void expect_kind(entry_kind kind, std::initializer_list<const char *> paths) {
    for (const char *path : paths) {
        EXPECT_EQ(kind_of(path), kind) << '"' << path << '"';
    }
}

TEST(kind_of, resolves_by_text_and_forgives_one_separator) {
    expect_kind(entry_kind::missing, {"",          " ",         " e",
                                      "C:",        "\\\\",      "e\\\\",
                                      "e/\\",      "e\\..\\\\", "C:\\qvl_test\\d\\\\",
                                      "g.txt\\\\", "g.txt\\x",  "g.txt:",
                                      "missing",   "missing\\", "missing\\.",
                                      "*",         "e\\*",      "\\\\s\\h\\x",
                                      "1:\\",      "1:"});
    expect_kind(entry_kind::directory, {"C:\\",
                                        "C:/",
                                        "C:\\\\",
                                        "\\",
                                        "C:.",
                                        "C:e",
                                        ".",
                                        "./",
                                        "..",
                                        "..\\",
                                        "e",
                                        "e\\",
                                        "e/",
                                        "e \\",
                                        "g.txt\\..",
                                        "missing\\..",
                                        "c:\\qvl_test",
                                        "\\qvl_test\\d\\",
                                        "..\\..\\..\\qvl_test",
                                        "C:\\\\qvl_test\\\\d//e",
                                        "C:\\qvl_test\\f\\..\\d"});
    expect_kind(entry_kind::file, {"g.txt", "g.txt\\", "g.txt/", "g.txt\\.", "g.txt. .", "missing\\..\\g.txt", "..\\f",
                                   "C:g.txt", "C:\\..\\qvl_test\\f"});
    expect_kind(entry_kind::missing, {("C:\\" + std::string(5000, 'x')).c_str()});
}

std::string read_text(const char *path, size_t block, int buffering = _IOFBF) {
    FILE *file = open_text_file(path, "r");
    if (file == nullptr) {
        return "(cannot be opened)";
    }
    if (buffering == _IONBF) {
        setvbuf(file, nullptr, _IONBF, 0);
    }
    std::string text;
    std::string buffer(block, '\0');
    while (size_t length = fread(buffer.data(), 1, block, file)) {
        text.append(buffer, 0, length);
    }
    EXPECT_FALSE(ferror(file));
    EXPECT_EQ(fread(buffer.data(), 1, block, file), 0u);
    fclose(file);
    return text;
}

TEST(text_file, reads_as_the_windows_runtime) {
    const std::string filler(4094, 'x');
    const struct {
        std::string bytes;
        std::string text;
    } ROWS[] = {
        {"", ""},
        {"a\r\nb", "a\nb"},
        {"a\rb\r\rc", "a\rb\r\rc"},
        {"a\r\r\nb", "a\r\nb"},
        {"\n\r\n\r", "\n\n\r"},
        {"\r", "\r"},
        {"a\x1A\r\nb", "a"},
        {"\x1A", ""},
        {"a\r\x1A\n", "a\r"},
        {std::string("a\0\r\n\xFF", 5), std::string("a\0\n\xFF", 4)},
        {filler + "x\r\ny", filler + "x\ny"},
        {filler + "xx\r\ny", filler + "xx\ny"},
        {filler + "\r\r\r\ny\r", filler + "\r\r\ny\r"},
        {filler + "x\ry", filler + "x\ry"},
        {filler + "x\r", filler + "x\r"},
        {filler + "x\r\x1Ay", filler + "x\r"},
        {filler + filler + "\x1Ay", filler + filler},
    };
    for (const auto &row : ROWS) {
        write_file("t", row.bytes);
        for (size_t block : {size_t(1), size_t(2), size_t(3), size_t(4096)}) {
            EXPECT_EQ(read_text("t", block), row.text) << testing::PrintToString(row.bytes);
            EXPECT_EQ(read_text("t", block, _IONBF), row.text) << "unbuffered, " << block;
        }
    }
}

TEST(text_file, lines_and_an_end_by_ctrl_z) {
    write_file("t", "one\r\ntwo\nthree\x1A\r\nfour\r\n");
    FILE *file = open_text_file("..\\d\\missing\\..\\t", "r");
    ASSERT_NE(file, nullptr);
    char line[10];
    for (const char *expected : {"one\n", "two\n", "three"}) {
        EXPECT_STREQ(fgets(line, sizeof line, file), expected);
    }
    EXPECT_EQ(fgets(line, sizeof line, file), nullptr);
    EXPECT_TRUE(feof(file));
    EXPECT_EQ(fclose(file), 0);
}

TEST(text_file, is_written_and_read_back) {
    write_file("t", "longer than what follows");
    FILE *file = open_text_file("C:\\qvl_test\\d\\t", "w+");
    ASSERT_NE(file, nullptr);
    fputs("one\ntwo\n", file);
    rewind(file);
    char line[10];
    EXPECT_STREQ(fgets(line, sizeof line, file), "one\n");
    EXPECT_EQ(fclose(file), 0);
    EXPECT_EQ(read_text("t", 100), "one\ntwo\n");
}

TEST(text_file, cannot_be_opened) {
    static constexpr struct {
        const char *path;
        const char *mode;
        int error;
    } ROWS[] = {
        {"missing", "r", ENOENT}, {"", "r", ENOENT},   {"missing\\x", "w+", ENOENT}, {"e", "r", EACCES},
        {"e", "w+", EACCES},      {"..", "r", EACCES}, {"1:\\x", "r", ENOENT},       {"1:\\x", "w+", ENOENT},
    };
    for (const auto &row : ROWS) {
        errno = 0;
        EXPECT_EQ(open_text_file(row.path, row.mode), nullptr) << row.path;
        EXPECT_EQ(errno, row.error) << '"' << row.path << '"';
    }
}

} // namespace
