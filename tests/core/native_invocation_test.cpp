#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"
#include "tests/support/trace.h"

namespace {

class native_invocation : public testing::Test {
protected:
    void SetUp() override { make_disk(); }
    void TearDown() override { forget_configuration(); }
};

constexpr char HOST_TITLE[] = "DETERMINING HOST JVM VERSION:\n-----------------------------\n";
constexpr char GUEST_TITLE[] = "DETERMINING GUEST JAVA VERSION:\n-------------------------------\n";

} // namespace

TEST_F(native_invocation, the_launcher_home_stands_in_the_library_path) {
    for (const texts &row : rows_of(R"(
C:\L\jni\qvljni.dll -> C:\L
C:\Apps\L\JNI\QvlJni.DLL -> C:\Apps\L
C:\a\jni\qvljni.dll\b\jni\qvljni.dll -> C:\a\jni\qvljni.dll\b
C:\L\jni\qvljni.dll.bak\x -> C:\L
\jni\qvljni.dll ->
)")) {
        is_native_invocation = 0;
        os_name = nullptr;
        init_launcher_home_from_library_path(row[0].c_str());
        EXPECT_EQ(launcher_home, row[1]) << row[0];
        EXPECT_EQ(is_native_invocation, 1);
        EXPECT_EQ(is_transparent + rewrites_arguments + leaves_standard_output + says_faults, 0);
        EXPECT_STREQ(os_name, "Windows");
    }
    const std::string message = "Error: failed to identify launcher_home in library path: ";
    for (const char *library : {"C:\\L\\bin\\QvlJni.dll", "jni\\qvljni.dll", ""}) {
        EXPECT_EXIT(initialize_jlp_for_native_invocation(library, 0), testing::ExitedWithCode(1),
                    testing::Eq(message + library + '\n'));
    }
}

TEST_F(native_invocation, java_9_and_later_have_a_layout_of_their_own) {
    const std::string jar = "C:\\H\\lib\\jrt-fs.jar";
    const std::string legal = "C:\\H\\legal\\java.base";
    // What the first is -> what the second is -> what is said of the one -> of the other -> the version
    for (const texts &row : rows_of(R"(
file -> folder -> is present -> is present -> 9+
file -> file -> is present -> is NOT present -> 8-
folder -> folder -> is NOT present -> -> 8-
)")) {
        make_disk();
        row[0] == "file" ? put_file(jar, "") : put_folder(jar);
        row[1] == "file" ? put_file(legal, "") : put_folder(legal);
        const std::string of_legal = row[3].empty() ? "" : legal + ' ' + row[3] + '\n';
        const std::string trace = here(jar + ' ' + row[2] + '\n' + of_legal);
        forget_configuration();
        assign_text(&jvm_home, here("C:\\H"));
        EXPECT_EQ(traced_by(init_host_and_guest_versions), HOST_TITLE + trace + "Host JVM is Java " + row[4] + "\n\n");
        EXPECT_EQ(is_host_java_9_plus, row[4] == "9+");
        for (const std::string mode : {"advanced", "legacy", "patch"}) {
            forget_configuration();
            assign_text(&container_home, here("C:\\H"));
            assign_text(&launch_mode, mode);
            EXPECT_EQ(traced_by(init_host_and_guest_versions),
                      GUEST_TITLE + trace + (mode == "patch" ? "" : "Guest JVM is Java " + row[4] + '\n'));
            EXPECT_EQ(is_guest_java_9_plus, row[4] == "9+");
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

TEST_F(native_invocation, reads_the_configuration_beside_the_library) {
    put_file("C:\\L\\launcher.cfg", "LAUNCH_MODE=legacy\nCONTAINER_HOME=C\nQUORVEL_HOME=Q\n"
                                    "TRANSPARENT=true\nREWRITE_ARGUMENTS=true\n");
    put_folder("C:\\L\\C");
    use_advanced_launch_mode = 0;
    const std::string trace =
        traced_by([] { initialize_jlp_for_native_invocation(here("C:\\L\\JNI\\qvljni.dll").c_str(), 32); });
    EXPECT_EQ(launcher_home, here("C:\\L"));
    EXPECT_EQ(native_jvm_bits, 64);
    EXPECT_EQ(is_native_invocation, 1);
    EXPECT_STREQ(launch_mode, "advanced");
    EXPECT_EQ(use_advanced_launch_mode, 1);
    EXPECT_STREQ(jvm_home, "");
    EXPECT_EQ(is_host_java_9_plus, 0);
    EXPECT_TRUE(trace.ends_with(GUEST_TITLE + here("C:\\L\\C\\lib\\jrt-fs.jar is NOT present\n"
                                                   "Guest JVM is Java 8-\n")))
        << trace;
    EXPECT_EQ(trace.find(HOST_TITLE), std::string::npos);
    const std::string warning = "WARNING: Forcing LAUNCH_MODE=advanced, as this is a native java invocation\n";
    EXPECT_NE(trace.find(warning), std::string::npos);
}

TEST_F(native_invocation, takes_arguments_without_quotes) {
    const char *const rows[][2] = {
        {"", ""},
        {"a\tb", "a\tb"},
        {"a b", "\"a b\""},
        {"\"a b\"", "\"\"a b\"\""},
    };
    for (const auto &[arg, elsewhere] : rows) {
        is_native_invocation = 0;
        EXPECT_STREQ(processArg(arg), elsewhere);
        is_native_invocation = 1;
        EXPECT_STREQ(processArg(arg), arg);
        EXPECT_STREQ(processedArg[processedArgCount - 1], arg);
    }
    EXPECT_EQ(processedArgCount, 8);
    assign_text(&rule_file_arg, "x");
    append_entry(newPathList, &newPathListCount, JLI_StringDup("y"));
    cleanup();
    EXPECT_EQ(processedArgCount + newPathListCount, 0);
    EXPECT_EQ(processedArg[7], nullptr);
    EXPECT_EQ(rule_file_arg, nullptr);
    new_mem_val_as_str = nullptr; // released
}
