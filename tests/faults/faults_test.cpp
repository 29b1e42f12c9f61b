// Every service of the platform that fails: what the launcher and the rewriting say of it, the exit
// code, what becomes of the child, and that nothing stays open.

#include <fstream>

#include "tests/support/world.h"

namespace {

enum child_fate { NONE, GONE, RAN };

// What a program has left behind (services/services.cpp).
struct remains {
    int handles = 0, streams = 0, allocations = 0;
    uint32_t child = 0;
};

constexpr const char *REPORT = "C:\\work\\report";
constexpr const char *CHILD_ID = "C:\\work\\child";

std::string output_of_child() {
    return report("C:\\J\\bin\\java.exe", {});
}

class fault : public launcher {
protected:
    void SetUp() override {
        launcher::SetUp();
        put_faulty("faulty_java.exe", "C:\\L\\bin\\java.exe");
        put_faulty("faulty_explain_launch.exe", "C:\\L\\bin\\explain.exe");
        put_folder("C:\\L\\lib");
        put_file("C:\\work\\options", "-ea");
        set_environment("QVL_REPORT", to_text(on_disk(REPORT)));
    }

    void TearDown() override {
        for (const char *name : {"QVL_FAULTS", "QVL_REPORT", "JVM_HOME", "CLASSPATH", "JDK_JAVA_OPTIONS"}) {
            set_environment(name, "");
        }
    }

    static void put_faulty(const char *built, const char *windows_path) {
        fs::remove(on_disk(windows_path));
        fs::copy_file(own_file().parent_path() / built, on_disk(windows_path));
    }

    static outcome run_with(const std::string &faults, const char *program,
                            const std::vector<std::string> &arguments = {}) {
        set_environment("QVL_FAULTS", faults.empty() ? "none" : faults);
        fs::remove(on_disk(REPORT));
        return run_launcher(program, arguments);
    }

    static remains what_remains() {
        remains left;
        std::ifstream file(on_disk(REPORT));
        std::string word;
        file >> word >> left.handles >> word >> left.streams >> word >> left.child >> word >> left.allocations;
        EXPECT_TRUE(file) << "no report";
        return left;
    }

    static void expect_ended(uint32_t child) {
        EXPECT_TRUE(child == 0 || comes_true([=] { return !is_running(child); }));
    }
};

} // namespace

