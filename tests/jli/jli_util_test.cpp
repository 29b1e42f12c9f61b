#include "jli/jli_util.h"

#include <gtest/gtest.h>

#include <functional>

#include "support.h"

namespace {

using testing::ExitedWithCode;

TEST(memory, exhausted_heap_ends_the_process) {
    const struct {
        const char *function;
        void (*call)();
    } rows[] = {
        {"malloc", [] { JLI_MemAlloc(1); }},
        {"realloc", [] { JLI_MemRealloc(nullptr, 1); }},
        {"strdup", [] { JLI_StringDup("text"); }},
        {"malloc", [] { JLI_List_new(1); }},
    };
    for (const auto &row : rows) {
        EXPECT_EXIT((next_allocation_fails = true, row.call()), ExitedWithCode(1),
                    std::string("^") + row.function + ": .+\n$");
    }
}

TEST(list, grows_by_doubling) {
    for (const size_t first : {1, 4}) {
        JLI_List list = JLI_List_new(first);
        const size_t before = allocations;
        for (size_t size = 1, capacity = first; size <= 9; size++) {
            JLI_List_addSubstring(list, "text", 2);
            capacity = size > capacity ? 2 * capacity : capacity;
            EXPECT_EQ(list->size, size);
            EXPECT_EQ(list->capacity, capacity) << size << " from " << first;
        }
        // One for each string, one for each time that the capacity changed.
        EXPECT_EQ(allocations - before, 9u + (first == 1 ? 4 : 2));
        JLI_List_ensureCapacity(list, first * 100);
        EXPECT_EQ(list->capacity, first * 128);
        EXPECT_EQ(strings_of(list), strings(9, "te"));
        JLI_List_free(list);
    }
    JLI_List_free(nullptr);
}

TEST(list, splits_joins_and_combines) {
    const struct {
        const char *text;
        strings pieces;
        const char *combined;
    } rows[] = {
        {"", {""}, ""},
        {";", {"", ""}, ""},
        {"a", {"a"}, "a"},
        {"a;;b", {"a", "", "b"}, "ab"},
        {"a;b;", {"a", "b", ""}, "ab"},
        {";ab,c", {"", "ab,c"}, "ab,c"},
    };
    for (const auto &row : rows) {
        JLI_List list = JLI_List_split(row.text, ';');
        EXPECT_EQ(strings_of(list), row.pieces);
        EXPECT_EQ(list->capacity, row.pieces.size());
        char *joined = JLI_List_join(list, ';');
        char *combined = JLI_List_combine(list);
        EXPECT_STREQ(joined, row.text);
        EXPECT_STREQ(combined, row.combined);
        JLI_MemFree(joined);
        JLI_MemFree(combined);
        JLI_List_free(list);
    }
    JLI_List none = JLI_List_new(1);
    char *texts[] = {JLI_List_join(none, ';'), JLI_List_combine(none)};
    for (char *text : texts) {
        EXPECT_STREQ(text, "");
        JLI_MemFree(text);
    }
    JLI_List_free(none);
}

int sign(int number) {
    return (number > 0) - (number < 0);
}

TEST(comparisons, prefix_and_suffix) {
    const struct {
        const char *text;
        const char *prefix;
        int expected;
    } prefixes[] = {
        {"--module=foo", "--module=", 0},
        {"--mod", "--module", -1},
        {"anything", "", 0},
        {"", "", 0},
        {"", "a", -1},
        {"b", "ab", 1},
        {"\x80", "a", 1},
        {"A", "a", -1},
    };
    for (const auto &row : prefixes) {
        EXPECT_EQ(sign(JLI_StrCCmp(row.text, row.prefix)), row.expected) << row.text;
    }
    const struct {
        const char *text;
        const char *suffix;
        int expected;
    } suffixes[] = {
        {"app.JAR", ".jar", 1}, {"app.jar.bak", ".jar", 0}, {"jar", ".jar", 0},   {"a.b/c", ".b/c", 1},
        {"app.jar", ".JaR", 1}, {"app.jarx", ".jar", 0},    {"a.b.c", ".b.c", 0}, {"", ".jar", 0},
    };
    for (const auto &row : suffixes) {
        EXPECT_EQ(JLI_HasSuffix(row.text, row.suffix), row.expected) << row.text;
    }
}

TEST(option_classes, accept_their_options_alone) {
    // One letter for each class: class path, main, launcher, module, long form, white space.
    const struct {
        const char *arg;
        const char *classes;
    } rows[] = {
        {"-classpath", "CLW"},
        {"-cp", "CLW"},
        {"--class-path", "CLW"},
        {"--module", "MLW"},
        {"-m", "MLW"},
        {"--describe-module", "LW"},
        {"-d", "LW"},
        {"--source", "LW"},
        {"--module-path", "OW"},
        {"-p", "OW"},
        {"--add-modules", "OW"},
        {"--upgrade-module-path", "OW"},
        {"--limit-modules", "OW"},
        {"--add-exports", "OW"},
        {"--add-opens", "OW"},
        {"--add-reads", "OW"},
        {"--patch-module", "OW"},
        {"--module-path=x", "F"},
        {"--upgrade-module-path=", "F"},
        {"--add-modules=x", "F"},
        {"--limit-modules=x", "F"},
        {"--add-exports=a/b=c", "F"},
        {"--add-reads=x", "F"},
        {"--patch-module=x", "F"},
        {"--add-opens=a/b=c", ""},
        {"--module=x", ""},
        {"--class-path=x", ""},
        {"-jar", ""},
        {"-CP", ""},
        {"-cpx", ""},
        {"-c", ""},
        {"", ""},
    };
    const std::pair<char, int (*)(const char *)> classes[] = {
        {'C', IsClassPathOption}, {'M', IsLauncherMainOption},   {'L', IsLauncherOption},
        {'O', IsModuleOption},    {'F', IsLongFormModuleOption}, {'W', IsWhiteSpaceOption},
    };
    for (const auto &row : rows) {
        std::string accepted;
        for (const auto &[letter, accepts] : classes) {
            const int result = accepts(row.arg);
            EXPECT_TRUE(result == 0 || result == 1);
            accepted += result == 1 ? std::string(1, letter) : "";
        }
        EXPECT_EQ(accepted, row.classes) << row.arg;
    }
}

void trace_messages() {
    JLI_TraceLauncher("%s;", "100%d");
    JLI_TraceLauncher("%s\n", std::string(150000, 'x').c_str());
}

// The child compares what the log and standard output received, and says so by its exit code.
TEST(trace, writes_whole_messages_to_log_and_standard_output_when_on) {
    const auto run = [](bool traced) {
        testing::internal::CaptureStdout();
        LOG_FILE_FD = fopen(LOG_PATH, "wb");
        traced ? JLI_SetTraceLauncher() : void();
        trace_messages();
        const std::string logged = content_of(LOG_PATH);
        const std::string printed = testing::internal::GetCapturedStdout();
        const std::string expected = "100%d;" + std::string(150000, 'x') + "\n";
        exit(logged == (traced ? expected : "") && logged == printed ? 0 : 2);
    };
    EXPECT_EXIT(run(false), ExitedWithCode(0), "");
    EXPECT_EXIT(run(true), ExitedWithCode(0), "");
}

} // namespace
