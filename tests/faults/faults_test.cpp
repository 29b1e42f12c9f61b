// Every service of the platform that fails: what the launcher and the rewriting say of it, the exit
// code, what becomes of the child, and that nothing stays open.

#include <fstream>

#include "tests/support/world.h"

namespace {

enum child_fate { NONE, GONE, RAN };

// For explain_launch, which traces what it does.
texts explained(const texts &command_line) {
    texts arguments = {"--rewrite", "--trace", "--launcher-home", here("C:\\L"), "--"};
    arguments.insert(arguments.end(), command_line.begin(), command_line.end());
    return arguments;
}

// What a program has left behind (services/services.cpp).
struct remains {
    int handles = 0, streams = 0, allocations = 0;
    uint32_t child = 0;
};

constexpr const char *REPORT = "C:\\work\\report";
constexpr const char *EXPLAIN = "C:\\L\\bin\\explain.exe";

// Of how many requests for memory one is made to fail: a start takes its time under Wine and in front
// of a leak search.
constexpr int MEMORY_STEP = on_windows ? 17 : is_sanitized ? 7 : 1;

class fault : public launcher {
protected:
    void SetUp() override {
        launcher::SetUp();
        put_program("faulty_java.exe", LAUNCHER);
        put_program("faulty_explain_launch.exe", EXPLAIN);
        put_folder("C:\\L\\lib");
        put_file("C:\\work\\options", "-ea");
        set_environment("QVL_REPORT", to_text(on_disk(REPORT)));
    }

    void TearDown() override {
        for (const char *name : {"QVL_FAULTS", "QVL_REPORT", "JVM_HOME", "CLASSPATH", "JDK_JAVA_OPTIONS"}) {
            set_environment(name, "");
        }
    }

