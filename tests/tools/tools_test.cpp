// explain_launch, the example of a native host, and the example configurations, as users run them.

#include <regex>

#include "tests/support/world.h"

namespace {

class tools : public launcher {};

constexpr const char *CONFIGURATION = "C:\\L\\launcher.cfg";

outcome run(const std::string &tool, texts arguments) {
    for (std::string &argument : arguments) {
        argument = here(argument);
    }
    const fs::path file = own_file().parent_path() / (on_windows ? tool + ".exe" : tool);
    return end_of_launcher(start({file, arguments, on_disk("C:\\work")}));
}

// Verdict, status, fault and command line of explain_launch against those of the launcher in this place.
void expect_agreement(const outcome &said, const char *place, const texts &arguments) {
    static const std::regex verdict("(?:Would be started|status (-?\\d+), ).*\n  (.*)\n");
    const outcome done = run_launcher(place, arguments);
    const std::string trace = std::regex_replace(done.output + done.errors, std::regex("\n+"), " ");
    const bool has_run = trace.find("program ") != std::string::npos;
    EXPECT_EQ(said.status, has_run ? 0u : 1u) << said.output << trace;
    EXPECT_EQ(said.output.starts_with("The launch would go through.\n"), has_run) << said.output;
    std::smatch told;
    ASSERT_TRUE(std::regex_search(said.output, told, verdict)) << said.output << trace;
    EXPECT_EQ(done.status, told.str(1) == "-1" ? STATUS_MINUS_1 : std::stoul('0' + told.str(1)));
    const std::string traced = (has_run ? "OUTPUT COMMAND: --------------- " : "") + told.str(2);
    const bool is_silent = trace.empty() || trace.starts_with("program ");
    EXPECT_TRUE(is_silent || (trace + ' ').find(traced + ' ') != std::string::npos) << traced << trace;
}

} // namespace

