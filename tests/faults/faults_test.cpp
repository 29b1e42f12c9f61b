// Every service of the platform that fails: what the launcher and the rewriting say of it, the exit
// code, what becomes of the child, and that nothing stays open.

#include <fstream>

#include "tests/support/world.h"

namespace {

enum child_fate { NONE, GONE, RAN };

// What a program has left behind (services/services.cpp).
struct remains {
    int handles = -1, streams = -1;
    uint32_t child = 0;
    int allocations = 0;
};

constexpr const char *REPORT = "C:\\work\\report";
constexpr const char *EXPLAIN = "C:\\L\\bin\\explain.exe";
const std::string TRACED = "SHOW_START=true\n", TRANSPARENT = "TRANSPARENT=true\n";
const std::string REWRITING =
    TRACED + TRANSPARENT + "REWRITE_ARGUMENTS=true\nCONTAINER_HOME=C:\\C\nQUORVEL_HOME=C:\\Q\n";

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
        set_environment("CLASSPATH", "x");
        set_environment("JDK_JAVA_OPTIONS", "'-Da=b c'");
    }

    void TearDown() override {
        for (const char *name : {"QVL_FAULTS", "QVL_REPORT", "CLASSPATH", "JDK_JAVA_OPTIONS"}) {
            set_environment(name, "");
        }
    }

    static outcome run_with(const std::string &faults, const char *program, const texts &arguments) {
        set_environment("QVL_FAULTS", faults);
        fs::remove(on_disk(REPORT));
        return run_launcher(program, arguments);
    }

    static remains what_remains() {
        remains left;
        std::ifstream(on_disk(REPORT)) >> left.handles >> left.streams >> left.child >> left.allocations;
        EXPECT_TRUE(left.child == 0 || comes_true([&] { return !is_running(left.child); }));
        return left;
    }
};

} // namespace

