// Kinds of entries and text files. The current directory is C:\qvl_test\d, with the folder e and
// the file g.txt; the file f stands beside it.

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "platform/files.h"
#include "tests/platform/sandbox.h"

namespace {

TEST(kind_of, resolves_by_text_and_forgives_one_separator) {
    constexpr entry_kind missing = entry_kind::missing;
    constexpr entry_kind file = entry_kind::file;
    constexpr entry_kind directory = entry_kind::directory;
    static constexpr struct {
        const char *path;
        entry_kind kind;
    } ROWS[] = {
        {"", missing},
        {"C:", missing},
        {" ", missing},
        {"C:\\", directory},
        {"C:/", directory},
        {"C:\\\\", directory},
        {"\\", directory},
        {"\\\\", missing},
        {"C:.", directory},
        {"C:e", directory},
        {".", directory},
        {"..", directory},
        {"./", directory},
        {"..\\", directory},
        {"e", directory},
        {"e\\", directory},
        {"e/", directory},
        {"e\\\\", missing},
        {"e/\\", missing},
        {"g.txt", file},
        {"g.txt\\", file},
        {"g.txt/", file},
        {"g.txt\\\\", missing},
        {"g.txt\\.", file},
        {"g.txt\\..", directory},
        {"g.txt\\x", missing},
        {"missing\\..", directory},
        {"missing\\..\\g.txt", file},
        {"missing\\.", missing},
        {"missing", missing},
        {"missing\\", missing},
        {"e\\..\\\\", missing},
        {"g.txt. .", file},
        {"e \\", directory},
        {" e", missing},
        {"..\\f", file},
        {"..\\..\\..\\qvl_test", directory},
        {"C:\\..\\qvl_test\\f", file},
        {"C:\\qvl_test\\f\\..\\d", directory},
        {"C:\\qvl_test\\d\\\\", missing},
        {"C:\\\\qvl_test\\\\d//e", directory},
        {"c:\\qvl_test", directory},
        {"\\qvl_test\\d\\", directory},
        {"*", missing},
        {"e\\*", missing},
        {"g.txt:", missing},
        {"\\\\s\\h\\x", missing},
        {"1:\\", missing},
    };
    for (const auto &row : ROWS) {
        EXPECT_EQ(kind_of(row.path), row.kind) << '"' << row.path << '"';
    }
    EXPECT_EQ(kind_of(("C:\\" + std::string(5000, 'x')).c_str()), missing);
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
        {"missing", "r", ENOENT}, {"", "r", ENOENT},       {"missing\\x", "w+", ENOENT},
        {"e", "r", EACCES},       {"e", "w+", EACCES},     {"..", "r", EACCES},
        {"1:\\x", "r", ENOENT},   {"1:\\x", "w+", ENOENT},
    };
    for (const auto &row : ROWS) {
        errno = 0;
        EXPECT_EQ(open_text_file(row.path, row.mode), nullptr) << row.path;
        EXPECT_EQ(errno, row.error) << '"' << row.path << '"';
    }
}

} // namespace
