#include <gtest/gtest.h>

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
        for (char **text : {&launch_mode, &launcher_home, &container_home, &jvm_home, &quorvel_home,
                            &rule_file, &rule_file_arg, &quorvel_properties_file,
                            &quorvel_properties_arg, &quorvel_library_path,
                            &allow_vm_properties_option, &launcher_path_arg, &new_mem_val_as_str}) {
            release_text(text);
        }
        release_entries(processedArg, &processedArgCount);
        forget_versions();
        is_native_invocation = 0;
        native_jvm_bits = -1;
    }

    static void forget_versions() { is_host_java_9_plus = is_guest_java_9_plus = 0; }
};

constexpr char HOST_TITLE[] = "DETERMINING HOST JVM VERSION:\n-----------------------------\n";
constexpr char GUEST_TITLE[] = "DETERMINING GUEST JAVA VERSION:\n-------------------------------\n";

std::string host_result(const char *version) {
    return std::string("Host JVM is Java ") + version + "\n\n";
}
std::string guest_result(const char *version) {
    return std::string("Guest JVM is Java ") + version + "\n";
}

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
    const struct {
        const char *library, *message;
    } failures[] = {
        {"C:\\L\\bin\\QvlJni.dll",
         "^Error: failed to identify launcher_home in library path: C:.L.bin.QvlJni\\.dll\n$"},
        {"C:/L/jni/qvljni.dll", "^Error: .* path: C:/L/jni/qvljni\\.dll\n$"},
        {"jni\\qvljni.dll", "^Error: .* path: jni.qvljni\\.dll\n$"},
        {"", "^Error: .* path: \n$"},
    };
    for (const auto &row : failures) {
        EXPECT_EXIT(initialize_jlp_for_native_invocation(row.library, 0),
                    testing::ExitedWithCode(1), row.message);
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
        {{jar}, {}, jar + " is present\n" + legal + " is NOT present\n", 0},
        {{jar, legal}, {}, jar + " is present\n" + legal + " is NOT present\n", 0},
        {{}, {jar, legal}, jar + " is NOT present\n", 0},
        {{}, {"C:\\H"}, jar + " is NOT present\n", 0},
    };
    const struct {
        char **home;
        const char *mode;
        int *flag;
        std::string title, result_8, result_9;
    } runtimes[] = {
        {&jvm_home, "ri", &is_host_java_9_plus, HOST_TITLE, host_result("8-"), host_result("9+")},
        {&container_home, "advanced", &is_guest_java_9_plus, GUEST_TITLE, guest_result("8-"),
         guest_result("9+")},
        {&container_home, "legacy", &is_guest_java_9_plus, GUEST_TITLE, guest_result("8-"),
         guest_result("9+")},
        {&container_home, "patch", &is_guest_java_9_plus, GUEST_TITLE, "", ""},
    };
    for (const auto &row : rows) {
        make_disk();
        for (const std::string &file : row.files) {
            put_file(file, "");
        }
        for (const std::string &folder : row.folders) {
            put_folder(folder);
        }
        for (const auto &runtime : runtimes) {
            TearDown();
            assign_text(runtime.home, here("C:\\H"));
            assign_text(&launch_mode, runtime.mode);
            const std::string &result = row.is_java_9_plus ? runtime.result_9 : runtime.result_8;
            EXPECT_EQ(traced_by(init_host_and_guest_versions),
                      runtime.title + here(row.trace) + result);
            EXPECT_EQ(*runtime.flag, row.is_java_9_plus);
            EXPECT_EQ(is_host_java_9_plus + is_guest_java_9_plus, row.is_java_9_plus);
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
    const std::string trace = traced_by(
        [] { initialize_jlp_for_native_invocation(here("C:\\L\\JNI\\qvljni.dll").c_str(), 32); });
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

    const int kept = processedArgCount;
    for (int i = 0; i < 5; i++) {
        lhs[lhs_count++] = rhs[rhs_count++] = processArg("a b");
    }
    is_native_invocation = 0;
    reset_jlp_for_native_invocation();
    EXPECT_EQ(processedArgCount, kept + 5);
    EXPECT_EQ(lhs_count, 5);
    is_native_invocation = 1;
    for (int time = 0; time < 2; time++) {
        reset_jlp_for_native_invocation();
        EXPECT_EQ(processedArgCount, 0);
        EXPECT_EQ(processedArg[0], nullptr);
        EXPECT_EQ(processedArg[kept + 4], nullptr);
        EXPECT_EQ(lhs_count, 0);
        EXPECT_EQ(rhs_count, 0);
    }
}
