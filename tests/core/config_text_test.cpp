#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/support/disk.h"

TEST(config_text, trim) {
    const struct {
        const char *text, *trimmed;
    } rows[] = {
        {"", ""},
        {" \t\n\v\f\r", ""},
        {"a", "a"},
        {"\v a b\t\r\n", "a b"},
        {"\"a \"", "\"a \""},
        {"\xC2\xA0x", "\xC2\xA0x"}, // a no-break space is no blank
    };
    for (const auto &row : rows) {
        char *output = new_text_buffer();
        trim(row.text, output);
        EXPECT_STREQ(output, row.trimmed) << row.text;
        trim("more", output);
        EXPECT_EQ(std::string(output), std::string(row.trimmed) + "more");
        free(output);
    }
}

TEST(config_text, split) {
    const struct {
        const char *text, *lead, *tail, *delimiter;
        std::vector<std::string> entries;
    } rows[] = {
        {"", "", "", "=", {}},
        {"a=b=c", "", "", "=", {"a", "b", "c"}},
        {"=a==b=", "", "", "=", {"a", "b"}},
        {"===", "", "", "=", {}},
        {"a=b", "", "", "", {"a=b"}},
        {"\"-Xmx1g\" \"-Dx=a b\"", "\"", "\"", "\" \"", {"-Xmx1g", "-Dx=a b"}},
        {"\"-Xa\"  \"-Xb\"", "\"", "\"", "\" \"", {"-Xa\"  \"-Xb"}},
        {"-Xmx1g", "\"", "\"", "\" \"", {"Xmx1"}},
        {"\"-Xa\" \"-Xb", "\"", "\"", "\" \"", {"-Xa", "-X"}},
        {"\"\" \"\"", "\"", "\"", "\" \"", {}},
        {"\"", "\"", "\"", "\" \"", {}},
        {"ab", "\"", "\"", "\" \"", {}},
        {"<a>;<b>", "", ">", ">;", {"<a", "<b"}},
    };
    for (const auto &row : rows) {
        char *array[8] = {};
        int count = 0;
        split(row.text, array, &count, row.lead, row.tail, row.delimiter);
        EXPECT_EQ(std::vector<std::string>(array, array + count), row.entries) << row.text;
        release_entries(array, &count);
    }
}

TEST(config_text, paths_are_taken_from_the_launcher_home) {
    make_disk();
    const struct {
        const char *path;
        int is_relative;
        const char *full_path;
    } rows[] = {
        {"x", 1, "C:\\L\\x"},
        {"..\\jdk", 1, "C:\\jdk"},
        {"a/b/./c", 1, "C:\\L\\a\\b\\c"},
        {"\\tools\\x", 1, "C:\\L\\tools\\x"},
        {"\\\\server\\share", 1, "C:\\L\\server\\share"},
        {"D:\\jdk\\", 0, "D:\\jdk\\"},
        {"d:/a/../b", 0, "d:\\b"},
        {"", 0, "as it was"},
    };
    assign_text(&launcher_home, here("C:\\L"));
    for (const auto &row : rows) {
        text_ptr output(new_text_buffer());
        append_to_text_buffer(output.get(), "as it was");
        EXPECT_EQ(is_path_relative(row.path), row.is_relative) << row.path;
        prepend_launcher_home_to_relative_path(row.path, output.get());
        EXPECT_EQ(output.get(), here(row.full_path)) << row.path;
    }
}
