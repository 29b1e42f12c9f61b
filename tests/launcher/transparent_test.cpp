// TRANSPARENT=true and REWRITE_ARGUMENTS=true: the program finds what it would have found in the
// launcher's place, and where there is none it is said why.

#include <algorithm>
#include <cstring>
#include <random>

#include "platform/command_line.h"
#include "tests/support/world.h"

namespace {

constexpr const char *REWRITER = "C:\\R\\bin\\java.exe";

class transparent : public launcher {
protected:
    void SetUp() override {
        launcher::SetUp();
        put_launcher(REWRITER);
        for (const char *file : {"C:\\L\\launcher.cfg", "C:\\R\\launcher.cfg"}) {
            put_file(file, here("LAUNCH_MODE=ri\nJVM_HOME=C:\\J\nTRANSPARENT=true\nREWRITE_ARGUMENTS=") +
                               (file[3] == 'R' ? "true" : "false"));
        }
    }
};

constexpr int ROUNDS = on_windows ? 40 : is_sanitized ? 60 : 300;

void expect_same(const outcome &found, const outcome &direct) {
    EXPECT_EQ(found.output, direct.output);
    EXPECT_EQ(found.errors, direct.errors);
    EXPECT_EQ(found.status, direct.status);
}

} // namespace

// Windows splits a line, quoted or not as it comes; elsewhere there are only arguments.
TEST_F(transparent, hands_on_the_command_line_as_it_stands) {
    texts pieces = {" ", "\t", "\n", "\"", "\\", "\\\\\\\"", "*", "?", "%", "%PATH%", "a", "日本", "🚀"};
    if (!on_windows) {
        pieces.insert(pieces.end(), {"\xFF", "\xE6\x97", "\x80"});
    }
    std::string characters;
    for (int i = 0; i < 32000; i++) {
        characters += "大";
    }
    std::vector<texts> lists = {{}, {std::string(32000, 'x')}, {characters}};
    std::mt19937 random(10);
    for (int round = 0; round < ROUNDS; round++) {
        texts list(random() % 9);
        for (std::string &argument : list) {
            for (size_t left = random() % 8; left > 0; left--) {
                argument += pieces[random() % pieces.size()];
            }
            if (on_windows && round % 4 != 0) {
                std::string quoted(2 * argument.size() + QUOTING_BYTES, '#');
                quoted.resize(static_cast<size_t>(quote_argument(argument.c_str(), quoted.data()) - quoted.data()));
                argument = quoted;
            }
        }
        lists.push_back(list);
    }
    for (texts &list : lists) {
        list.insert(list.begin(), "app.Main");
        const outcome direct = run_launcher(JAVA, list, {.quotes = false});
        expect_same(run_launcher(LAUNCHER, list, {.quotes = false}), direct);
        expect_same(run_launcher(REWRITER, list, {.quotes = false}), direct);
        ASSERT_FALSE(HasFailure()) << testing::PrintToString(list);
    }
}

// Wine 8 starts every program with the normal priority: what the rows ask of it shows on Windows alone.
TEST_F(transparent, hands_on_the_start) {
    configure("TRANSPARENT=true\nSHOW_START=true\nLOG_FILE_OR_DIR=log\nLAUNCH_MODE=ri\nJVM_HOME=C:\\J");
    constexpr int HIDDEN = 0, MINIMISED = 7;
    constexpr unsigned DETACHED = 0x8, NEW_CONSOLE = 0x10, LOW = 0x40, HIGH = 0x80, BELOW_NORMAL = 0x4000;
    const manner rows[] = {
        {}, {HIDDEN, LOW}, {MINIMISED, HIGH}, {-1, DETACHED | BELOW_NORMAL}, {-1, NEW_CONSOLE}, {-1, 0, false}};
    for (const manner &how : rows) {
        std::string found[2];
        for (const bool direct : {true, false}) {
            const pipe_ends pipe = make_pipe();
            const texts orders = {"handle=" + std::to_string(pipe.writer), "start"};
            const std::string output = run_launcher(direct ? JAVA : LAUNCHER, orders, how).output;
            found[direct] = output + read_and_close(pipe);
        }
        // A child without a console has its streams named, or it would have none.
        const size_t named = how.hands_on_streams ? std::string::npos : found[0].find(" streams");
        EXPECT_EQ(found[0].erase(std::min(named, found[0].size()), 8), found[1]);
        EXPECT_NE(found[0].find(how.hands_on_streams ? "written" : "start"), std::string::npos) << found[0];
    }
}