TEST_F(tools, a_verdict_is_the_launchers_own_and_its_first_line_names_fault_and_mend) {
    const char *moved = "C:\\L\\jre\\bin\\java.exe", *windowed = "C:\\L\\bin\\javaw.exe";
    const std::string goes = "The launch would go through.", rewrite = "\nREWRITE_ARGUMENTS=true",
                      good = "JVM_HOME=C:\\J";
    const std::string homes = "CONTAINER_HOME=C:\\C\nJVM_HOME=..\\J\nQUORVEL_HOME=C:\\Q\\\nLAUNCH_MODE=";
    const struct {
        std::string lines, said;
        texts move = {}; // from, to
        const char *place = LAUNCHER;
    } rows[] = {
        {"JVM_HOM=C:\\J", "'JVM_HOM=C:\\J', is passed over: write JVM_HOME, which is most likely meant."},
        {" jvm_home =C:\\J",
         "begin it in the first column and write JVM_HOME in capitals and take out the blank before its =."},
        {"JVM_HOME C:\\J", "is passed over: put a = behind JVM_HOME."},
        {"set JVM_HOME=C:\\J", "is passed over: begin it with JVM_HOME=."},
        {"#JVM_HOME=C:\\J", "Line 3 of launcher.cfg sets JVM_HOME, but is a comment"},
        {"JVM_HOME=\"C:\\J\"", "quotes are not taken off"},
        {"JVM_HOME=C:\\J # new", "a comment behind a value"},
        {"JVM_HOME=%J%\\x", "is not replaced here"},
        {"JVM_HOME=\\\\server\\J", "a network name counts as a path below the launcher home"},
        {"JVM_HOME=C:\\J\nJVM_HOME=C:\\no", "Lines 3 and 4 of launcher.cfg both set JVM_HOME, and the last one counts"},
        {"JVM_HOME=C:\\J\\bin", "one folder too deep: the Java home is C:\\J."},
        {"JVM_HOME=C:\\J\\..\\K", "JVM_HOME is C:\\K, which is not there: C:\\"},
        {"JVM_HOME=C:\\M\xFC", "Line 3 of launcher.cfg holds letters in an old code page"},
        {"LAUNCH_MODE=RI", "Line 3 of launcher.cfg, 'LAUNCH_MODE=RI': 'RI' is no mode, so it is advanced; write ri."},
        {"JVM_HOME=C:\\L", "C:\\L is the launcher's own home, and it would start itself: name another"},
        {"JVM_HOME=", "JVM_HOME is set nowhere: write a line JVM_HOME=<its folder> into launcher.cfg"},
        {"\xEF\xBB\xBFJVM_HOME=C:\\J", "take out what stands unseen before JVM_HOME."},
        {std::string("J\0V\0M\0", 6), "is written in UTF-16"},
        {good + "\r", goes},
        {"JVM_HOME=..\\J", goes},
        {good + "\nLOG_FILE_OR_DIR=", "LOG_FILE_OR_DIR is empty: name a file or a folder, or take the line out."},
        {good + "\nLOG_FILE_OR_DIR=C:\\logs", goes},
        {good + "\nLOG_FILE_OR_DIR=C:\\logs\\one.log", goes},
        {good + "\nLOG_FILE_OR_DIR=C:\\none\\x.log", "names a log in C:\\none, which is no folder: make it"},
        {good + rewrite, goes},
        {good + rewrite, "could not open `words': mend the name behind the @", {"C:\\work\\words", "C:\\work\\x"}},
        {homes + "advanced" + rewrite, goes},
        {homes + "legacy" + rewrite, goes},
        {homes + "patch" + rewrite, goes},
        {homes + "secure" + rewrite, goes},
        {homes + "rich", goes},
        {homes + "advanced", "quorvel.jar", {"C:\\Q\\quorvel.jar", "C:\\Q\\x.jar"}},
        {homes + "advanced", "C:\\C\\bin\\java.exe is no program", {"C:\\spare\\text", "C:\\C\\bin\\java.exe"}},
        {good, "no C:\\L\\launcher.cfg, but C:\\L\\launcher.cfg.txt,", {CONFIGURATION, "C:\\L\\launcher.cfg.txt"}},
        {good, "but C:\\L\\bin\\launcher.cfg, which is not", {CONFIGURATION, "C:\\L\\bin\\launcher.cfg"}},
        {good, "starts what has its own name, and there is no C:\\J\\jre\\bin\\java.exe", {LAUNCHER, moved}, moved},
        {good, "there is no C:\\J\\bin\\javaw.exe", {LAUNCHER, windowed}, windowed},
        {good, "There is no launcher C:\\L\\bin\\java.exe: put", {LAUNCHER, "C:\\L\\x.exe"}, nullptr},
        {good, "C:\\L\\bin\\java.exe is not the launcher but another", {"C:\\spare\\java.exe", LAUNCHER}, nullptr},
        {good, "JVM_HOME, C:\\J, holds no bin\\java.exe: name a Java home.", {JAVA, "C:\\J\\bin\\javaw.exe"}},
        {good, "one folder too high: a Java home in it is C:\\J\\jre.", {JAVA, "C:\\J\\jre\\bin\\java.exe"}},
        {good, "C:\\J\\bin\\java.exe is no program that can be started", {"C:\\spare\\text", JAVA}},
    };
    // A start takes its time under Wine.
    const texts keys = on_windows ? texts{"SHOW_START"} : texts{"SHOW_START", "TRANSPARENT"};
    for (const std::string &key : keys) {
        for (const auto &row : rows) {
            launcher::SetUp();
            SCOPED_TRACE(row.lines + " " + (row.move.empty() ? "" : row.move[1]));
            put_java("C:\\spare\\java.exe");
            put_file("C:\\spare\\text", "no program");
            put_file("C:\\logs\\one.log", "kept");
            const bool has_mode = row.lines.find("_MODE=") != std::string::npos;
            configure(key + "=true\n" + (has_mode ? "#\n" : "LAUNCH_MODE=ri\n") + row.lines + "\n");
            put_file("C:\\work\\words", "Main");
            if (!row.move.empty()) {
                put_folder(row.move[1].substr(0, row.move[1].rfind('\\')));
                fs::rename(on_disk(row.move[0]), on_disk(row.move[1]));
            }
            const outcome said = run("explain_launch", {"--launcher-home", "C:\\L", "--", "-Da=b", "@words"});
            EXPECT_EQ(read_file(on_disk("C:\\logs\\one.log")), "kept");
            EXPECT_LT(said.output.find(here(row.said)), said.output.find('\n')) << said.output;
            if (row.place != nullptr) {
                expect_agreement(said, row.place, {"-Da=b", "@words"});
            }
        }
    }
}

