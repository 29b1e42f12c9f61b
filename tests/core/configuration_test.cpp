#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"

TEST(configuration, values_are_trimmed) {
    const char *const rows[][2] = {
        {"", ""},
        {" \t\n\v\f\r", ""},
        {"a", "a"},
        {"\v a b\t\r\n", "a b"},
        {"\"a \"", "\"a \""},
        {"\xC2\xA0x", "\xC2\xA0x"}, // a no-break space is no blank
    };
    for (const auto &[text, trimmed] : rows) {
        const text_ptr output(new_state_text());
        trim(text, output.get());
        EXPECT_STREQ(output.get(), trimmed) << text;
        trim("more", output.get());
        EXPECT_EQ(output.get(), std::string(trimmed) + "more");
    }
}

TEST(configuration, lists_are_split) {
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
