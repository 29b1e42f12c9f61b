// Starts as users meet them: which java.exe runs, what reaches it and what comes back.

#include <sstream>

#include "tests/support/world.h"

TEST_F(launcher, runs_the_java_of_the_mode_in_the_same_place) {
    const struct {
        const char *modes, *suffix, *place, *home;
    } rows[] = {
        {"- advanced legacy Patch", "", "\\bin\\java.exe", "C:\\C"},
        {"patch secure ri rich", "", "\\bin\\java.exe", "C:\\J"},
        {"legacy", "", "\\bin\\javaw.exe", "C:\\C"},
        {"patch", "启动器 🚀", "\\jre\\bin\\java.exe", "C:\\J"},
        {"advanced", " and blanks", "\\jre\\bin\\java.exe", "C:\\C"},
    };
    for (const auto &row : rows) {
        SetUp();
        const std::string suffix = row.suffix, program = "C:\\L" + suffix + row.place, place = suffix + row.place;
        put_launcher(program);
        put_java("C:\\C" + place);
        put_java("C:\\J" + place);
        put_file("C:\\Q" + suffix + "\\quorvel.jar", "");
        std::istringstream modes(row.modes);
        for (std::string mode; modes >> mode;) {
            put_file("C:\\L" + suffix + "\\launcher.cfg",
                     here((mode == "-" ? "" : "LAUNCH_MODE=" + mode) + "\nCONTAINER_HOME=C:\\C" + suffix +
                          "\nJVM_HOME=C:\\J" + suffix + "\nQUORVEL_HOME=C:\\Q" + suffix));
            const outcome result = run_launcher(program, {"-cp", "a.jar;b.jar"});
            EXPECT_EQ(result.output, report(row.home + place, {"-cp", "a.jar;b.jar"})) << mode;
            EXPECT_EQ(result.errors, "");
            EXPECT_EQ(result.status, 0u);
        }
    }
}

TEST_F(launcher, hands_on_arguments_and_streams) {
    put_file("C:\\work\\w\\日本.txt", "");
    // A shell of Unix expands wildcards itself; on Windows that is left to the program.
    put_file("C:\\work\\in", "first line\nsecond äß\n");
    const std::string pattern = "w\\*.txt";
    texts given = {"-Dx=🚀", "two words", "", "stdin", pattern};
    texts received = {"-Dx=🚀", "two", "words", "stdin", on_windows ? "w\\日本.txt" : pattern};
    given.resize(3000, "a");
    received.resize(3000, "a");
    EXPECT_EQ(run_launcher(LAUNCHER, given).output, report(JAVA, received) + "stdin   first line\nsecond äß\n");
    EXPECT_EQ(run_launcher(LAUNCHER, {}).output, report(JAVA, {}));
}

// Every decoy is a stand-in, which would report its own path. Shorter and longer readings of an unquoted path, from the
// configuration and from the environment.
TEST_F(launcher, reads_no_other_program_out_of_a_path) {
    const struct {
        std::string home;
        texts decoys, arguments;
    } rows[] = {
        {"C:\\K 1", {"K.exe", "work\\1\\bin\\java.exe", "K 1\\bin\\java"}, {}},
        {"C:\\K 1 2 (x)", {"K", "K 1.exe", "K 1 2"}, {"(x)\\bin\\java.exe"}},
        {"C:\\K  1", {"K.exe", "K .exe", "K 1\\bin\\java.exe"}, {}},
        {"C:\\K x\\y z", {"K", "K x\\y.exe", "K x\\y"}, {}},
        {"C:\\-K&x^%PATH%;y", {"-K", "-K.exe", "work\\x.exe"}, {"&", "calc.exe"}},
        {"C:\\K2",
         {"K2.exe", "K2\\bin\\java.exe 1.exe", "K2\\bin\\java.exe 1\\x.exe", "x.exe"},
         {"1\\x.exe", "..\\..\\..\\x.exe"}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.home);
        SetUp();
        for (const std::string &decoy : row.decoys) {
            put_java("C:\\" + decoy);
        }
        put_java(row.home + "\\bin\\java.exe");
        set_environment("JVM_HOME", here(row.home));
        for (const std::string &key : {"\nJVM_HOME=" + row.home, std::string()}) {
            configure("LAUNCH_MODE=ri" + key);
            const outcome result = run_launcher(LAUNCHER, row.arguments);
            EXPECT_EQ(result.output, report(row.home + "\\bin\\java.exe", row.arguments));
            EXPECT_EQ(result.status, 0u);
        }
    }
}

// 259 is also what Windows calls a process that has not ended.
TEST_F(launcher, gives_back_every_bit_of_the_exit_code) {
    for (const uint32_t code : {7u, 255u, 256u, 259u, 0x7FFFFFFFu, 0xC0000005u, 0xFFFFFFFFu}) {
        const std::string order = "exit=" + std::to_string(code);
        EXPECT_EQ(run_launcher(LAUNCHER, {order}).status, on_windows ? code : code % 256) << code;
    }
}

TEST_F(launcher, killed_takes_the_child_along_and_leaves_grandchildren) {
    put_folder("C:\\work\\run");
    const uint32_t id = start_launcher(LAUNCHER, {"run=" + to_text(on_disk(JAVA)), "hold=grandchild"});
    ASSERT_TRUE(comes_true([] {
        return process_id_in("C:\\work\\run\\starter") != 0 && process_id_in("C:\\work\\run\\grandchild") != 0;
    }));
    const uint32_t child = process_id_in("C:\\work\\run\\starter");
    const uint32_t grandchild = process_id_in("C:\\work\\run\\grandchild");
    EXPECT_TRUE(is_running(child));
    end_by_force(id);
    wait_for_end(id);
    EXPECT_TRUE(comes_true([=] { return !is_running(child); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_TRUE(is_running(grandchild));
    fs::remove(on_disk("C:\\work\\run\\grandchild"));
    EXPECT_TRUE(comes_true([=] { return !is_running(grandchild); }));
}

// All of a trace that follows the configuration, and the log file that repeats the whole.
TEST_F(launcher, traces_the_start_to_output_and_log) {
    const std::string program = "C:\\L 1\\bin\\java.exe";
    put_launcher(program);
    put_java("C:\\C 1\\bin\\java.exe");
    put_file("C:\\L 1\\launcher.cfg", here("LOG_FILE_OR_DIR=log.txt\nLAUNCH_MODE=legacy\nCONTAINER_HOME=C:\\C 1\n"
                                           "QUORVEL_HOME=C:\\Q\\\nSHOW_START=true"));
    put_file("C:\\L 1\\log.txt", "of the last start");
    set_environment("JVM_HOME", here("C:\\J"));
    const outcome result = run_launcher(program, {"-cp", "100%d b", "exit=3"});
    EXPECT_EQ(result.status, 3u);
    EXPECT_EQ(result.errors, "");
    const std::string own_lines =
        "INPUT COMMAND:\n--------------\n    " + to_text(on_disk(program)) + here(R"( -cp 100%d b exit=3

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
    const std::string trace = without_child_id(after_banner(result));
    EXPECT_EQ(trace.substr(std::min(trace.find("INPUT COMMAND:"), trace.size())), own_lines + child_lines);
    const std::string log = read_file(on_disk("C:\\L 1\\log.txt"));
    EXPECT_NE(without_child_id(log), log);
    EXPECT_EQ(without_child_id(log) + child_lines, without_child_id(result.output));
}