TEST_F(transparent, leaves_the_streams_to_the_program) {
    const auto run_there = [](const char *program) {
        EXPECT_EQ(run_launcher(program, {"bytes", "\"*\"x", "end=3"}, {.quotes = false}).status, 3u);
        return std::pair(read_bytes(on_disk("C:\\work\\out")), read_bytes(on_disk("C:\\work\\err")));
    };
    const auto direct = run_there(JAVA);
    EXPECT_GE(direct.second.size(), 256u);
    const struct {
        std::string keys, trace, command; // where it is, and its command on Windows
    } rows[] = {
        {"", "", ""},
        {"SHOW_START=true\n", "C:\\work\\err", R"( bytes "*"x end=3)"},
        {"SHOW_START=true\nLOG_FILE_OR_DIR=log\nREWRITE_ARGUMENTS=true\n", "C:\\L\\log", R"( bytes "*x" end=3)"},
    };
    for (const auto &[keys, file, line] : rows) {
        configure(keys + "LAUNCH_MODE=ri\nJVM_HOME=C:\\J\nTRANSPARENT=true\n");
        const auto found = run_there(LAUNCHER);
        EXPECT_EQ(found.first, direct.first);
        EXPECT_EQ(found.second != direct.second, file == "C:\\work\\err") << found.second;
        const std::string trace = file.empty() ? "" : read_file(on_disk(file));
        const std::string command = here(JAVA) + (on_windows ? line : R"( bytes "\"*\"x" end=3)");
        for (const std::string &part : {command, std::string("   transparent:                          yes")}) {
            EXPECT_EQ(trace.find("\n" + part + "\n") == std::string::npos, file.empty()) << trace;
        }
    }
}

// With tracing on and off, with a log and without: on standard error in one line, unless a trace there has it already.
TEST_F(transparent, says_why_nothing_is_started) {
    for (const char *name : {"missing", "text", "plain"}) {
        put_launcher("C:\\L\\bin\\" + std::string(name) + ".exe");
    }
    for (const char *name : {"text", "plain"}) {
        put_file("C:\\J 1\\bin\\" + std::string(name) + ".exe", "no program\n");
    }
    fs::permissions(on_disk("C:\\J 1\\bin\\text.exe"), fs::perms::owner_exec, fs::perm_options::add);
    put_java("C:\\J 1\\bin\\java.exe");
    const std::string ri = "LAUNCH_MODE=ri\nJVM_HOME=C:\\J 1\n", rewriting = ri + "REWRITE_ARGUMENTS=true\n";
    const uint32_t access_denied = 5, no_program = 193, too_long = 206;
    const struct {
        std::string configuration, message;
        uint32_t status = STATUS_MINUS_1;
        texts arguments = {};
        const char *name = "java", *variable = "";
        bool is_traced = true;
    } rows[] = {
        {"CONTAINER_HOME=C:\\empty", "Error: neither bin/java nor jre/bin/java exist in CONTAINER_HOME 'C:\\empty'\n"
                                     "Error: \\bin/java doesn't exist in CONTAINER_HOME 'C:\\empty'\n"},
        {"LAUNCH_MODE=ri\nJVM_HOME=C:\\L", invalid_command(LAUNCHER), STATUS_MINUS_1, {}, "java", "", false},
        {ri, invalid_command("C:\\J 1\\bin\\missing.exe"), STATUS_MINUS_1, {}, "missing", "", false},
        {ri, could_not_start("C:\\J 1\\bin\\text.exe", no_program), 1, {}, "text"},
        {ri, could_not_start("C:\\J 1\\bin\\plain.exe", on_windows ? no_program : access_denied), 1, {}, "plain"},
        {rewriting, could_not_start("C:\\J 1\\bin\\java.exe", too_long), 1, texts(9000, "*")},
        {rewriting, "Error: could not open `no'\n", 1, {"@no"}},
        {rewriting, "Error: Unmatched quote in environment variable JDK_JAVA_OPTIONS\n", 1, {}, "java", "'-ea"},
    };
    for (const auto &row : rows) {
        set_environment("JDK_JAVA_OPTIONS", row.variable);
        const std::string message = here(row.message), text = message.substr(0, message.size() - 1);
        std::string line = message;
        std::replace(line.begin(), line.end() - 1, '\n', ' ');
        for (const char *keys : {"", "SHOW_START=true\n", "SHOW_START=true\nLOG_FILE_OR_DIR=log\n"}) {
            SCOPED_TRACE(keys + message);
            const bool traces = *keys == 'S', logs = strstr(keys, "LOG") != nullptr;
            configure("TRANSPARENT=true\n" + row.configuration + "\n" + keys);
            const outcome result = run_launcher("C:\\L\\bin\\" + std::string(row.name) + ".exe", row.arguments);
            EXPECT_EQ(result.output, "");
            EXPECT_EQ(result.status, row.status);
            if (!traces || logs) {
                EXPECT_EQ(result.errors, line);
            } else {
                EXPECT_EQ(result.errors.find(text), result.errors.find_last_not_of('\n') + 1 - text.size());
            }
            const std::string log = logs ? read_file(on_disk("C:\\L\\log")) : "";
            EXPECT_EQ(log.find(text) != std::string::npos, traces && logs && row.is_traced);
        }
    }
    set_environment("JDK_JAVA_OPTIONS", "");
}