TEST_F(fault, of_a_service_of_the_start) {
    const std::string traced = "SHOW_START=true\n";
    const std::string invalid = invalid_command("C:\\J\\bin\\java.exe");
    const std::string jvm_home_empty = "Error: JVM_HOME directory '' doesn't exist\n";
    const struct {
        const char *faults;
        std::string configuration, says, complains; // the last of what is traced, and all of standard error
        child_fate child;
        uint32_t status;
        int streams = 0; // that are left open where the process ends at once
    } rows[] = {
        {"GetModuleFileNameA", "", "Error: java executable path either doesn't exist or is invalid: \"\"\n", "", NONE,
         1},
        {"kind_of#1", "", here("or is invalid: \"C:\\L\\bin\\java.exe\"\n"), "", NONE, 1},
        {"kind_of#2", traced, here("Error: JVM_HOME directory 'C:\\J' doesn't exist\n"), "", NONE, STATUS_MINUS_1},
        {"kind_of#3", traced, here("Error: \\bin/java doesn't exist in JVM_HOME 'C:\\J'\n"), "", NONE, STATUS_MINUS_1},
        {"kind_of#4", "", invalid, "", NONE, STATUS_MINUS_1},
        {"GetModuleFileNameA#2", "", output_of_child(), "", RAN, 0},
        {"open_to_read", traced, "", "", NONE, STATUS_MINUS_1},
        {"fgets#2 ferror", traced, here("WARNING: Problem loading configuration file: C:\\L\\launcher.cfg\n\n"), "",
         NONE, STATUS_MINUS_1},
        {"open_to_write", traced + "LOG_FILE_OR_DIR=log\n", "",
         here("Error! Could not open log_file_path: C:\\L\\log\n"), NONE, STATUS_MINUS_1, 1},
        {"fputs fflush fclose", traced + "LOG_FILE_OR_DIR=log\n", output_of_child(), "", RAN, 0},
        {"GetFullPathNameA#1", traced, jvm_home_empty, "", NONE, STATUS_MINUS_1},
        {"GetFullPathNameA#2", "", output_of_child(), "", RAN, 0},
        {"GetFullPathNameA#1 get_environment_value", traced,
         "    $JVM_HOME not set in environment\n\n" + jvm_home_empty, "", NONE, STATUS_MINUS_1},
        {"time", traced, "\n[FAILED TO GET TIMESTAMP]\nLauncher PID = ", "", RAN, 0},
        {"ctime", traced, "\n[FAILED TO GET TIMESTAMP]\nLauncher PID = ", "", RAN, 0},
        {"gettimeofday", traced + "LOG_FILE_OR_DIR=C:\\empty", here("C:\\empty\\jlp_ts0_pid"), "", RAN, 0},
        {"format_by_runtime", "", "", "format: ", NONE, 1},
        {"SetConsoleCtrlHandler", "", output_of_child(), "", RAN, 0},
        {"CreateJobObjectA", "", invalid, "", GONE, 1},
        {"SetInformationJobObject", "", output_of_child(), "", RAN, 0},
        {"CreateProcessA", "", invalid, "", NONE, 1},
        {"AssignProcessToJobObject=5", "", output_of_child(), "", RAN, 0},
        {"AssignProcessToJobObject=6", "", invalid, "", GONE, 1},
        {"ResumeThread", "", invalid, "", GONE, 1},
        {"GetExitCodeProcess=77", "", output_of_child() + invalid, "", RAN, 77},
        {"CloseHandle", "", output_of_child(), "", RAN, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.faults);
        put_file("C:\\L\\launcher.cfg", here(row.configuration + "\nLAUNCH_MODE=ri\nJVM_HOME=C:\\J\n"));
        const outcome result = run_with(row.faults, "C:\\L\\bin\\java.exe");
        EXPECT_EQ(result.status, row.status);
        // Without a trace the output is nothing but what the row says.
        EXPECT_NE(result.output.find(row.says), std::string::npos) << result.output;
        EXPECT_TRUE(!row.configuration.empty() || result.output.ends_with(row.says));
        EXPECT_EQ(result.errors.substr(0, row.complains.size()), row.complains);
        EXPECT_EQ(result.errors.empty(), row.complains.empty());
        EXPECT_EQ(result.output.find(output_of_child()) != std::string::npos, row.child == RAN);
        const remains left = what_remains();
        EXPECT_EQ(left.handles, 0);
        EXPECT_EQ(left.streams, row.streams);
        EXPECT_EQ(left.child == 0, row.child == NONE);
        expect_ended(left.child);
    }
}

// The child is running when the launcher gives up waiting: closing the job ends it.
TEST_F(fault, of_the_wait_takes_the_child_along) {
    put_file("C:\\L\\launcher.cfg", here("LAUNCH_MODE=ri\nJVM_HOME=C:\\J\n"));
    const outcome result =
        run_with("WaitForSingleObject", "C:\\L\\bin\\java.exe", {"wait=" + to_text(on_disk(CHILD_ID))});
    EXPECT_EQ(result.status, on_windows ? 259u : 259u % 256);
    EXPECT_EQ(result.output, invalid_command("C:\\J\\bin\\java.exe"));
    EXPECT_EQ(what_remains().handles, 0);
    expect_ended(what_remains().child);
}

