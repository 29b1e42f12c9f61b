// Arguments in and out of a command line, and a start that hands on what this process was started with:
// the launcher's tests have the rest of it.

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

TEST(received_start, says_why_there_is_no_child) {
    const std::string much(32766 - sizeof "..\\prog.exe", 'x');
    EXPECT_EQ(run_as_received("..\\prog.exe", (" " + much).c_str()), "[" + much + "]exit 0");
    EXPECT_EQ(run_as_received("..\\prog.exe", (" x" + much).c_str()), "error 206");
    EXPECT_EQ(run_as_received("..\\missing.exe", ""), "error 2");
    EXPECT_EQ(taken(system_error_text(999999, "it")), "error 999999");
    const std::string words = taken(system_error_text(5, "it"));
    EXPECT_TRUE(words.ends_with("d (error 5)") && !words.starts_with("error")) << words;
}

TEST(received_start, keeps_what_this_process_has_opened) {
    FILE *log = open_text_file("log", "w+");
    const std::string handle = std::to_string(handle_of(log)),
                      report = run_as_received("..\\prog.exe", (" handle=" + handle).c_str());
    EXPECT_EQ(report, "[handle=" + handle + "]refused\nexit 0");
    fclose(log);
}

} // namespace
