#include <gtest/gtest.h>

#include <fstream>
#include <memory>

#include "tests/jli/tokens.h"
#include "tests/support/disk.h"

namespace {

using texts = std::vector<std::string>;

size_t allocations = 0; // calls of malloc()

// The strings of a list that expand() has filled lie in its block: it is not freed.
JLI_List kept(JLI_List list) {
    static auto &lists = *new std::vector<JLI_List>;
    lists.push_back(list);
    return list;
}

TEST(list, is_split_and_joined) {
    JLI_List list = kept(JLI_List_split("a,,bc,", ','));
    const std::unique_ptr<char, decltype(&free)> joined(JLI_List_join(list, ';'), free),
        all(JLI_List_combine(list), free);
    EXPECT_EQ(shown(list) + ' ' + joined.get() + ' ' + all.get(), "a||bc|| a;;bc; abc");
    EXPECT_EQ(list->capacity, 4u);
    EXPECT_TRUE(JLI_HasSuffix("a.b.JAR", ".jar") && !JLI_HasSuffix("jar", "jar") && JLI_StrCCmp("-Dx", "-E") < 0);
}

// Class path, main, launcher, module, long module form, whitespace.
TEST(option_classes, hold_their_options_alone) {
    for (const std::string row : {"101001 -cp", "101001 -classpath", "101001 --class-path", "011001 --module",
                                  "011001 -m", "001001 --source", "001001 -d", "000101 -p", "000101 --add-modules",
                                  "000010 --module-path=x", "000000 -jar", "000000 -cpx", "000000 --module=x"}) {
        std::string classes;
        for (const auto is : {IsClassPathOption, IsLauncherMainOption, IsLauncherOption, IsModuleOption,
                              IsLongFormModuleOption, IsWhiteSpaceOption}) {
            classes += std::to_string(is(row.c_str() + 7));
        }
        EXPECT_EQ(classes, row.substr(0, 6)) << row;
    }
}

std::string read_back(const std::string &content) {
    std::ofstream("tokens.args", std::ios::binary) << content;
    FILE *file = fopen("tokens.args", "rb");
    JLI_List list = readArgFile(file);
    fclose(file);
    return shown(kept(list));
}

TEST(argument_file, has_the_same_tokens_wherever_its_blocks_meet) {
    const std::pair<std::string, const char *> rows[] = {
        {"-cp a.jar\n-Dx=1 \t\f\r\na\fb\rc\vd\n\x1a \x80\xff @x @@x @ \"abc\\\n  ",
         "-cp|a.jar|-Dx=1|a|b|c\vd|\x1a|\x80\xff|@x|@@x|@|"},
        {"\"a b\" 'a b' a\"b c\"d \"it's\" 'say \"x\"'\n\"\"\n''\n\"\"x", "a b|a b|ab cd|it's|say \"x\"|||x|"},
        {"\"\"", ""},
        {"\"abc\nd \"abc\r\nd'e\nx \"abc\\", "abc|d|abc|de|x|"},
        {"\"a\\tb\\n\\r\\f\" \"c:\\\\dir\" \"\\q\\\"\\'\\#\" c:\\dir\\x", "a\tb\n\r\f|c:\\dir|q\"'#|c:\\dir\\x|"},
        {"'C:\\dir\\x' \"C:\\temp\" C:\\temp \"a\\t", "C:dirx|C:\temp|C:\\temp|a\t|"},
        {"\"abc\\\n   def\" \"abc\\\r\n \t\f\n\ndef\" 'a\\\n\\\n'b \"\\\n\"", "abcdef|abcdef|ab||"},
        {"# note\n-a #note\n-b#note\n\"#x\" #a \"b\\\n'c\r#d\ne a\"b\"#c\nd a\\#b\"c\\\"#\"#", "-a|#x|c|e|d|"},
    };
    for (const auto &[text, tokens] : rows) {
        for (size_t at = 1; at <= text.size(); at++) {
            EXPECT_EQ(tokens_in_blocks(text, at), tokens) << text << "\nin blocks of " << at;
            EXPECT_EQ(read_back('#' + std::string(4094 - at, 'x') + '\n' + text), tokens) << text << "\ncut at " << at;
        }
    }
    const char pieces[] = "a\0b c a\0b'c\0d'e '\\\0a' #\0\nb"; // end at a null byte
    EXPECT_EQ(read_back({pieces, sizeof pieces - 1}), "a|c|ace|a|b|");
}

TEST(argument_file, has_little_besides_its_tokens_on_the_heap) {
    const std::string token(1 << 20, '\\');
    size_t before = allocations;
    EXPECT_TRUE(read_back("'" + token + token) == token + "|");
    EXPECT_LT(allocations - before, 6 * token.size() / 4096);
    std::string thousand;
    for (int i = 0; i < 1000; i++) {
        thousand += "-Da=b 'c d'\n";
    }
    before = allocations;
    read_back(thousand);
    EXPECT_LT(allocations - before, 2100u); // one for each, and a few for the file and the list
}

// The bookkeeping as it is at the start of the process, apart from the relaunch.
void start_anew() {
    JLI_InitArgProcessing(0, 0);
    JLI_InitArgProcessing(0, 0);
}

// What becomes of each argument, "." for one that is used as it is, and then the index.
std::string go_on_with(const char *args) {
    std::string result;
    JLI_List list = kept(JLI_List_split(args, '|'));
    for (size_t i = 0; i < list->size; i++) {
        JLI_List expansion = JLI_PreprocessArg(list->elements[i], list->elements[i][0] == '-');
        result += expansion == nullptr ? "." : shown(kept(expansion));
    }
    return result + std::to_string(JLI_GetAppArgIndex());
}

TEST(arguments, are_expanded_up_to_the_first_application_argument) {
    std::ofstream("two.args", std::ios::binary) << "-cp\r\n'a b'\x1a x";
    const std::pair<std::string, texts> rows[] = {
        {".2", {"", "@"}},
        {"..2", {"--module=m/x|Main", "Main|@two.args"}},
        {"..3", {"-cp|--module=m/x", "--module|m/x", "-m|m/x", "-jar|app.jar", "--disable-@files|@two.args"}},
        {"...4", {"-cp|lib|Main", "--source|11|Main.java", "-cp||", "-cp|-Dx|Main"}},
        {"-cp|a b|.4", {"@two.args|Main"}},
        {"@x|.2", {"@@x|@two.args"}},
        {".@@x|-1", {"-cp|@@@x"}},
        {"--source|11|-Da='b|-1", {"--source 11  -Da='b"}},
        {"..-1", {"-x y|-cp", "-|--module-path=a", "--source\t11|-x", "--disable-@files|--source 11"}}};
    for (const auto &[expected, lists] : rows) {
        for (const std::string &args : lists) {
            start_anew();
            EXPECT_EQ(go_on_with(args.c_str()), expected) << args;
        }
    }
    start_anew();
    JLI_InitArgProcessing(1, 1);
    EXPECT_EQ(go_on_with("@two.args|-cp"), "..0");
    JLI_InitArgProcessing(0, 0); // after an argument: a relaunch
    JLI_List list = kept(JLI_List_new(1));
    EXPECT_EQ(go_on_with("@two.args|-cp") + std::to_string(JLI_AddArgsFromEnvVar(list, "PATH")), "..20");
    start_anew();
    expand(list, "'--source 11 -x'", "V"); // one argument still
    EXPECT_EQ(shown(list), "--source 11 -x|");
}

// With tracing on a body says this on standard error and in the trace log, and nothing with it off.
// Either is for good, as is the bookkeeping: the process of the body starts anew.
void expect_end(const auto &body, int status, const std::string &said) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const bool traced : {false, true}) {
        EXPECT_EXIT((LOG_FILE_FD = fopen("jli_test.log", "wb"), traced ? JLI_SetTraceLauncher() : void(), body()),
                    testing::ExitedWithCode(status), testing::Eq(traced ? said : ""));
        EXPECT_EQ(read_file("jli_test.log"), traced ? said : "");
    }
}

TEST(failure, ends_the_process_with_a_message) {
    std::ofstream("jar.args") << "-x -jar";
    const char *const rows[][3] = {
        {"V", "@no\\where", "could not open `no\\where'"},
        {"V", "@.", "could not open `.'"},
        {nullptr, "--source 11 --module=m/x", "Option --module=m/x is not allowed in this context"},
        {nullptr, "--source 11 @jar.args", "Option -jar in @jar.args is not allowed in this context"},
        {nullptr, "--source 11 Main", "Cannot specify main class in this context"},
        {"V", "-x '-y\" -z", "Unmatched quote in environment variable V"},
        {"V", "-x '-version'", "Option -version is not allowed in environment variable V"},
        {"V", "-cp lib Main -version", "Cannot specify main class in environment variable V"},
    };
    for (const auto &row : rows) {
        expect_end([&row] { expand(JLI_List_new(1), row[1], row[0]); }, 1, std::string("Error: ") + row[2]);
    }
}

} // namespace

extern "C" {
void *__real_malloc(size_t size);
void *__wrap_malloc(size_t size) {
    allocations++;
    return __real_malloc(size);
}
}