TEST_F(fault, of_a_service_of_the_rewriting) {
    const std::vector<std::string> path = {"--trace", "--launcher-home",      here("C:\\L"), "--",
                                           "-cp",     here("C:\\L\\lib\\.."), "Main"};
    const std::vector<std::string> relative = {"--trace", "--launcher-home", here("C:\\L"), "--", "-cp", "lib", "Main"};
    const std::vector<std::string> file = {"--trace", "--launcher-home", here("C:\\L"), "--", "@options", "Main"};
    const struct {
        const char *faults, *mode;
        std::vector<std::string> arguments;
        std::string says, complains;
        uint32_t status;
    } rows[] = {
        {"SetEnvironmentVariableA#2", "legacy", path, "Error: Failed to set %QUORVEL_ORIGINAL_LIBRARY_PATH%\n", "", 1},
        {"SetEnvironmentVariableA#3", "legacy", path, "Error: Failed to set %Path%\n", "", 1},
        {"SetEnvironmentVariableA#1", "ri", path, "Error: Failed to set %JDK_JAVA_OPTIONS%\n", "", 1},
        {"SetEnvironmentVariableA#2", "ri", path, "Error: Failed to set %CLASSPATH%\n", "", 1},
        {"JDK_JAVA_OPTIONS", "ri", path, "    $CLASSPATH set in environment: x\n", "", 0},
        {"get_environment_value", "ri", path, "    $CLASSPATH not set in environment\n", "", 0},
        {"kind_of", "ri", file, "", "Error: could not open `options'", 1},
        {"open_to_read#2", "ri", file, "", "Error: could not open `options'", 1},
        {"fread ferror", "ri", file, "", "Error: loading: options", 1},
        {"current_directory", "ri", relative, "   cwd = \n", "", 0},
        {"GetFullPathNameA>5", "ri", path, here("       path_prefix_resolved = C:\\L\\lib\\..\n"), "", 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.faults) + " in " + row.mode);
        put_file("C:\\L\\launcher.cfg",
                 here("CONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\nQUORVEL_HOME=C:\\Q\nLAUNCH_MODE=") + row.mode);
        set_environment("CLASSPATH", "x");
        set_environment("JDK_JAVA_OPTIONS", *row.mode == 'r' ? "-ea" : "");
        const outcome result = run_with(row.faults, "C:\\L\\bin\\explain.exe", row.arguments);
        EXPECT_EQ(result.status, row.status) << result.output;
        EXPECT_NE(result.output.find(row.says), std::string::npos) << result.output;
        EXPECT_EQ(result.errors.substr(result.errors.find("Error") == std::string::npos ? result.errors.size()
                                                                                        : result.errors.find("Error")),
                  row.complains);
        EXPECT_EQ(what_remains().streams, 0);
    }
}

// Whichever request for memory fails: the process ends, or (where the platform knows a way around)
// everything comes out as it would.
TEST_F(fault, of_memory_loses_no_part_of_what_was_asked_for) {
    const std::vector<std::string> rewriting = {
        "--trace", "--launcher-home", here("C:\\L"), "--", "-Xmx1m", "@options", "-cp", here("C:\\L\\lib;x"), "Main"};
    // The arguments that were rewritten, or what the child was given.
    const auto outcome_in = [](const outcome &result) {
        const size_t start = std::min(result.output.find(" arguments\n"), result.output.find("\nprogram "));
        return result.output.substr(std::min(start, result.output.size()));
    };
    set_environment("JDK_JAVA_OPTIONS", "'-Da=b c'");
    for (const std::string mode : {"", "advanced", "legacy", "patch", "ri"}) {
        put_file("C:\\L\\launcher.cfg",
                 here("SHOW_START=true\nLOG_FILE_OR_DIR=log\nCONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\n"
                      "QUORVEL_HOME=C:\\Q\nLAUNCH_MODE=") +
                     (mode.empty() ? "ri" : mode));
        const char *program = mode.empty() ? "C:\\L\\bin\\java.exe" : "C:\\L\\bin\\explain.exe";
        std::vector<std::string> arguments = mode.empty() ? std::vector<std::string>{"a b", "x"} : rewriting;
        const outcome whole = run_with("", program, arguments);
        ASSERT_EQ(whole.status, 0u);
        const int allocations = what_remains().allocations;
        EXPECT_GT(allocations, 50);
        for (int number = 1; number <= allocations; number += MEMORY_STEP) {
            SCOPED_TRACE(mode + " " + std::to_string(number));
            const outcome result = run_with("memory#" + std::to_string(number), program, arguments);
            if (result.status == 0) {
                EXPECT_EQ(outcome_in(result), outcome_in(whole));
            } else {
                EXPECT_TRUE(result.status == 1 || result.status == STATUS_MINUS_1) << result.status;
            }
        }
        if (mode.empty()) {
            // The last text is for the trace of the child that is running by then.
            arguments[1] = "wait=" + to_text(on_disk(CHILD_ID));
            EXPECT_EQ(run_with("memory#" + std::to_string(allocations), program, arguments).status, 1u);
            EXPECT_NE(what_remains().child, 0u);
            expect_ended(what_remains().child);
        }
    }
}
