#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "jli/ending.h"
#include "tests/rewriting/engine.h"
#include "tests/support/programs.h"

namespace {

class native_invocation : public testing::Test {
protected:
    void SetUp() override { make_disk(); }
    void TearDown() override { forget_configuration(); }
};

// What a command line leaves behind: path lists, agents, options of variables, allow and ignore lists.
constexpr char FULL_CONFIGURATION[] = "QUORVEL_NATIVE_AGENT=a.dll\nIGNORE_OPTIONS=-Xignored\nALLOW_VM_OPTIONS=allowed\n"
                                      "JVM_OPTIONS=\"-Xj\"\nRULE_FILE=r\n";
constexpr char FULL_LINE[] =
    "@C:\\options|-Xignored|-Dallowed=C:\\L|-cp|C:\\L\\a;b|-Da=C:\\L|-Xbootclasspath:C:\\L|-jar|app";

void initialize(const std::string &configuration) {
    put_file("C:\\L\\launcher.cfg", configuration);
    initialize_jlp_for_native_invocation(here("C:\\L\\jni\\qvljni.dll").c_str(), 0);
}

std::string rewritten_full_line() {
    rewrite(FULL_LINE);
    return host_list() + '|' + guest_list();
}

void tell(const char *message, int status) {
    fprintf(stderr, "told: %s, %d", message, status);
}

} // namespace

TEST_F(native_invocation, reads_the_configuration_beside_the_library) {
    put_folder("C:\\L\\C");
    use_advanced_launch_mode = 0;
    const std::string trace = traced_by([] {
        initialize("LAUNCH_MODE=legacy\nCONTAINER_HOME=C\nQUORVEL_HOME=Q\nTRANSPARENT=true\nREWRITE_ARGUMENTS=true\n");
    });
    EXPECT_EQ(launcher_home + std::string("|") + launch_mode + '|' + jvm_home + '|' + os_name + new_mem_val_as_str,
              here("C:\\L") + "|advanced||Windows");
    EXPECT_EQ(native_jvm_bits, 64);
    EXPECT_EQ(is_native_invocation + use_advanced_launch_mode + says_faults, 3);
    EXPECT_EQ(is_host_java_9_plus + is_transparent + rewrites_arguments + leaves_standard_output, 0);
    EXPECT_TRUE(trace.ends_with(here("C:\\L\\C\\lib\\jrt-fs.jar is NOT present\nGuest JVM is Java 8-\n"))) << trace;
    EXPECT_EQ(trace.find("HOST JVM"), std::string::npos);
    const std::string warning = "WARNING: Forcing LAUNCH_MODE=advanced, as this is a native java invocation\n";
    EXPECT_NE(trace.find(warning), std::string::npos);
    assign_text(&container_home, here("C:\\none"));
    EXPECT_EQ(traced_by(init_host_and_guest_versions), "");
}

TEST_F(native_invocation, a_host_lives_long) {
    put_file("C:\\options", "-Db=1\n-Xignored");
    set_variable("_JAVA_OPTIONS", "-Dv='a b' @C:\\options");
    set_variable("QUORVEL_GUEST__JAVA_OPTIONS", "-Dg");
    initialize(FULL_CONFIGURATION);
    const std::string first = rewritten_full_line();
    EXPECT_EQ(first.find("-Xignored"), std::string::npos);
    reset_jlp_for_native_invocation();
    EXPECT_EQ(newPathListCount, 7);
    EXPECT_NE(rewritten_full_line(), first); // what a reset leaves makes a difference
    size_t in_use = 0;
    int steady_hundreds = 0; // an allocator's caches may come and go; a loss by every line shows in all
    for (int line = 0; line < 2000; line++) {
        release_jlp_for_native_invocation();
        ASSERT_EQ(lhs_count + rhs_count + processedArgCount + newPathListCount, 0);
        ASSERT_EQ(rewritten_full_line(), first) << line;
        if (line % 100 == 0) {
            steady_hundreds += heap_in_use() <= in_use;
            in_use = heap_in_use();
        }
    }
    EXPECT_GE(steady_hundreds, 10);
    for (const char *variable : {"_JAVA_OPTIONS", "QUORVEL_GUEST__JAVA_OPTIONS"}) {
        set_variable(variable, "");
    }
}

TEST_F(native_invocation, no_end_is_silent) {
    const struct {
        const char *configuration, *args, *message;
        int status = 1;
        bool is_always_said = false;
    } rows[] = {
        {"LOG_FILE_OR_DIR=none\\log", "", "Error! Could not open log_file_path: C:\\L\\none\\log", -1, true},
        {"QUORVEL_HOME=C:\\Q3", "-ea",
         "Error: Expected Quorvel native agent library, 'C:\\Q3\\quorvel.dll', doesn't exist"},
        {"", "@C:\\none", "Error: could not open `C:\\none'"},
        {"CONTAINER_OPTIONS=\"-Xc\"", "|", "Error: too many host or leading arguments (at most 10000)", 1, true},
    };
    const auto end = [](const auto &row, void (*listener)(const char *, int)) {
        set_jlp_end_listener(listener);
        initialize(here(row.configuration));
        lhs_count = row.args == std::string("|") ? ARGUMENT_SLOTS : 0;
        rewrite(row.args);
    };
    for (const auto &row : rows) {
        const testing::ExitedWithCode status(on_windows ? row.status : row.status & 255);
        const std::string message = here(row.message), line = message + '\n';
        const std::string told = "told: " + message + ", " + std::to_string(row.status);
        EXPECT_EXIT(end(row, nullptr), status, testing::Eq(line));
        EXPECT_EXIT(end(row, tell), status, testing::Eq((row.is_always_said ? line : "") + told));
    }
}

TEST_F(native_invocation, of_a_bundle_has_its_homes_above_the_launcher) {
    put_folder("C:\\R\\a\\b\\c\\jre\\bin");
    put_folder("C:\\R\\quorvel_home");
    // The launcher's folder -> container home, JVM home and Quorvel home as configured -> as they are then,
    // or what the process says at its end
    for (const texts &row : rows_of(R"(
C:\R\a\b\c\jre\bin -> || -> C:\R\a\b\c\jre\bin\..\..|C:\R\a\b\c\jre\bin\..\..\..\..\..|C:\R\a\b\c\jre\bin\..\..\..\..\..\quorvel_home
C:\R\bin -> |C:\R\a|C:\R\b -> C:\R\bin\..|C:\R\a|C:\R\b
C:\R\tools -> || ->
C:\none\bin -> || ->
C:\R\bin -> Y:\none|| ->
C:\R\bin -> |C:\R\a| -> Error: C:\R\a\quorvel_home doesn't exist
)")) {
        const texts configured = entries_of(here(row[1]));
        const auto fall_back = [&] {
            assign_text(&executable_dir, here(row[0]));
            assign_text(&container_home, configured[0]);
            assign_text(&jvm_home, configured[1]);
            assign_text(&quorvel_home, configured[2]);
            fall_back_on_bundle(); // may end the process with the same status
            fprintf(stderr, "%s|%s|%s\n", container_home, jvm_home, quorvel_home);
            exit(0);
        };
        const std::string said = row[2].empty() ? "" : here(row[2]) + '\n';
        EXPECT_EXIT(fall_back(), testing::ExitedWithCode(0), testing::Eq(said)) << row[0];
    }
}