TEST_F(fault, of_a_service) {
    const std::string logged = TRACED + "LOG_FILE_OR_DIR=", legacy = REWRITING + "LAUNCH_MODE=legacy\n";
    const std::string invalid = invalid_command(JAVA), ran = report(JAVA, {});
    const std::string invalid_place = "Error: java executable path either doesn't exist or is invalid: ";
    const std::string no_home = "Error: JVM_HOME directory '' doesn't exist\n";
    const std::string no_log = here("Error! Could not open log_file_path: C:\\L\\log\n");
    const std::string no_time = "\n[FAILED TO GET TIMESTAMP]\nLauncher PID = ";
    const texts path = {"-cp", here("C:\\L\\lib\\.."), "Main"}, file = {"@options", "Main"};
    const struct {
        const char *faults;
        std::string configuration, says, complains; // in standard output and error: all, or a part of a trace
        child_fate child;
        uint32_t status;
        texts arguments = {};
    } rows[] = {
        {"GetModuleFileNameA", "", invalid_place + "\"\"\n", "", NONE, 1},
        {"kind_of#1", "", here(invalid_place + "\"C:\\L\\bin\\java.exe\"\n"), "", NONE, 1},
        {"kind_of#2", TRACED, here("Error: JVM_HOME directory 'C:\\J' doesn't exist\n"), "", NONE, STATUS_MINUS_1},
        {"kind_of#3", TRACED, here("Error: \\bin/java doesn't exist in JVM_HOME 'C:\\J'\n"), "", NONE, STATUS_MINUS_1},
        {"kind_of#4", "", invalid, "", NONE, STATUS_MINUS_1},
        {"GetModuleFileNameA#2", "", ran, "", RAN, 0},
        {"open_to_read", TRACED, "", "", NONE, STATUS_MINUS_1},
        {"fgets#4 ferror", TRACED, here("WARNING: Problem loading configuration file: C:\\L\\launcher.cfg\n\n"), "",
         RAN, 0},
        {"open_to_write", logged + "log", "", no_log, NONE, STATUS_MINUS_1},
        {"fputs fflush fclose", logged + "log", ran, "", RAN, 0},
        {"GetFullPathNameA#1", TRACED, no_home, "", NONE, STATUS_MINUS_1},
        {"GetFullPathNameA#2", "", ran, "", RAN, 0},
        {"GetFullPathNameA#1 get_environment_value", TRACED, "    $JVM_HOME not set in environment\n\n" + no_home, "",
         NONE, STATUS_MINUS_1},
        {"time", TRACED, no_time, "", RAN, 0},
        {"ctime", TRACED, no_time, "", RAN, 0},
        {"gettimeofday", logged + "C:\\empty", here("C:\\empty\\jlp_ts0_pid"), "", RAN, 0},
        {"format_by_runtime", "", "", "format: ", NONE, 1},
        {"SetConsoleCtrlHandler", "", ran, "", RAN, 0},
        {"CreateJobObjectA", "", invalid, "", GONE, 1},
        {"SetInformationJobObject", "", ran, "", RAN, 0},
        {"CreateProcessA", "", invalid, "", NONE, 1},
        {"AssignProcessToJobObject=5", "", ran, "", RAN, 0},
        {"AssignProcessToJobObject=6", "", invalid, "", GONE, 1},
        {"ResumeThread", "", invalid, "", GONE, 1},
        {"ResumeThread TerminateProcess", "", invalid, "", GONE, 1},
        {"CreateJobObjectA=1450", TRANSPARENT, "", could_not_start(JAVA, 1450), NONE, 1},
        {"start_as_received=5", TRANSPARENT, "", could_not_start(JAVA, 5), NONE, 1},
        {"AssignProcessToJobObject=6", TRANSPARENT, "", could_not_start(JAVA, 6), GONE, 1},
        {"ResumeThread=8", TRANSPARENT, "", could_not_start(JAVA, 8), GONE, 1},
        {"AssignProcessToJobObject=5", TRANSPARENT, ran, "", RAN, 0},
        // The child is running: closing the job ends it.
        {"WaitForSingleObject=77", "", invalid, "", GONE, 77, {"hold=held"}},
        {"GetExitCodeProcess=77", "", ran + invalid, "", RAN, 77},
        {"CloseHandle", "", ran, "", RAN, 0},
        {"SetEnvironmentVariableA#3", legacy, "", "Error: Failed to set %QUORVEL_ORIGINAL_LIBRARY_PATH%\n", NONE, 1},
        {"SetEnvironmentVariableA#4", legacy, "", "Error: Failed to set %Path%\n", NONE, 1},
        {"SetEnvironmentVariableA#1", REWRITING, "", "Error: Failed to set %JDK_JAVA_OPTIONS%\n", NONE, 1},
        {"SetEnvironmentVariableA#2", REWRITING, "", "Error: Failed to set %CLASSPATH%\n", NONE, 1},
        {"JDK_JAVA_OPTIONS", REWRITING, "", "    $CLASSPATH set in environment: x\n", RAN, 0},
        {"get_environment_value", REWRITING, "", "    $CLASSPATH not set in environment\n", RAN, 0},
        {"kind_of>4", REWRITING, "", "Error: could not open `options'", NONE, 1, file},
        {"open_to_read#2", REWRITING, "", "Error: could not open `options'", NONE, 1, file},
        {"fread ferror", REWRITING, "", "Error: loading: options", NONE, 1, file},
        {"current_directory", REWRITING, "", "   cwd = \n", RAN, 0, {"-cp", "lib", "Main"}},
        {"GetFullPathNameA>5", REWRITING, "", here("       path_prefix_resolved = C:\\L\\lib\\..\n"), RAN, 0, path},
    };
    for (const auto &row : rows) {
        if (on_windows && std::string(row.faults).ends_with("TerminateProcess")) {
            continue; // the child is gone, but Wine keeps its file in use
        }
        SCOPED_TRACE(row.faults + (" with " + row.configuration));
        configure("LAUNCH_MODE=ri\nJVM_HOME=C:\\J\n" + row.configuration);
        const outcome result = run_with(row.faults, LAUNCHER, row.arguments);
        EXPECT_EQ(result.status, row.status);
        const bool is_whole = !row.configuration.starts_with(TRACED);
        EXPECT_TRUE(is_whole ? result.output == row.says : result.output.find(row.says) != std::string::npos)
            << result.output;
        EXPECT_NE(result.errors.find(row.complains), std::string::npos) << result.errors;
        EXPECT_EQ(result.errors.empty(), row.complains.empty());
        EXPECT_EQ(result.output.find("program ") != std::string::npos, row.child == RAN);
        const remains left = what_remains();
        EXPECT_EQ(left.handles, 0);
        // One where the process ends at once.
        EXPECT_EQ(left.streams, row.complains == no_log);
        EXPECT_EQ(left.child == 0, row.child == NONE);
    }
}

