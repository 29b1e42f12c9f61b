// Starts as users meet them: which java.exe runs, what reaches it and what comes back.

#include <chrono>
#include <regex>
#include <thread>

#include "tests/support/world.h"

namespace {

void configure(const std::string &home, const std::string &mode, const std::string &suffix = "") {
    put_file(home + "\\launcher.cfg",
             here((mode.empty() ? "" : "LAUNCH_MODE=" + mode + "\n") + "CONTAINER_HOME=C:\\C" + suffix +
                  "\nJVM_HOME=C:\\J" + suffix + "\nQUORVEL_HOME=C:\\Q" + suffix + "\n"));
}

// The one argument that makes a command line of so many characters.
std::string filling_up_to(size_t length, const std::string &program) {
    return std::string(length - here(program).size() - 1, 'x');
}

} // namespace

TEST_F(launcher, runs_the_java_of_the_mode_in_the_same_place) {
    const struct {
        const char *mode, *suffix, *place, *home;
    } rows[] = {
        {"", "", "\\bin\\java.exe", "C:\\C"},
        {"advanced", "", "\\bin\\java.exe", "C:\\C"},
        {"legacy", "", "\\bin\\java.exe", "C:\\C"},
        {"patch", "", "\\bin\\java.exe", "C:\\J"},
        {"secure", "", "\\bin\\java.exe", "C:\\J"},
        {"ri", "", "\\bin\\java.exe", "C:\\J"},
        {"rich", "", "\\bin\\java.exe", "C:\\J"},
        {"Patch", "", "\\bin\\java.exe", "C:\\C"},
        {"legacy", "", "\\bin\\javaw.exe", "C:\\C"},
        {"patch", "", "\\jre\\bin\\java.exe", "C:\\J"},
        {"advanced", "", "\\jre\\bin\\java.exe", "C:\\C"},
        {"secure", " and blanks", "\\bin\\java.exe", "C:\\J"},
        {"legacy", " and blanks", "\\jre\\bin\\java.exe", "C:\\C"},
        {"advanced", "启动器", "\\bin\\java.exe", "C:\\C"},
        {"ri", " Übergröße 🚀", "\\bin\\java.exe", "C:\\J"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.mode) + row.suffix + row.place);
        SetUp();
        const std::string home = std::string("C:\\L") + row.suffix;
        const std::string place = row.suffix + std::string(row.place);
        for (const char *other : {"C:\\C", "C:\\J"}) {
            if (!fs::exists(on_disk(other + place))) {
                put_java(other + place);
            }
        }
        if (!fs::exists(on_disk(home + row.place))) {
            put_launcher(home + row.place);
        }
        put_file(std::string("C:\\Q") + row.suffix + "\\quorvel.jar", "");
        configure(home, row.mode, row.suffix);
        const outcome result = run_launcher(home + row.place, {"-cp", "a.jar;b.jar"});
        EXPECT_EQ(result.output, report(row.home + place, {"-cp", "a.jar;b.jar"}));
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, 0u);
    }
}

TEST_F(launcher, hands_on_arguments_streams_and_environment) {
    configure("C:\\L", "patch");
    std::vector<std::string> thousands(3000);
    for (size_t i = 0; i < thousands.size(); i++) {
        thousands[i] = "a" + std::to_string(i);
    }
    const std::string thirty_thousand = filling_up_to(30000, "C:\\J\\bin\\java.exe");
    const struct {
        std::vector<std::string> given, received;
    } rows[] = {
        {{}, {}},
        {{"-Dx=日本.txt", "ÄÖÜß", "🚀"}, {"-Dx=日本.txt", "ÄÖÜß", "🚀"}},
        {{"two words", "-Dx=a b", "", "c"}, {"two", "words", "-Dx=a", "b", "c"}},
        {thousands, thousands},
        {{thirty_thousand}, {thirty_thousand}},
    };
    for (const auto &row : rows) {
        const outcome result = run_launcher("C:\\L\\bin\\java.exe", row.given);
        EXPECT_EQ(result.output, report("C:\\J\\bin\\java.exe", row.received));
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, 0u);
    }

    put_file("C:\\work\\in", "first line\nsecond äß\n");
    set_environment("FOR_THE_CHILD", "größer = 大");
    const std::vector<std::string> orders = {"env=FOR_THE_CHILD", "env=NO_SUCH_NAME", "stdin"};
    EXPECT_EQ(run_launcher("C:\\L\\bin\\java.exe", orders).output,
              report("C:\\J\\bin\\java.exe", orders) +
                  "env     FOR_THE_CHILD=größer = 大\nenv     NO_SUCH_NAME is unset\n"
                  "stdin   first line\nsecond äß\n");
    fs::remove(on_disk("C:\\work\\in"));

    // A shell of Unix expands wildcards itself; on Windows that is left to the program.
    put_file("C:\\work\\w\\日本.txt", "");
    const std::string pattern = "w\\*.txt";
    EXPECT_EQ(run_launcher("C:\\L\\bin\\java.exe", {pattern}).output,
              report("C:\\J\\bin\\java.exe", {on_windows ? "w\\日本.txt" : pattern}));
}