    static outcome run_with(const std::string &faults, const char *program, const texts &arguments) {
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
    const std::string traced = "SHOW_START=true\n", logged = traced + "LOG_FILE_OR_DIR=";
    const std::string transparent = "TRANSPARENT=true\n";
    const std::string invalid = invalid_command(JAVA), output_of_child = report(JAVA, {});
    const std::string invalid_place = "Error: java executable path either doesn't exist or is invalid: ";
    const std::string no_home = "Error: JVM_HOME directory '' doesn't exist\n";
    const std::string no_log = here("Error! Could not open log_file_path: C:\\L\\log\n");
    const std::string no_time = "\n[FAILED TO GET TIMESTAMP]\nLauncher PID = ";
    const struct {
        const char *faults;
        std::string configuration, says, complains; // the last of what is traced, and all of standard error
        child_fate child;
        uint32_t status;
        texts arguments = {};
    } rows[] = {
        {"GetModuleFileNameA", "", invalid_place + "\"\"\n", "", NONE, 1},
        {"kind_of#1", "", here(invalid_place + "\"C:\\L\\bin\\java.exe\"\n"), "", NONE, 1},
        {"kind_of#2", traced, here("Error: JVM_HOME directory 'C:\\J' doesn't exist\n"), "", NONE, STATUS_MINUS_1},
        {"kind_of#3", traced, here("Error: \\bin/java doesn't exist in JVM_HOME 'C:\\J'\n"), "", NONE, STATUS_MINUS_1},
        {"kind_of#4", "", invalid, "", NONE, STATUS_MINUS_1},
        {"GetModuleFileNameA#2", "", output_of_child, "", RAN, 0},
        {"open_to_read", traced, "", "", NONE, STATUS_MINUS_1},
        {"fgets#2 ferror", traced, here("WARNING: Problem loading configuration file: C:\\L\\launcher.cfg\n\n"), "",
         NONE, STATUS_MINUS_1},
        {"open_to_write", logged + "log", "", no_log, NONE, STATUS_MINUS_1},
        {"fputs fflush fclose", logged + "log", output_of_child, "", RAN, 0},
        {"GetFullPathNameA#1", traced, no_home, "", NONE, STATUS_MINUS_1},
        {"GetFullPathNameA#2", "", output_of_child, "", RAN, 0},
        {"GetFullPathNameA#1 get_environment_value", traced, "    $JVM_HOME not set in environment\n\n" + no_home, "",
         NONE, STATUS_MINUS_1},
        {"time", traced, no_time, "", RAN, 0},
        {"ctime", traced, no_time, "", RAN, 0},
        {"gettimeofday", logged + "C:\\empty", here("C:\\empty\\jlp_ts0_pid"), "", RAN, 0},
        {"format_by_runtime", "", "", "format: ", NONE, 1},
        {"SetConsoleCtrlHandler", "", output_of_child, "", RAN, 0},
        {"CreateJobObjectA", "", invalid, "", GONE, 1},
        {"SetInformationJobObject", "", output_of_child, "", RAN, 0},
        {"CreateProcessA", "", invalid, "", NONE, 1},
        {"AssignProcessToJobObject=5", "", output_of_child, "", RAN, 0},
        {"AssignProcessToJobObject=6", "", invalid, "", GONE, 1},
        {"ResumeThread", "", invalid, "", GONE, 1},
        {"ResumeThread TerminateProcess", "", invalid, "", GONE, 1},
        {"CreateJobObjectA=1450", transparent, "", could_not_start(JAVA, 1450), NONE, 1},
        {"start_as_received=5", transparent, "", could_not_start(JAVA, 5), NONE, 1},
        {"AssignProcessToJobObject=6", transparent, "", could_not_start(JAVA, 6), GONE, 1},
        {"ResumeThread=8", transparent, "", could_not_start(JAVA, 8), GONE, 1},
        {"AssignProcessToJobObject=5", transparent, output_of_child, "", RAN, 0},
        // The child is running: closing the job ends it.
        {"WaitForSingleObject=77", "", invalid, "", GONE, 77, {hold_order("C:\\work")}},
        {"GetExitCodeProcess=77", "", output_of_child + invalid, "", RAN, 77},
        {"CloseHandle", "", output_of_child, "", RAN, 0},
    };
    for (const auto &row : rows) {
        if (on_windows && std::string(row.faults).ends_with("TerminateProcess")) {
            continue; // the child is gone, but Wine keeps its file in use
        }
        SCOPED_TRACE(row.faults);
        configure(row.configuration + "\nLAUNCH_MODE=ri\nJVM_HOME=C:\\J\n");
        const outcome result = run_with(row.faults, LAUNCHER, row.arguments);
        EXPECT_EQ(result.status, row.status);
        // Without a trace the output is nothing but what the row says.
        EXPECT_NE(result.output.find(row.says), std::string::npos) << result.output;
        EXPECT_TRUE(row.configuration.starts_with(traced) || result.output == row.says) << result.output;
        EXPECT_EQ(result.errors.substr(0, row.complains.size()), row.complains);
        EXPECT_EQ(result.errors.empty(), row.complains.empty());
        EXPECT_EQ(result.output.find(output_of_child) != std::string::npos, row.child == RAN);
        const remains left = what_remains();
        EXPECT_EQ(left.handles, 0);
        EXPECT_EQ(left.streams, row.complains == no_log); // one where the process ends at once
        EXPECT_EQ(left.child == 0, row.child == NONE);
        expect_ended(left.child);
    }
}

TEST_F(fault, of_a_service_of_the_rewriting) {
    const texts path = {"-cp", here("C:\\L\\lib\\.."), "Main"}, relative = {"-cp", "lib", "Main"};
    const texts file = {"@options", "Main"};
    const struct {
        const char *faults, *mode;
        texts arguments;
        std::string says, complains;
        uint32_t status;
        bool starts = false; // by the launcher itself, with both keys on
    } rows[] = {
        {"SetEnvironmentVariableA#2", "legacy", path, "Error: Failed to set %QUORVEL_ORIGINAL_LIBRARY_PATH%\n", "", 1},
        {"SetEnvironmentVariableA#3", "legacy", path, "Error: Failed to set %Path%\n", "", 1},
        {"SetEnvironmentVariableA#1", "ri", path, "Error: Failed to set %JDK_JAVA_OPTIONS%\n", "", 1},
        {"SetEnvironmentVariableA#2", "ri", path, "Error: Failed to set %CLASSPATH%\n", "", 1},
        {"JDK_JAVA_OPTIONS", "ri", path, "    $CLASSPATH set in environment: x\n", "", 0},
        {"SetEnvironmentVariableA#2", "ri", path, "", "Error: Failed to set %CLASSPATH%\n", 1, true},
        {"SetEnvironmentVariableA#3", "legacy", path, "", "Error: Failed to set %Path%\n", 1, true},
        {"get_environment_value", "ri", path, "    $CLASSPATH not set in environment\n", "", 0},
        {"kind_of>4", "ri", file, "", "Error: could not open `options'", 1},
        {"open_to_read#2", "ri", file, "", "Error: could not open `options'", 1},
        {"fread ferror", "ri", file, "", "Error: loading: options", 1},
        {"current_directory", "ri", relative, "   cwd = \n", "", 0},
        {"GetFullPathNameA>5", "ri", path, here("       path_prefix_resolved = C:\\L\\lib\\..\n"), "", 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.faults) + " in " + row.mode);
        configure(std::string("CONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\nQUORVEL_HOME=C:\\Q\nLAUNCH_MODE=") + row.mode +
                  (row.starts ? "\nTRANSPARENT=true\nREWRITE_ARGUMENTS=true" : ""));
        set_environment("CLASSPATH", "x");
        set_environment("JDK_JAVA_OPTIONS", *row.mode == 'r' ? "-ea" : "");
        const outcome result = row.starts ? run_with(row.faults, LAUNCHER, row.arguments)
                                          : run_with(row.faults, EXPLAIN, explained(row.arguments));
        EXPECT_TRUE(!row.starts || result.output.empty()) << result.output;
        EXPECT_EQ(result.status, row.status) << result.output;
        EXPECT_NE(result.errors.find(row.says), std::string::npos) << result.output << result.errors;
        EXPECT_NE((row.starts ? result.errors : result.output).find(row.complains), std::string::npos)
            << result.output << result.errors;
        EXPECT_EQ(what_remains().streams, 0);
    }
}

// Whichever request for memory fails: the process ends, or (where the platform knows a way around)
// everything comes out as it would.
TEST_F(fault, of_memory_loses_no_part_of_what_was_asked_for) {
    // The arguments that were rewritten, or what the child was given.
    const auto outcome_in = [](const outcome &result) {
        const std::string output = without_child_id(result.output);
        return output.substr(std::min({output.find(" arguments\n"), output.find("\nprogram "), output.size()}));
    };
    set_environment("JDK_JAVA_OPTIONS", "'-Da=b c'");
    for (const std::string mode :
         {"", "ri\nTRANSPARENT=true\nREWRITE_ARGUMENTS=true", "advanced", "legacy", "patch", "ri"}) {
        const bool is_transparent = mode.find('\n') != std::string::npos, starts = mode.empty() || is_transparent;
        configure("SHOW_START=true\nLOG_FILE_OR_DIR=log\nCONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\nQUORVEL_HOME=C:\\Q\n"
                  "LAUNCH_MODE=" +
                  (mode.empty() ? "ri" : mode));
        const char *program = starts ? LAUNCHER : EXPLAIN;
        texts arguments =
            starts ? texts{"a b", "x"} : explained({"-Xmx1m", "@options", "-cp", here("C:\\L\\lib;x"), "Main"});
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
                // With -1 the file that asks for it could not be read.
                EXPECT_TRUE(!is_transparent || result.status != 1 || !result.errors.empty());
            }
        }
        if (starts) {
            // The last text is for the trace of the child that is running by then.
            arguments[1] = hold_order("C:\\work");
            EXPECT_EQ(run_with("memory#" + std::to_string(allocations), program, arguments).status, 1u);
            EXPECT_NE(what_remains().child, 0u);
            expect_ended(what_remains().child);
        }
    }
}
