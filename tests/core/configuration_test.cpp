#include <gtest/gtest.h>

#include <sys/time.h>
#include <unistd.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"

extern "C" {
int __real_gettimeofday(timeval *now, void *zone);
int __wrap_gettimeofday(timeval *now, void *zone);
}

static timeval clock_stands_at = {};

int __wrap_gettimeofday(timeval *now, void *zone) {
    if (clock_stands_at.tv_sec == 0) {
        return __real_gettimeofday(now, zone);
    }
    *now = clock_stands_at;
    return 0;
}

TEST(configuration, the_log_file_is_named_by_the_clock) {
    make_disk();
    put_folder("C:\\L\\logs");
    clock_stands_at = {1700000000, 250000};
    start("ri 8 8", "LOG_FILE_OR_DIR=logs");
    clock_stands_at = {};
    EXPECT_TRUE(fs::exists(on_disk("C:\\L\\logs\\jlp_ts3487918330_pid" + std::to_string(getpid()) + ".log")));
    fclose(LOG_FILE_FD);
    LOG_FILE_FD = nullptr;
}

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
