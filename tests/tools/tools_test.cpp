// explain_launch, the example of a native host, and the example configurations, as users run them.

#include <random>
#include <regex>

#include "tests/support/world.h"

namespace {

class tools : public launcher {};

outcome run(const std::string &tool, texts arguments) {
    for (std::string &argument : arguments) {
        argument = here(argument);
    }
    const fs::path file = own_file().parent_path() / (on_windows ? tool + ".exe" : tool);
    return end_of_launcher(start({file, arguments, on_disk("C:\\work")}));
}

outcome explain(const texts &arguments = {}) {
    texts all = {"--launcher-home", "C:\\L", "--"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run("explain_launch", all);
}

// What befalls a line that matches, "/" being a line end, and what is moved where: faults, and what
// only looks like one.
constexpr char LINE_CHANGES[] =
    R"(^([A-Z]). -> $1;^[A-Z] ->  $&;= ->  =;_HOME -> _home;=(.+) -> ="$1";)"
    R"(=.+ -> $& # new;=.+ -> $&\;HOME=.+ -> $&\bin;=.* -> =%X%\jdk;=.* -> =\\server\jdk;)"
    R"(=.* -> =C:\none;=.* -> =;^[A-Z].* -> ;^[A-Z].* -> #$&;^(JVM.*=).* -> $&/$1C:\none;)"
    R"(^(JVM.*=).* -> $&/$1;E=(ri|patch) -> E=RI;E=.* -> E=rich;^JVM.*=.* -> JVM_HOME=C:\L;)"
    R"(E=.* -> $&/REWRITE_ARGUMENTS=true;^# -> LOG_FILE_OR_DIR=;^# -> LOG_FILE_OR_DIR=C:\logs/;)"
    R"(^# -> LOG_FILE_OR_DIR=C:\none\x.log/;^# -> LOG_FILE_OR_DIR=C:\logs\one.log/;)"
    "^# -> \xEF\xBB\xBF#;^# -> \xFF\xFE#;$ -> \r;=C -> =C:\\\xE4";
constexpr char MOVES[] = R"(C:\L\launcher.cfg -> C:\L\launcher.cfg.txt;C:\L\launcher.cfg -> C:\L\bin\launcher.cfg;)"
                         R"(C:\L\bin\java.exe -> C:\L\jre\bin\java.exe;C:\L\bin\java.exe -> C:\L\bin\javaw.exe;)"
                         R"(C:\L\bin\java.exe -> C:\L\x.exe;C:\spare\java.exe -> C:\L\bin\java.exe;)"
                         R"(C:\J\bin\java.exe -> C:\J\bin\javaw.exe;C:\J\bin\java.exe -> C:\J\jre\bin\java.exe;)"
                         R"(C:\spare\text -> C:\J\bin\java.exe;C:\spare\text -> C:\C\bin\java.exe;)"
                         R"(C:\Q\quorvel.jar -> C:\Q\x.jar)";
constexpr const char *PLACES[] = {LAUNCHER, "C:\\L\\jre\\bin\\java.exe", "C:\\L\\bin\\javaw.exe"};

// The parts of a text, which `separator` keeps apart.
texts parts(std::string text, const std::string &separator) {
    texts list;
    for (size_t at = 0; at != std::string::npos; text.erase(0, at + separator.size())) {
        at = text.find(separator);
        list.push_back(text.substr(0, at));
        if (at == std::string::npos) {
            break;
        }
    }
    return list;
}

void change(texts &lines, std::mt19937 &random) {
    static const texts moves = parts(MOVES, ";"), changes = parts(LINE_CHANGES, ";");
    const size_t which = random() % (moves.size() + changes.size());
    const bool is_move = which < moves.size();
    const texts pair = parts(is_move ? moves[which] : changes[which - moves.size()], " -> ");
    if (is_move) {
        fs::create_directories(on_disk(pair[1]).parent_path());
        std::error_code ignored;
        fs::rename(on_disk(pair[0]), on_disk(pair[1]), ignored);
        return;
    }
    for (size_t tries = 0, at = random(); tries < lines.size(); tries++, at++) {
        std::string &line = lines[at % lines.size()];
        if (std::regex_search(line, std::regex(pair[0]))) {
            line = std::regex_replace(line, std::regex(pair[0]), pair[1], std::regex_constants::format_first_only);
            return;
        }
    }
}

// One of a kind, by its number; its launcher, or "" where none is left.
std::string install(unsigned number, std::mt19937 &random) {
    constexpr const char *modes[] = {"ri", "patch", "secure", "legacy", "advanced"};
    constexpr const char *firsts[] = {"TRANSPARENT=true", "SHOW_START=true", "SHOW_START=true\nTRANSPARENT=true"};
    texts lines = {"#",
                   firsts[number % 3],
                   std::string("LAUNCH_MODE=") + modes[number / 3 % 5],
                   here("CONTAINER_HOME=C:\\C"),
                   "JVM_HOME=..\\J",
                   here("QUORVEL_HOME=C:\\Q\\")};
    put_java("C:\\spare\\java.exe");
    put_file("C:\\spare\\text", "no program");
    put_file("C:\\logs\\one.log", "kept");
    put_file("C:\\L\\launcher.cfg", "");
    for (unsigned changes = number % 4; changes > 0; changes = changes == 3 ? 1 : changes - 1) {
        change(lines, random);
    }
    std::string text;
    for (const std::string &line : lines) {
        text += here(std::regex_replace(line, std::regex("/"), "\n")) + "\n";
    }
    if (fs::exists(on_disk("C:\\L\\launcher.cfg"))) {
        configure(text);
    }
    for (const char *place : PLACES) {
        std::error_code none;
        if (fs::file_size(on_disk(place), none) == fs::file_size(own_file().parent_path() / "java.exe")) {
            return place;
        }
    }
    return "";
}

std::string in_one_line(const std::string &text) {
    return std::regex_replace(text, std::regex("\n+"), " ");
}

} // namespace

TEST_F(tools, a_verdict_is_the_launchers_own) {
    std::mt19937 random(2024);
    int failing = 0;
    constexpr unsigned count = on_windows ? 30 : is_sanitized ? 120 : 360;
    for (unsigned number = 0; number < count; number++) {
        launcher::SetUp();
        const std::string place = install(number, random), configuration = read_file(on_disk("C:\\L\\launcher.cfg"));
        const texts arguments = {"-Da=b", random() % 2 == 0 ? "@none" : "Main"};
        SCOPED_TRACE(std::to_string(number) + " " + place + "\n" + configuration);
        const outcome said = explain(arguments);
        EXPECT_EQ(read_file(on_disk("C:\\logs\\one.log")), "kept");
        const outcome done = place.empty() ? outcome{} : run_launcher(place, arguments);
        const bool has_run = (done.output + done.errors).find("program ") != std::string::npos;
        EXPECT_EQ(said.status, has_run ? 0u : 1u) << said.output << done.output << done.errors;
        EXPECT_EQ(said.output.starts_with("The launch would go through.\n"), has_run) << said.output;
        std::smatch told;
        const std::string trace = in_one_line(done.output + done.errors);
        static const std::regex command("Would be started.*\n  (.*)\n"), fault("status (-?\\d+), .*\n  (.*)\n");
        if (has_run && trace.find("OUTPUT COMMAND:") != std::string::npos) {
            ASSERT_TRUE(std::regex_search(said.output, told, command)) << said.output;
            EXPECT_NE(trace.find("OUTPUT COMMAND: --------------- " + told.str(1) + " "), std::string::npos) << trace;
        } else if (!has_run && !place.empty()) {
            failing++;
            ASSERT_TRUE(std::regex_search(said.output, told, fault)) << said.output << trace;
            EXPECT_EQ(done.status, told.str(1) == "-1" ? STATUS_MINUS_1 : std::stoul(told.str(1)));
            EXPECT_TRUE(trace.empty() || trace.find(told.str(2)) != std::string::npos) << told.str(2) << "\n" << trace;
        }
    }
    EXPECT_GT(failing, static_cast<int>(count / 4));
}

TEST_F(tools, the_first_line_names_the_fault_and_its_mend) {
    const texts rows = {
        "JVM_HOM=C:\\J -> 'JVM_HOM=C:\\J', is passed over: write JVM_HOME, which is most likely meant.",
        " jvm_home =C:\\J -> begin it in the first column and write JVM_HOME in capitals and take out the blank before "
        "its =.",
        "JVM_HOME C:\\J -> is passed over: put a = behind JVM_HOME.",
        "set JVM_HOME=C:\\J -> is passed over: begin it with JVM_HOME=.",
        "#JVM_HOME=C:\\J -> Line 3 of launcher.cfg sets JVM_HOME, but is a comment",
        "JVM_HOME=\"C:\\J\" -> quotes are not taken off",
        "JVM_HOME=C:\\J # new -> a comment behind a value",
        "JVM_HOME=%J%\\x -> is not replaced here",
        "JVM_HOME=\\\\server\\J -> a network name counts as a path below the launcher home",
        "JVM_HOME=C:\\J\nJVM_HOME=C:\\no -> Lines 3 and 4 of launcher.cfg both set JVM_HOME, and the last one counts",
        "JVM_HOME=C:\\J\\bin -> one folder too deep: the Java home is C:\\J.",
        "JVM_HOME=C:\\J\\..\\K -> JVM_HOME is C:\\K, which is not there: C:\\",
        "JVM_HOME=C:\\M\xFC -> Line 3 of launcher.cfg holds letters in an old code page",
        "LAUNCH_MODE=RI -> Line 3 of launcher.cfg, 'LAUNCH_MODE=RI': 'RI' is no mode, so it is advanced; write ri.",
    };
    for (const std::string &row : rows) {
        const texts pair = parts(row, " -> ");
        configure("TRANSPARENT=true\nLAUNCH_MODE=ri\n" + pair[0]);
        const std::string said = explain().output;
        EXPECT_NE(said.substr(0, said.find('\n')).find(here(pair[1])), std::string::npos) << row << "\n" << said;
    }
    configure("LAUNCH_MODE=rich\nJVM_HOME=C:\\J\nJVM_OPTIONS=-Xss2m\nRULE_FILE=no\nTRANSPARENT=True\nColour=red\n"
              "IGNORE_OPTIONS=-Da,-Db\nLOG_FILE_OR_DIR=C:\\logsX\n");
    const std::string said = explain().output;
    for (const char *line :
         {"* Line 1 ", "* Line 3 ", "* Line 4 ", "* Line 5 ", "* Line 6 ", "* Line 7 ", "* Line 8 "}) {
        EXPECT_NE(said.find(line), std::string::npos) << line << said;
    }
    put_file("C:\\L\\launcher.cfg", std::string("J\0V\0M\0", 6));
    EXPECT_NE(explain().output.find("is written in UTF-16"), std::string::npos);
    put_java(LAUNCHER);
    put_file(LAUNCHER + std::string(".quorvel-original"), "");
    EXPECT_NE(explain().output.find("an update of Java has overwritten it"), std::string::npos);
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
        {{"--launcher-home", "C:\\L", "--rewrite", "--", "@none"}, 1, "could not open `none'"},
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
        const std::string said = explain({"-Dold.switch=1"}).output;
        EXPECT_NE(said.find("Launch mode\n  " + std::string(mode) + "\n"), std::string::npos) << said;
        EXPECT_EQ(said.find("passed over"), std::string::npos) << said;
    }
}