// What else is found is listed below the verdict.
TEST_F(tools, each_line_that_means_nothing_is_listed) {
    put_file(LAUNCHER + std::string(".quorvel-original"), "");
    put_java(LAUNCHER);
    configure("LAUNCH_MODE=rich\nJVM_HOME=C:\\J\nJVM_OPTIONS=-Xss2m\nRULE_FILE=no\nTRANSPARENT=True\nColour=red\n"
              "IGNORE_OPTIONS=-Da,-Db\nLOG_FILE_OR_DIR=C:\\logsX\n");
    const std::string said = run("explain_launch", {"--launcher-home", "C:\\L"}).output;
    for (const char *words : {"* Line 1 ", "* Line 3 ", "* Line 4 ", "* Line 5 ", "* Line 6 ", "* Line 7 ", "* Line 8 ",
                              "an update of Java has overwritten it"}) {
        EXPECT_NE(said.find(words), std::string::npos) << words << said;
    }
}

TEST_F(tools, a_wrong_usage_is_named) {
    const struct {
        texts arguments;
        uint32_t status;
        std::string said;
    } rows[] = {
        {{"--bogus"}, 2, "unknown option --bogus"},
        {{"--launcher-home"}, 2, "--launcher-home needs a folder"},
        {{"Main"}, 2, "\"Main\" belongs behind --"},
        {{"--launcher-home", "C:\\L", "--library", "C:\\x"}, 2, "--library goes without --launcher-home"},
        {{}, 1, "\\launcher.cfg, so nothing is configured"},
        {{"--help"}, 0, "usage: explain_launch"},
        {{"--version"}, 0, "explain_launch "},
        {{"--launcher-home", "C:\\no"}, 1, "There is no folder C:\\no: mend the path"},
        {{"--library", "C:\\L\\jni\\x.dll"}, 1, "launcher_home in library path"},
        {{"--launcher-home", "C:\\L", "--rewrite", "--trace", "--", "-cp", "x"}, 0, "Leading arguments\n  -cp x"},
    };
    for (const auto &row : rows) {
        const outcome result = run("explain_launch", row.arguments);
        EXPECT_EQ(result.status, row.status) << result.output << result.errors;
        EXPECT_NE((row.status == 2 ? result.errors : result.output).find(here(row.said)), std::string::npos)
            << row.said;
    }
}

TEST_F(tools, the_example_of_a_native_host_starts_java_twice) {
    configure("JVM_HOME=..\\J\nCONTAINER_HOME=..\\C\nQUORVEL_HOME=..\\Q\nIGNORE_OPTIONS=-Dold\n");
    put_file("C:\\Q\\quorvel.dll", "");
    const outcome result = run("native_host", {"C:\\L\\jni\\qvljni.dll", "-Dold=1", "-cp", "C:\\L\\a b;x", "exit=3",
                                               "--", "-version", "-Dold=1", "-Da=C:\\L\\", "exit=42"});
    EXPECT_EQ(result.status, 42u);
    size_t at = 0;
    for (const char *expected :
         {"arg     -Dcom.quorvel.ContainerHome=C:\\C\n", "arg     -cp\narg     C:\\C\\a b;x\n", "Java ended with 3\n",
          "arg     -version\n", "arg     -Da=C:\\C\\\n", "Java ended with 42\n"}) {
        at = result.output.find(here(expected), at);
        ASSERT_NE(at, std::string::npos) << expected << result.output;
    }
}

// Nothing is passed over or taken otherwise than meant but what is not on this disk.
TEST_F(tools, every_example_configuration_is_for_its_mode) {
    for (const char *mode : {"advanced", "legacy", "patch", "secure", "ri"}) {
        configure(read_file(own_file().parent_path() / "launcher_cfg" / (std::string(mode) + ".cfg")));
        const std::string said = run("explain_launch", {"--launcher-home", "C:\\L", "--", "-Dold.switch=1"}).output;
        EXPECT_NE(said.find("Launch mode\n  " + std::string(mode) + "\n"), std::string::npos) << said;
        EXPECT_EQ(said.find("passed over"), std::string::npos) << said;
    }
}
