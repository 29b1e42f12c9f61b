#include "jli/args.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "support.h"

namespace {

using testing::Eq;
using testing::ExitedWithCode;

// The bookkeeping as it is at the start of the process, apart from the relaunch.
void start_anew() {
    JLI_InitArgProcessing(0, 0);
    JLI_InitArgProcessing(0, 0);
}

// The strings of a list that expand() has filled lie in its block: the list stays.
strings kept(JLI_List list) {
    static auto &lists = *new std::vector<JLI_List>;
    lists.push_back(list);
    return strings_of(list);
}

TEST(bookkeeping, finds_the_first_application_argument) {
    const struct {
        strings args;
        int index;
    } rows[] = {
        {{"-cp", "lib", "Main"}, 4},
        {{"-cp", "lib", "-jar", "app.jar", "x"}, 5},
        {{"--module=m/x", "Main"}, 2},
        {{"-cp", "--module=m/x"}, 3},
        {{"--module", "m/x"}, 3},
        {{"-m", "m/x"}, 3},
        {{"--source", "11", "Main.java"}, 4},
        {{"-cp", "", ""}, 4},
        {{""}, 2},
        {{"@x"}, 2},
        {{"-cp", "-Dx", "Main"}, 4},
        {{"-", "-Dx", "--module-path=a", "-cp", "lib"}, -1},
    };
    for (const auto &row : rows) {
        start_anew();
        for (const std::string &arg : row.args) {
            checkArg(arg.c_str());
        }
        EXPECT_EQ(JLI_GetAppArgIndex(), row.index) << testing::PrintToString(row.args);
    }
    start_anew();
    JLI_InitArgProcessing(1, 0);
    checkArg("Main");
    EXPECT_EQ(JLI_GetAppArgIndex(), 0);
}

TEST(bookkeeping, knows_the_terminal_options) {
    for (const char *arg :
         {"-jar", "-m", "--module", "--module=", "--module=m/x", "--dry-run", "-h", "-?", "-help", "--help", "-X",
          "--help-extra", "-version", "--version", "-fullversion", "--full-version"}) {
        EXPECT_EQ(isTerminalOpt(arg), 1) << arg;
    }
    for (const char *arg : {"", "-", "-jarx", "-ja", "-Xmx1m", "--modules", "-cp", "-showversion"}) {
        EXPECT_EQ(isTerminalOpt(arg), 0) << arg;
    }
}

const strings NONE = {"(none)"};

strings preprocessed(const std::string &arg, int expand_source_opt) {
    JLI_List list = JLI_PreprocessArg(arg.c_str(), expand_source_opt);
    if (list == nullptr) {
        return NONE;
    }
    if (expand_source_opt != 0) {
        return kept(list);
    }
    strings args = strings_of(list);
    JLI_List_free(list);
    return args;
}

TEST(one_argument, is_expanded_unless_expansion_is_over) {
    write_file("two.args", "-cp 'a b'");
    const struct {
        strings before;
        const char *arg;
        int expand_source_opt;
        strings expected;
        int index;
    } rows[] = {
        {{}, "-Dx", 0, NONE, -1},
        {{}, "Main", 0, NONE, 2},
        {{}, "@", 0, NONE, 2},
        {{}, "@two.args", 0, {"-cp", "a b"}, -1},
        {{}, "@@x", 0, {"@x"}, 2},
        {{"-cp"}, "@@@x", 0, {"@@x"}, -1},
        {{"--disable-@files"}, "@two.args", 0, NONE, 3},
        {{"Main"}, "@two.args", 0, NONE, 2},
        {{}, "--source 11  -Da='b", 1, {"--source", "11", "-Da='b"}, -1},
        {{}, "--source 11", 0, NONE, -1},
        {{}, "--source\t11", 1, NONE, -1},
        {{"--disable-@files"}, "--source 11", 1, NONE, -1},
    };
    for (const auto &row : rows) {
        start_anew();
        for (const std::string &arg : row.before) {
            checkArg(arg.c_str());
        }
        EXPECT_EQ(preprocessed(row.arg, row.expand_source_opt), row.expected) << row.arg;
        EXPECT_EQ(JLI_GetAppArgIndex(), row.index) << row.arg;
    }
    start_anew();
    JLI_InitArgProcessing(0, 1);
    EXPECT_EQ(preprocessed("@two.args", 0), NONE);
    JLI_InitArgProcessing(0, 0); // after an argument: a relaunch
    EXPECT_EQ(preprocessed("@two.args", 0), NONE);
}

strings expanded(const char *text, const char *variable_name) {
    JLI_List list = JLI_List_new(1);
    EXPECT_EQ(expand(list, text, variable_name), 1);
    return kept(list);
}

TEST(option_variable, is_split_at_whitespace_and_joined_by_quotes) {
    write_file("options.args", "-cp lib '-Da=1 2'");
    write_file("empty.args", "");
    const struct {
        const char *text;
        strings expected;
    } rows[] = {
        {"", {}},
        {" \t\n\v\f\r", {}},
        {"-Da=1   -Db=2", {"-Da=1", "-Db=2"}},
        {" -a\v-b\f-c\n", {"-a", "-b", "-c"}},
        {"-Dx=\"a b\"", {"-Dx=a b"}},
        {"-'it'\"'s\" -'say \"x\"'", {"-it's", "-say \"x\""}},
        {"-cp C:\\dir -cp ''", {"-cp", "C:\\dir", "-cp", ""}},
        {"\"-x \"-y'\\'", {"-x -y\\"}},
        {"-\xa0\x85# -\\'\\\"'", {"-\xa0\x85#", "-\\\\\""}},
        {"-x @options.args -cp @@x", {"-x", "-cp", "lib", "-Da=1 2", "-cp", "@x"}},
        {"@empty.args '@empty.args'", {}},
        {"--disable-@files -cp @options.args", {"--disable-@files", "-cp", "@options.args"}},
    };
    for (const auto &row : rows) {
        start_anew();
        EXPECT_EQ(expanded(row.text, "OPTIONS"), row.expected) << row.text;
    }
}

// Expands two variables and shows what came of it on standard error, after the messages.
void pick_up_variables(const char *first, const char *second) {
    static char settings[2][100];
    JLI_List list = JLI_List_new(1);
    const char *values[] = {first, second};
    for (int i = 0; i < 2; i++) {
        const std::string name = "QVL_TEST_" + std::to_string(i);
        if (values[i] != nullptr) {
            putenv(strcpy(settings[i], (name + "=" + values[i]).c_str()));
        }
        fprintf(stderr, "[%d]", JLI_AddArgsFromEnvVar(list, name.c_str()));
    }
    for (const std::string &arg : kept(list)) {
        fprintf(stderr, "<%s>", arg.c_str());
    }
    exit(0);
}

TEST(option_variable, is_picked_up_from_the_environment) {
    const struct {
        const char *first;
        const char *second;
        void (*before)();
        const char *expected;
    } rows[] = {
        {"-a '-b c'", nullptr, nullptr, "NOTE: Picked up QVL_TEST_0: -a '-b c'[1][0]<-a><-b c>"},
        {nullptr, "  ", nullptr, "[0]NOTE: Picked up QVL_TEST_1:   [1]"},
        {"-cp", "lib -cp", nullptr,
         "NOTE: Picked up QVL_TEST_0: -cp[1]NOTE: Picked up QVL_TEST_1: lib -cp[1]<-cp><lib><-cp>"},
        {"-a", "-b", [] { JLI_InitArgProcessing(1, 0); }, "[0][0]"},
        {"-a", "-b", [] { start_anew(), checkArg("-x"), start_anew(); }, "[0][0]"},
    };
    for (const auto &row : rows) {
        EXPECT_EXIT((trace_to_log(), row.before ? row.before() : void(), pick_up_variables(row.first, row.second)),
                    ExitedWithCode(0), Eq(row.expected));
    }
}

void expand_in(const char *text, const char *variable_name) {
    expand(JLI_List_new(1), text, variable_name);
}

TEST(failure, ends_the_process_and_is_reported_with_tracing_on_alone) {
    write_file("jar.args", "-x -jar");
    write_file("main.args", "-x Main");
    write_file("plain.args", "-x");
    const struct {
        void (*fail)();
        const char *message;
    } rows[] = {
        {[] { expandArgFile("missing.args"); }, "Error: could not open `missing.args'"},
        {[] { expandArgFile("."); }, "Error: could not open `.'"},
        {[] { JLI_PreprocessArg("@no\\where", 0); }, "Error: could not open `no\\where'"},
        {[] { write_file(UNREADABLE_PATH, ""), expandArgFile(UNREADABLE_PATH); }, "Error: loading: unreadable.args"},
        {[] { expand_in("-x \"abc", "OPTIONS"); }, "Error: Unmatched quote in environment variable OPTIONS"},
        {[] { expand_in("-x '-y\" -z", "OPTIONS"); }, "Error: Unmatched quote in environment variable OPTIONS"},
        {[] { expand_in("-x '-version'", "OPTIONS"); },
         "Error: Option -version is not allowed in environment variable OPTIONS"},
        {[] { expandArg("--source 11 --module=m/x"); }, "Error: Option --module=m/x is not allowed in this context"},
        {[] { expand_in("@jar.args", "OPTIONS"); },
         "Error: Option -jar in @jar.args is not allowed in environment variable OPTIONS"},
        {[] { JLI_PreprocessArg("--source 11 @jar.args", 1); },
         "Error: Option -jar in @jar.args is not allowed in this context"},
        {[] { expand_in("-cp lib Main -version", "OPTIONS"); },
         "Error: Cannot specify main class in environment variable OPTIONS"},
        {[] { expand_in("''", "OPTIONS"); }, "Error: Cannot specify main class in environment variable OPTIONS"},
        {[] { checkArg("Main"), expand_in("-x", "OPTIONS"); },
         "Error: Cannot specify main class in environment variable OPTIONS"},
        {[] { JLI_PreprocessArg("--source 11 @main.args", 1); }, "Error: Cannot specify main class in this context"},
        {[] { expand_in("@plain.args @@x", nullptr); }, "Error: Cannot specify main class in this context"},
    };
    for (const auto &row : rows) {
        EXPECT_EXIT(row.fail(), ExitedWithCode(1), Eq("")) << row.message;
        EXPECT_EXIT((trace_to_log(), row.fail()), ExitedWithCode(1), Eq(row.message));
        EXPECT_EQ(content_of(LOG_PATH), row.message);
    }
}

TEST(report, is_written_whole_however_long) {
    const std::string text = std::string(150000, 'x') + "%d\n";
    EXPECT_EXIT((trace_to_log(), JLI_ReportMessage("%s", text.c_str()), exit(0)), ExitedWithCode(0), Eq(text));
    EXPECT_EQ(content_of(LOG_PATH), text);
}

} // namespace
