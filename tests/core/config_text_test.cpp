#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/rewriting/engine.h"

TEST(config_text, trim) {
    const char *const rows[][2] = {
        {"", ""},
        {" \t\n\v\f\r", ""},
        {"a", "a"},
        {"\v a b\t\r\n", "a b"},
        {"\"a \"", "\"a \""},
        {"\xC2\xA0x", "\xC2\xA0x"}, // a no-break space is no blank
    };
    for (const auto &[text, trimmed] : rows) {
        const text_ptr output(new_text_buffer());
        trim(text, output.get());
        EXPECT_STREQ(output.get(), trimmed) << text;
        trim("more", output.get());
        EXPECT_EQ(output.get(), std::string(trimmed) + "more");
    }
}

TEST(config_text, split) {
    // Text -> lead -> tail -> delimiter -> entries
    for (const texts &row : rows_of(R"(
-> -> -> = ->
a=b=c -> -> -> = -> a|b|c
=a==b= -> -> -> = -> a|b
a=b -> -> -> -> a=b
"-Xmx1g" "-Dx=a b" -> " -> " -> " " -> -Xmx1g|-Dx=a b
"-Xa"  "-Xb" -> " -> " -> " " -> -Xa"  "-Xb
-Xmx1g -> " -> " -> " " -> Xmx1
"-Xa" "-Xb -> " -> " -> " " -> -Xa|-X
"" "" -> " -> " -> " " ->
" -> " -> " -> " " ->
ab -> " -> " -> " " ->
<a>;<b> -> -> > -> >; -> <a|<b
)")) {
        char *array[8] = {};
        int count = 0;
        split(row[0].c_str(), array, &count, row[1].c_str(), row[2].c_str(), row[3].c_str());
        EXPECT_EQ(texts(array, array + count), entries_of(row[4])) << row[0];
        release_entries(array, &count);
    }
}

TEST(config_text, paths_are_taken_from_the_launcher_home) {
    make_disk();
    assign_text(&launcher_home, here("C:\\L"));
    for (const texts &row : rows_of(R"(
x -> C:\L\x
..\jdk -> C:\jdk
a/b/./c -> C:\L\a\b\c
\tools\x -> C:\L\tools\x
\\server\share -> C:\L\server\share
D:\jdk\ -> D:\jdk\
d:/a/../b -> d:\b
-> as it was
)")) {
        const text_ptr output(new_text_buffer());
        append_to_text_buffer(output.get(), "as it was");
        prepend_launcher_home_to_relative_path(row[0].c_str(), output.get());
        EXPECT_EQ(output.get(), here(row[1])) << row[0];
    }
}
