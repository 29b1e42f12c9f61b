// Arguments in and out of a command line, and a start that hands on what this process was started with.

#include <random>

#include "platform/command_line.h"
#include "platform/files.h"
#include "platform/received_start.h"
#include "platform/system_error.h"
#include "tests/platform/children.h"

namespace {

std::string taken(char *text) {
    const std::string copy = text == nullptr ? "null" : text;
    free(text);
    return copy;
}

std::string as_written(const std::string &argument) {
    std::string text(2 * argument.size() + QUOTING_BYTES, '#');
    text.resize(static_cast<size_t>(quote_argument(argument.c_str(), text.data()) - text.data()));
    return text;
}

std::string split(const std::string &text) {
    char **list = split_arguments(text.c_str());
    std::string arguments;
    for (char **argument = list; *argument != nullptr; argument++) {
        arguments += "[" + std::string(*argument) + "]";
    }
    free(list);
    return arguments;
}

TEST(command_line, is_made_of_quoted_arguments_and_split_without_wildcards) {
    for (const auto &[argument, text] :
         rows({R"( -> "")", R"(a -> a)", R"(a\b\ -> a\b\)", R"(a b -> "a b")", R"(a b\ -> "a b\\")",
               R"(\\" -> "\\\\\"")", R"(~\" -> "~\\\"")", R"(*? -> "*?")"},
              "\t")) {
        EXPECT_EQ(as_written(argument), text);
    }
    for (const auto &[text, arguments] :
         rows({" -> ", "~ \t ->  ", R"(*.txt "~" -> [*.txt][~])", R"( "a""b c" """x""" -> [a"b c]["x"])"}, "\t")) {
        EXPECT_EQ(split(text), arguments == " " ? "" : arguments);
    }
    const struct {
        const char *line, *rest;
    } names[] = {
        {"", ""},     {"a", ""}, {" a", " a"}, {"a\tb", "\tb"}, {R"("a b"c" "d e)", " e"}, {R"(a\"b c" d)", " d"},
        {"\"a b", ""}};
    for (const auto &row : names) {
        EXPECT_STREQ(end_of_program_name(row.line), row.rest);
    }
}

// Through two processes: the one that hands its arguments on, and the one that has them.
TEST(command_line, arrives_whole) {
    const std::vector<std::string> pieces = {" ", "\t", "\"", "\\", "\\\\\\", "*", "?", "%", "a", "日", "🚀"};
    std::mt19937 random(10);
    std::string line, arguments;
    for (int i = 1; i <= 900; i++) {
        std::string argument;
        for (size_t left = random() % 7; left > 0; left--) {
            argument += pieces[random() % pieces.size()];
        }
        ASSERT_EQ(split(" " + as_written(argument)), "[" + argument + "]");
        line += " " + as_written(argument);
        arguments += "[" + argument + "]";
        if (i % 300 == 0) {
            EXPECT_EQ(run("..\\start_on" + line), arguments + "exit 0");
            line.clear();
            arguments.clear();
        }
    }
    for (const char *tail : {"", "\ta  b\t", R"( "" "a""b c" """x""" d\"e f\\" " g)", " exit=255"}) {
        EXPECT_EQ(run(std::string("..\\start_on") + tail), run(std::string("..\\prog") + tail));
    }
    std::string characters;
    for (int i = 0; i < 32000; i++) {
        characters += "大";
    }
    EXPECT_EQ(run_as_received("..\\prog.exe", (" x " + characters).c_str()), "[x][" + characters + "]exit 0");
}

TEST(received_start, says_why_there_is_no_child) {
    const std::string much(32766 - sizeof "..\\prog.exe", 'x');
    EXPECT_EQ(run_as_received("..\\prog.exe", (" " + much).c_str()), "[" + much + "]exit 0");
    EXPECT_EQ(run_as_received("..\\prog.exe", (" x" + much).c_str()), "error 206");
    EXPECT_EQ(run_as_received("..\\missing.exe", ""), "error 2");
    EXPECT_EQ(taken(system_error_text(999999, "it")), "error 999999");
    const std::string words = taken(system_error_text(5, "it"));
    EXPECT_TRUE(words.ends_with("d (error 5)") && !words.starts_with("error")) << words;
    SetEnvironmentVariableA("QVL_TARGET", "g.txt"); // empty, hence no program
    const std::string said = run("..\\start_on");
    SetEnvironmentVariableA("QVL_TARGET", nullptr);
    EXPECT_TRUE(said.ends_with(")\nexit 1") && said.find(" (error ") != std::string::npos) << said;
}

// Wine 8 starts every program with the normal priority: what the rows ask of it shows on Windows alone.
TEST(received_start, finds_what_a_direct_start_finds) {
    constexpr int HIDDEN = 0, MINIMISED = 7;
    constexpr unsigned DETACHED = 0x8, NEW_CONSOLE = 0x10, LOW = 0x40, HIGH = 0x80, BELOW_NORMAL = 0x4000;
    const manner rows[] = {
        {}, {HIDDEN, LOW}, {MINIMISED, HIGH}, {-1, DETACHED | BELOW_NORMAL}, {-1, NEW_CONSOLE}, {-1, 0, false}};
    for (const manner &how : rows) {
        std::string found[2];
        for (const bool direct : {true, false}) {
            const pipe_ends pipe = make_pipe();
            const uint32_t id = start({direct ? "../prog.exe" : "../start_on.exe",
                                       {"start", "handle=" + std::to_string(pipe.writer)},
                                       fs::current_path(),
                                       false,
                                       how});
            EXPECT_TRUE(id != 0 && wait_for_end(id) == 0);
            const std::string output = read_file("out");
            found[direct] = output.substr(std::min(output.find("start "), output.size())) + read_and_close(pipe);
        }
        // A child without a console has its streams named, or it would have none.
        const size_t named = how.hands_on_streams ? std::string::npos : found[0].find(" streams");
        EXPECT_EQ(found[0].erase(std::min(named, found[0].size()), 8), found[1]);
        EXPECT_NE(found[0].find(how.hands_on_streams ? "written" : "start"), std::string::npos) << found[0];
    }
}

TEST(received_start, keeps_what_this_process_has_opened) {
    FILE *log = open_text_file("log", "w+");
    const std::string handle = std::to_string(handle_of(log)),
                      report = run_as_received("..\\prog.exe", (" handle=" + handle).c_str());
    EXPECT_EQ(report, "[handle=" + handle + "]refused\nexit 0");
    fclose(log);
}

} // namespace
