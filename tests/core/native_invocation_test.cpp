#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "jli/ending.h"
#include "tests/rewriting/engine.h"
#include "tests/support/programs.h"
#include "tests/support/trace.h"

static size_t allocations = 0; // calls of malloc()

extern "C" {
void *__real_malloc(size_t size);
void *__wrap_malloc(size_t size);
}

void *__wrap_malloc(size_t size) {
    allocations++;
    return __real_malloc(size);
}

namespace {

class native_invocation : public testing::Test {
protected:
    void SetUp() override { make_disk(); }
    void TearDown() override { forget_configuration(); }
};

constexpr char HOST_TITLE[] = "DETERMINING HOST JVM VERSION:\n-----------------------------\n";
constexpr char GUEST_TITLE[] = "DETERMINING GUEST JAVA VERSION:\n-------------------------------\n";

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
        const std::string host = HOST_TITLE + trace + "Host JVM is Java " + row[4] + "\n\n";
        const std::string guest = GUEST_TITLE + trace, said = "Guest JVM is Java " + row[4] + "\n";
        for (const std::string mode : {"advanced", "legacy", "patch"}) {
            forget_configuration();
            assign_text(&jvm_home, here(mode == "legacy" ? "C:\\none" : "C:\\H"));
            assign_text(&container_home, here("C:\\H"));
            assign_text(&launch_mode, mode);
            EXPECT_EQ(traced_by(init_host_and_guest_versions),
                      (mode == "legacy" ? "" : host) + guest + (mode == "patch" ? "" : said));
            EXPECT_EQ(is_host_java_9_plus, mode != "legacy" && row[4] == "9+");
            EXPECT_EQ(is_guest_java_9_plus, row[4] == "9+");
        }
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

TEST_F(native_invocation, an_argument_costs_one_allocation) {
    const auto allocations_for = [](size_t count) {
        std::string list = "-ea";
        while (list.size() < 4 * count) {
            list += "|-ea";
        }
        start("legacy 8 8");
        allocations = 0;
        rewrite(list);
        return allocations;
    };
    EXPECT_LE(allocations_for(2000) - allocations_for(1000), 1000u + 10);
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