// Whichever request for memory fails: the process ends, or (where the platform knows a way around)
// everything comes out as it would.
TEST_F(fault, of_memory_loses_no_part_of_what_was_asked_for) {
    // The arguments that were rewritten, or what the child was given.
    const auto outcome_in = [](const outcome &result) {
        const std::string output = without_child_id(result.output);
        return output.substr(std::min({output.find(" arguments\n"), output.find("program "), output.size()}));
    };
    const texts explained = {"--rewrite", "--launcher-home",    here("C:\\L"), "--", "-Xmx1m", "@options",
                             "-cp",       here("C:\\L\\lib;x"), "Main"};
    const struct {
        const char *program;
        std::string mode;
        texts arguments;
    } runs[] = {{LAUNCHER, "ri\nSHOW_START=true\n", {"a b", "x"}},
                {LAUNCHER, "ri\n" + REWRITING, {"a b", "@options", "x"}},
                {EXPLAIN, "advanced\n" + REWRITING, explained}};
    for (const auto &[program, mode, arguments] : runs) {
        configure("JVM_HOME=C:\\J\nLOG_FILE_OR_DIR=log\nLAUNCH_MODE=" + mode);
        const outcome whole = run_with("none", program, arguments);
        ASSERT_EQ(whole.status, 0u) << whole.output << whole.errors;
        const int allocations = what_remains().allocations;
        ASSERT_GT(allocations, 50);
        for (int number = 1; number <= allocations; number += MEMORY_STEP) {
            SCOPED_TRACE(program + (" " + std::to_string(number)));
            const outcome result = run_with("memory#" + std::to_string(number), program, arguments);
            if (result.status == 0) {
                EXPECT_EQ(outcome_in(result), outcome_in(whole));
            } else {
                // With -1 the file that asks for words could not be read.
                const bool is_said = !(result.output + result.errors).empty();
                EXPECT_TRUE(result.status == STATUS_MINUS_1 || (result.status == 1 && is_said)) << result.status;
            }
        }
    }
    // Each argument takes one.
    const auto requests_for = [&](size_t count) {
        run_with("none", LAUNCHER, texts(count, "-ea"));
        return what_remains().allocations;
    };
    configure("LAUNCH_MODE=ri\nJVM_HOME=C:\\J\nREWRITE_ARGUMENTS=true\n");
    EXPECT_LE(requests_for(2000) - requests_for(1000), 1000 + 10);
    // The last text is for the trace of the child that is running by then.
    configure("JVM_HOME=C:\\J\nSHOW_START=true\nLAUNCH_MODE=ri\n");
    run_with("none", LAUNCHER, {"x"});
    const std::string last = "memory#" + std::to_string(what_remains().allocations);
    EXPECT_EQ(run_with(last, LAUNCHER, {"hold=held"}).status, 1u);
    EXPECT_NE(what_remains().child, 0u);
}