TEST_F(launcher, ends_with_the_status_of_the_child) {
    configure("C:\\L", "legacy");
    for (const char *code : {"0", "1", "3", "255", "259", "3221225477"}) {
        const unsigned long status = std::stoul(code);
        if (status > 255 && !on_windows) {
            continue;
        }
        const std::string order = std::string("exit=") + code;
        const outcome result = run_launcher("C:\\L\\bin\\java.exe", {order});
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.output, report("C:\\C\\bin\\java.exe", {order}) +
                                     (status == 0 ? "" : invalid_command("C:\\C\\bin\\java.exe")));
    }
}

TEST_F(launcher, says_what_it_cannot_run) {
    configure("C:\\L", "secure");
    for (const char *name : {"missing", "folder", "text", "java"}) {
        put_launcher(std::string("C:\\L\\bin\\") + name + "w.exe");
    }
    put_folder("C:\\J\\bin\\folderw.exe");
    put_file("C:\\J\\bin\\textw.exe", "no program\n");
    put_launcher("C:\\L\\tools\\java.exe");
    put_launcher("C:\\M\\BIN\\java.exe");
    const std::string invalid_place = "Error: java executable path either doesn't exist or is invalid: ";
    const struct {
        const char *program;
        std::string output;
        uint32_t status;
    } rows[] = {
        {"C:\\L\\bin\\missingw.exe", invalid_command("C:\\J\\bin\\missingw.exe"), STATUS_MINUS_1},
        {"C:\\L\\bin\\folderw.exe", invalid_command("C:\\J\\bin\\folderw.exe"), STATUS_MINUS_1},
        {"C:\\L\\bin\\textw.exe", invalid_command("C:\\J\\bin\\textw.exe"), 1},
        {"C:\\L\\tools\\java.exe", here(invalid_place + "\"C:\\L\\tools\\java.exe\"\n"), 1},
        {"C:\\M\\BIN\\java.exe", here(invalid_place + "\"C:\\M\\BIN\\java.exe\"\n"), 1},
    };
    for (const auto &row : rows) {
        const outcome result = run_launcher(row.program, {});
        EXPECT_EQ(result.output, row.output);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, row.status) << row.program;
    }

    // The launcher's own command line fits, the child's is at the limit and beyond.
    const std::string home = "C:\\J" + std::string(40, 'j');
    put_java(home + "\\bin\\java.exe");
    put_file("C:\\L\\launcher.cfg", here("LAUNCH_MODE=ri\nJVM_HOME=" + home + "\n"));
    for (const size_t length : {32766, 32767}) {
        const std::string filler = filling_up_to(length, home + "\\bin\\java.exe");
        const outcome result = run_launcher("C:\\L\\bin\\java.exe", {filler});
        EXPECT_EQ(result.output, length < 32767 ? report(home + "\\bin\\java.exe", {filler})
                                                : invalid_command(home + "\\bin\\java.exe"));
        EXPECT_EQ(result.status, length < 32767 ? 0u : 1u);
    }
}

