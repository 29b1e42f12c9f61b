#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "jli/text.h"

TEST(processed_args, blanks_are_quoted_except_for_a_native_host) {
    const struct {
        const char *arg, *processed, *native;
    } rows[] = {
        {"", "", ""},
        {"a", "a", "a"},
        {"a\tb", "a\tb", "a\tb"},
        {"a b", "\"a b\"", "a b"},
        {"\"a b\"", "\"\"a b\"\"", "\"a b\""},
    };
    release_entries(processedArg, &processedArgCount);
    for (const auto &row : rows) {
        EXPECT_STREQ(processArg(row.arg), row.processed);
        is_native_invocation = 1;
        EXPECT_STREQ(processArg(row.arg), row.native);
        is_native_invocation = 0;
        EXPECT_STREQ(processedArg[processedArgCount - 1], row.native);
    }
    EXPECT_EQ(processedArgCount, 10);
    assign_text(&rule_file_arg, "x");
    newPathList[newPathListCount++] = JLI_StringDup("y");
    cleanup();
    EXPECT_EQ(processedArgCount, 0);
    EXPECT_EQ(newPathListCount, 0);
    EXPECT_EQ(processedArg[9], nullptr);
    EXPECT_EQ(rule_file_arg, nullptr);
    new_mem_val_as_str = nullptr;
}

TEST(processed_args, a_full_pool_refuses_the_next) {
    EXPECT_EXIT(
        for (int i = 0; i <= ARGUMENT_SLOTS; i++) { processArg("x"); }, testing::ExitedWithCode(1),
        "^Error: too many processed arguments \\(at most 10000\\)");
}
