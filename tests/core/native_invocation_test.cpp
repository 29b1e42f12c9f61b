#include <gtest/gtest.h>

#include <regex>
#include <vector>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/support/disk.h"
#include "tests/support/trace.h"

namespace {

using strings = std::vector<std::string>;

class native_invocation : public testing::Test {
protected:
    void SetUp() override { make_disk(); }

    void TearDown() override {
        for (char **text : {&launch_mode, &launcher_home, &container_home, &jvm_home, &quorvel_home, &rule_file,
                            &rule_file_arg, &quorvel_properties_file, &quorvel_properties_arg, &quorvel_library_path,
                            &allow_vm_properties_option, &launcher_path_arg, &new_mem_val_as_str}) {
            release_text(text);
        }
        release_entries(processedArg, &processedArgCount);
        is_host_java_9_plus = is_guest_java_9_plus = 0;
        is_native_invocation = 0;
        native_jvm_bits = -1;
    }
};

constexpr char HOST_TITLE[] = "DETERMINING HOST JVM VERSION:\n-----------------------------\n";
constexpr char GUEST_TITLE[] = "DETERMINING GUEST JAVA VERSION:\n-------------------------------\n";

} // namespace

TEST_F(native_invocation, the_launcher_home_stands_in_the_library_path) {
    const struct {
        const char *library, *home;
    } rows[] = {
        {"C:\\L\\jni\\qvljni.dll", "C:\\L"},
        {"C:\\Apps\\L\\JNI\\QvlJni.DLL", "C:\\Apps\\L"},
        {"C:\\a\\jni\\qvljni.dll\\b\\jni\\qvljni.dll", "C:\\a\\jni\\qvljni.dll\\b"},
        {"C:\\L\\jni\\qvljni.dll.bak\\x", "C:\\L"},
        {"\\jni\\qvljni.dll", ""},
    };
    for (const auto &row : rows) {
        is_native_invocation = 0;
        os_name = nullptr;
        init_launcher_home_from_library_path(row.library);
        EXPECT_STREQ(launcher_home, row.home) << row.library;
        EXPECT_EQ(is_native_invocation, 1);
        EXPECT_STREQ(os_name, "Windows");
    }
    for (const char *library : {"C:\\L\\bin\\QvlJni.dll", "jni\\qvljni.dll", ""}) {
        EXPECT_EXIT(initialize_jlp_for_native_invocation(library, 0), testing::ExitedWithCode(1),
                    "^Error: failed to identify launcher_home in library path: " +
                        std::regex_replace(library, std::regex("\\\\"), ".") + "\n$");
    }
}

TEST_F(native_invocation, java_9_and_later_have_a_layout_of_their_own) {
    const std::string jar = "C:\\H\\lib\\jrt-fs.jar";
    const std::string legal = "C:\\H\\legal\\java.base";
    const struct {
        strings files, folders;
        std::string trace;
        int is_java_9_plus;
    } rows[] = {
        {{jar}, {legal}, jar + " is present\n" + legal + " is present\n", 1},
        {{jar, legal}, {}, jar + " is present\n" + legal + " is NOT present\n", 0},
        {{}, {jar, legal}, jar + " is NOT present\n", 0},
    };
    for (const auto &row : rows) {
        make_disk();
        for (const std::string &file : row.files) {
            put_file(file, "");
        }
        for (const std::string &folder : row.folders) {
            put_folder(folder);
        }
        const std::string found = row.is_java_9_plus ? "9+\n" : "8-\n";
        TearDown();
        assign_text(&jvm_home, here("C:\\H"));
        EXPECT_EQ(traced_by(init_host_and_guest_versions),
                  HOST_TITLE + here(row.trace) + "Host JVM is Java " + found + "\n");
        EXPECT_EQ(is_host_java_9_plus, row.is_java_9_plus);
        for (const char *mode : {"advanced", "legacy", "patch"}) {
            TearDown();
            assign_text(&container_home, here("C:\\H"));
            assign_text(&launch_mode, mode);
            EXPECT_EQ(traced_by(init_host_and_guest_versions),
                      GUEST_TITLE + here(row.trace) + (*mode == 'p' ? "" : "Guest JVM is Java " + found));
            EXPECT_EQ(is_guest_java_9_plus, row.is_java_9_plus);
        }
    }
}

TEST_F(native_invocation, homes_that_are_no_folders_are_passed_over) {
    put_file("C:\\file", "");
    assign_text(&launch_mode, "advanced");
    for (const char *home : {"", "C:\\file", "C:\\none"}) {
        assign_text(&jvm_home, here(home));
        assign_text(&container_home, here(home));
        EXPECT_EQ(traced_by(init_host_and_guest_versions), "") << home;
    }
}

TEST_F(native_invocation, set_up_and_reset) {
    put_file("C:\\L\\launcher.cfg", "LAUNCH_MODE=legacy\nCONTAINER_HOME=C\nQUORVEL_HOME=Q\n");
    put_folder("C:\\L\\C");
    const std::string trace =
        traced_by([] { initialize_jlp_for_native_invocation(here("C:\\L\\JNI\\qvljni.dll").c_str(), 32); });
    EXPECT_EQ(launcher_home, here("C:\\L"));
    EXPECT_EQ(native_jvm_bits, 64);
    EXPECT_EQ(is_native_invocation, 1);
    EXPECT_STREQ(launch_mode, "advanced");
    EXPECT_STREQ(jvm_home, "");
    EXPECT_EQ(is_host_java_9_plus, 0);
    EXPECT_TRUE(trace.ends_with(GUEST_TITLE + here("C:\\L\\C\\lib\\jrt-fs.jar is NOT present\n"
                                                   "Guest JVM is Java 8-\n")))
        << trace;
    EXPECT_EQ(trace.find(HOST_TITLE), std::string::npos);
    EXPECT_NE(trace.find("WARNING: Forcing LAUNCH_MODE=advanced, as this is a native java "
                         "invocation\n"),
              std::string::npos);

    lhs[lhs_count++] = rhs[rhs_count++] = processArg("a b");
    is_native_invocation = 0;
    reset_jlp_for_native_invocation();
    EXPECT_EQ(processedArgCount, 2);
    is_native_invocation = 1;
    reset_jlp_for_native_invocation();
    EXPECT_EQ(processedArgCount + lhs_count + rhs_count, 0);
    EXPECT_EQ(processedArg[1], nullptr);
}