TEST_F(launcher, killed_takes_the_child_along_and_leaves_grandchildren) {
    configure("C:\\L", "ri");
    const std::string child_file = to_text(on_disk("C:\\work\\child"));
    const std::string grandchild_file = to_text(on_disk("C:\\work\\sub\\grandchild"));
    put_folder("C:\\work\\sub");
    const uint32_t id = start_launcher("C:\\L\\bin\\java.exe", {"spawn=" + grandchild_file, "wait=" + child_file});
    ASSERT_TRUE(
        comes_true([] { return process_id_in("C:\\work\\child") != 0 && process_id_in("C:\\work\\sub\\grandchild"); }));
    const uint32_t grandchild = process_id_in("C:\\work\\sub\\grandchild");
    EXPECT_TRUE(is_running(process_id_in("C:\\work\\child")));
    end_by_force(id);
    wait_for_end(id);
    EXPECT_TRUE(comes_true([] { return !is_running(process_id_in("C:\\work\\child")); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_TRUE(is_running(grandchild));
    end_by_force(grandchild);
    EXPECT_TRUE(comes_true([] { return !is_running(process_id_in("C:\\work\\sub\\grandchild")); }));
}

// The whole of a trace, which the log file repeats.
TEST_F(launcher, traces_the_start_to_output_and_log) {
    const std::string program = "C:\\L 1\\bin\\java.exe";
    put_launcher(program);
    put_java("C:\\C 1\\bin\\java.exe");
    put_file("C:\\L 1\\launcher.cfg", here("LOG_FILE_OR_DIR=log.txt\nLAUNCH_MODE=legacy\nCONTAINER_HOME=C:\\C 1\n"
                                           "QUORVEL_HOME=C:\\Q\\\nSHOW_START=true"));
    put_file("C:\\L 1\\log.txt", "of the last start");
    set_environment("JVM_HOME", here("C:\\J"));
    outcome result = run_launcher(program, {"-cp", "100%d b", "exit=3"});
    EXPECT_EQ(result.status, 3u);
    EXPECT_EQ(result.errors, "");

    // The child runs before its process id is traced, so that line may stand after its report.
    const std::regex child_id(R"(Windows Java PID = \d+\n)");
    std::smatch line;
    ASSERT_TRUE(std::regex_search(result.output, line, child_id));
    result.output.erase(static_cast<size_t>(line.position()), line.str().size());
    const std::string own_lines = here(R"(LAUNCHER CONFIGURATION LOADED
-----------------------------
   config_path:                          C:\L 1\launcher.cfg
   os_name:                              Windows
   launch_mode:                          legacy
   is_native_invocation:                 no
   log_file_path:                        C:\L 1\log.txt
   container_home:                       C:\C 1
   quorvel_home:                         C:\Q\

INPUT COMMAND:
--------------
    )") + to_text(on_disk(program)) +
                                  here(R"( -cp 100%d b exit=3

KEY DIRECTORIES:
--------------
    executable_file_path = C:\L 1\bin\java.exe
    executable_dir       = C:\L 1\bin
    bin_dir              = \bin
    launcher_home        = C:\L 1

Get JVM_HOME from environment
-----------------------------
    $JVM_HOME set in environment: C:\J

QUOTING WINDOWS ARG DUE TO SPACES:
    Before: C:\C 1\bin\java.exe
    After:  "C:\C 1\bin\java.exe"

OUTPUT COMMAND:
---------------
"C:\C 1\bin\java.exe" -cp 100%d b exit=3



EXECUTING QUORVEL AGENT PROCESS ......

)");
    const std::string child_lines =
        report("C:\\C 1\\bin\\java.exe", {"-cp", "100%d", "b", "exit=3"}) + invalid_command("C:\\C 1\\bin\\java.exe");
    EXPECT_EQ(after_banner(result), own_lines + child_lines);

    std::string log = read_file(on_disk("C:\\L 1\\log.txt"));
    ASSERT_TRUE(std::regex_search(log, line, child_id));
    log.erase(static_cast<size_t>(line.position()), line.str().size());
    EXPECT_EQ(log + child_lines, result.output);
}
