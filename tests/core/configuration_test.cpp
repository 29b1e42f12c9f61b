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

using strings = std::vector<std::string>;

strings entries(char *const *array, int count) {
    return strings(array, array + count);
}

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
        for (char **text :
             {&launch_mode, &container_home, &jvm_home, &quorvel_home, &rule_file, &rule_file_arg,
              &quorvel_properties_file, &quorvel_properties_arg, &quorvel_library_path,
              &allow_vm_properties_option, &launcher_path_arg, &new_mem_val_as_str}) {
            release_text(text);
        }
    }
};

} // namespace

TEST_F(configuration, single_settings) {
    const struct {
        const char *content;
        char **setting;
        const char *value;
    } rows[] = {
        {"", &launch_mode, "advanced"},
        {"", &launcher_home, "C:\\L"},
        {"", &launcher_path_arg, "-Dcom.quorvel.LauncherPackPath=C:\\L"},
        {"JVM_HOME=jdk", &jvm_home, "C:\\L\\jdk"},
        {"JVM_HOME=a\nJVM_HOME=..\\b\r\n", &jvm_home, "C:\\b"},
        {"JVM_HOME=a\nJVM_HOME= \t\n", &jvm_home, "C:\\L\\a"},
        {"JVM_HOME=\v D:\\a b\\ \r\n", &jvm_home, "D:\\a b\\"},
        {"\xEF\xBB\xBFJVM_HOME=x", &jvm_home, "C:\\L\\x"},
        {"\n\xEF\xBB\xBFJVM_HOME=x", &jvm_home, ""},
        {" JVM_HOME=x", &jvm_home, ""},
        {"JVM_HOME =x", &jvm_home, ""},
        {"jvm_home=x", &jvm_home, ""},
        {"#JVM_HOME=x", &jvm_home, ""},
        {"XJVM_HOME=x\nJVM_HOME", &jvm_home, ""},
        {"CONTAINER_HOME=c", &container_home, "C:\\L\\c"},
        {"QUORVEL_HOME=q\x1a\nQUORVEL_HOME=r", &quorvel_home, "C:\\L\\q"}, // Ctrl-Z ends the file
        {"QUORVEL_NATIVE_AGENT=q.dll", &quorvel_library_path, "C:\\L\\q.dll"},
        {"RULE_FILE=r.txt\nRULE_FILE=", &rule_file, "C:\\L\\r.txt"},
        {"RULE_FILE=r.txt\nRULE_FILE=", &rule_file_arg, "-Dcom.quorvel.rules.local=C:\\L\\r.txt"},
        {"RULE_FILE=", &rule_file_arg, ""},
        {"QUORVEL_PROPERTIES_FILE=p", &quorvel_properties_file, "C:\\L\\p"},
        {"QUORVEL_PROPERTIES_FILE=p", &quorvel_properties_arg,
         "-Dcom.quorvel.QuorvelProperties=C:\\L\\p"},
        {"ALLOW_VM_OPTIONS= a.b=c.d \n", &allow_vm_properties_option,
         "-Dcom.quorvel.AllowVMProperties=a.b=c.d"},
        {"ALLOW_VM_OPTIONS=a\nALLOW_VM_OPTIONS=", &allow_vm_properties_option,
         "-Dcom.quorvel.AllowVMProperties=a"},
    };
    for (const auto &row : rows) {
        load(row.content);
        EXPECT_EQ(*row.setting, here(row.value)) << row.content;
    }
}

TEST_F(configuration, launch_modes) {
    const struct {
        const char *content, *mode;
        int is_advanced;
    } rows[] = {
        {"LAUNCH_MODE=legacy", "legacy", 0},
        {"LAUNCH_MODE= rich mode ", "rich mode", 0},
        {"LAUNCH_MODE=patchwork", "patchwork", 0},
        {"LAUNCH_MODE=secure\nLAUNCH_MODE=advanced2", "advanced2", 1},
        {"LAUNCH_MODE=Legacy", "advanced", 1},
        {"LAUNCH_MODE=ri\nLAUNCH_MODE=", "advanced", 1},
        {"LAUNCH_MODE=\nLAUNCH_MODE=ri", "ri", 0},
    };
    for (const auto &row : rows) {
        load(row.content);
        EXPECT_STREQ(launch_mode, row.mode) << row.content;
        EXPECT_EQ(use_advanced_launch_mode, row.is_advanced) << row.content;
        is_native_invocation = 1;
        load(row.content);
        EXPECT_STREQ(launch_mode, "advanced") << row.content;
        EXPECT_EQ(use_advanced_launch_mode, 1) << row.content;
        is_native_invocation = 0;
    }
}

