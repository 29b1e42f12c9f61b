#include <gtest/gtest.h>

#include <sys/time.h>
#include <unistd.h>

#include "core/jlp_utils.h"
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
