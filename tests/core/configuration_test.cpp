#include <gtest/gtest.h>

#include <sys/time.h>
#include <unistd.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/support/disk.h"

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

namespace {

class configuration : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        assign_text(&executable_dir, here("C:\\L\\jre\\bin"));
        assign_text(&bin_dir, jre_bin);
    }

    // Loads launcher.cfg with this content, as a new process would.
    static void load(const std::string &content) {
        put_file("C:\\L\\launcher.cfg", content);
        release_settings();
        release_text(&launcher_home);
        for (auto &[array, count] : {std::pair{non_path_options_array, &non_path_options_count},
                                     {allow_vm_properties_array, &allow_vm_properties_count},
                                     {ignore_properties_array, &ignore_properties_count},
                                     {jvm_options_array, &jvm_options_count},
                                     {container_options_array, &container_options_count},
                                     {processedArg, &processedArgCount}}) {
            release_entries(array, count);
        }
        load_config_file();
    }

    void TearDown() override {
        release_settings();
        release_text(&bin_dir);
    }

    static void release_settings() {
        for (char **text : {&launch_mode, &container_home, &jvm_home, &quorvel_home, &rule_file, &rule_file_arg,
                            &quorvel_properties_file, &quorvel_properties_arg, &quorvel_library_path,
                            &allow_vm_properties_option, &launcher_path_arg, &new_mem_val_as_str}) {
            release_text(text);
        }
    }
};

} // namespace

TEST_F(configuration, a_native_host_has_the_advanced_mode) {
    is_native_invocation = 1;
    use_advanced_launch_mode = 0;
    load("LAUNCH_MODE=ri");
    is_native_invocation = 0;
    EXPECT_STREQ(launch_mode, "advanced");
    EXPECT_EQ(use_advanced_launch_mode, 1);
}

TEST_F(configuration, the_log_file_is_named_by_the_clock) {
    put_folder("C:\\L\\logs");
    clock_stands_at = {1700000000, 250000};
    load("LOG_FILE_OR_DIR=logs\n");
    clock_stands_at = {};
    EXPECT_TRUE(fs::exists(on_disk("C:\\L\\logs\\jlp_ts3487918330_pid" + std::to_string(getpid()) + ".log")));
    fclose(LOG_FILE_FD);
    LOG_FILE_FD = nullptr;
}