TEST_F(configuration, option_lists) {
    load("IGNORE_OPTIONS=-Xa=-Xb\r\n"
         "NON_PATH_OPTIONS= a==b \n"
         "ALLOW_VM_OPTIONS=c\n"
         "JVM_OPTIONS=\"-Xmx1g\" \"-Dx=a b\"\n"
         "CONTAINER_OPTIONS=\"-Xa\"\n"
         "IGNORE_OPTIONS=-Xc\n"
         "CONTAINER_OPTIONS=-Xb");
    EXPECT_EQ(entries(ignore_properties_array, ignore_properties_count),
              (strings{"-Xa", "-Xb", "-Xc"}));
    EXPECT_EQ(entries(non_path_options_array, non_path_options_count), (strings{"a", "b"}));
    EXPECT_EQ(entries(allow_vm_properties_array, allow_vm_properties_count), (strings{"c"}));
    EXPECT_EQ(entries(jvm_options_array, jvm_options_count), (strings{"-Xmx1g", "-Dx=a b"}));
    EXPECT_EQ(entries(container_options_array, container_options_count), (strings{"-Xa", "X"}));
}

TEST_F(configuration, a_line_longer_than_the_buffer_is_read_in_pieces) {
    const std::string key = "IGNORE_OPTIONS=";
    // The first piece ends in the middle of this entry; the second begins with a setting of its
    // own.
    load(key + std::string(99999 - key.size(), 'x') + "LAUNCH_MODE=ri\nJVM_HOME=x");
    ASSERT_EQ(ignore_properties_count, 1);
    EXPECT_EQ(strlen(ignore_properties_array[0]), 99999 - key.size());
    EXPECT_STREQ(launch_mode, "ri");
    EXPECT_EQ(jvm_home, here("C:\\L\\x"));
    // A whole line in the buffer makes an argument that is longer than the buffer.
    const std::string value(99998 - strlen("ALLOW_VM_OPTIONS="), 'y');
    load("ALLOW_VM_OPTIONS=" + value + "\nJVM_HOME=z");
    EXPECT_EQ(allow_vm_properties_option, "-Dcom.quorvel.AllowVMProperties=" + value);
    EXPECT_EQ(jvm_home, here("C:\\L\\z"));
}

TEST_F(configuration, an_array_holds_its_slots_and_refuses_more) {
    std::string half = "IGNORE_OPTIONS=";
    for (int i = 0; i < OPTION_SLOTS / 2; i++) {
        half += "x=";
    }
    load(half + "\n" + half);
    EXPECT_EQ(ignore_properties_count, OPTION_SLOTS);
    EXPECT_EXIT(load(half + "\n" + half + "\nIGNORE_OPTIONS=y"), testing::ExitedWithCode(1),
                "^Error: too many IGNORE_OPTIONS entries \\(at most 10000\\)");
}

TEST_F(configuration, the_log_file_is_named_by_the_clock) {
    put_folder("C:\\L\\logs");
    clock_stands_at = {1700000000, 250000};
    load("LOG_FILE_OR_DIR=logs\n");
    clock_stands_at = {};
    EXPECT_TRUE(fs::exists(
        on_disk("C:\\L\\logs\\jlp_ts3487918330_pid" + std::to_string(getpid()) + ".log")));
    fclose(LOG_FILE_FD);
    LOG_FILE_FD = nullptr;
    EXPECT_EXIT(load("LOG_FILE_OR_DIR=none\\log\n"), testing::ExitedWithCode(on_windows ? -1 : 255),
                "^Error! Could not open log_file_path: .*none.log");
}
