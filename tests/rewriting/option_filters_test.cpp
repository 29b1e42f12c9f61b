#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/jlp_utils.h"
#include "core/rewriting/obsolete_options.h"
#include "core/rewriting/option_filters.h"
#include "tests/rewriting/engine.h"
#include "tests/support/trace.h"

namespace {

template <size_t Size>
texts entries_in(const char *const (&table)[Size]) {
    EXPECT_EQ(table[Size - 1], nullptr);
    return texts(table, table + Size - 1);
}

bool begins_with_one_of(const std::string &text, const texts &entries) {
    return std::any_of(entries.begin(), entries.end(),
                       [&](const std::string &entry) { return text.starts_with(entry); });
}

} // namespace

TEST(obsolete_options, tables_hold_what_they_should) {
    const struct {
        texts table;
        size_t count;
        const char *first, *last;
    } rows[] = {
        {entries_in(IGNORE_ARGS), 2, "-Xshare:on", "-Xshare:auto"},
        {entries_in(JVM_11_OBSOLETE_HOST_ARGS), 6, "-d32", "-no-jre-restrict-search"},
        {entries_in(JVM_11_OBSOLETE_HOST_X_ARGS), 2, "-Xincgc", "-Xprof"},
        {entries_in(JVM_11_OBSOLETE_HOST_XX_ARGS), 136, "-XX:AdaptiveSizePausePolicy=", "-XX:ThreadPriorityPolicy=42"},
        {entries_in(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS), 94, "AdjustConcurrency", "VerifySilently"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.table.size(), row.count) << row.first;
        EXPECT_EQ(row.table.front(), row.first);
        EXPECT_EQ(row.table.back(), row.last);
        EXPECT_EQ(std::set(row.table.begin(), row.table.end()).size(), row.count) << row.first;
    }
}

// So 94 of the 135 names are flags, and 41 take a value.
TEST(obsolete_options, flags_are_a_part_of_the_options_with_a_value_in_their_order) {
    const texts options = entries_in(JVM_11_OBSOLETE_HOST_XX_ARGS);
    const auto takes_value = [](const std::string &o) { return o.starts_with("-XX:") && o.ends_with("="); };
    EXPECT_EQ(std::count_if(options.begin(), options.end(), takes_value), 135);
    auto next = options.begin();
    for (const std::string &flag : entries_in(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS)) {
        next = std::find(next, options.end(), "-XX:" + flag + "=");
        ASSERT_NE(next, options.end()) << flag;
        next++;
    }
}

TEST(option_filters, find_every_entry_of_a_table_and_nothing_else) {
    const texts options = entries_in(JVM_11_OBSOLETE_HOST_XX_ARGS);
    const texts flags = entries_in(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS);
    for (const std::string &option : options) {
        const std::string name = option.substr(4, option.find('=') - 4);
        for (const std::string &text : {name, name + "=", name + "=42", name + "X", name.substr(0, name.size() - 1)}) {
            const std::string arg = "-XX:" + text;
            EXPECT_EQ(is_ignore_property(arg.c_str(), 1), begins_with_one_of(arg, options)) << arg;
            for (const std::string sign : {"+", "-"}) {
                const std::string flag = "-XX:" + sign + text;
                EXPECT_EQ(is_ignore_property(flag.c_str(), 1), begins_with_one_of(text, flags)) << flag;
            }
        }
    }
}

TEST(option_filters, dropped_arguments) {
    make_disk();
    start("ri 8 8", "IGNORE_OPTIONS=-Dfoo=-XX:-PrintGCI");
    // The dropped are dropped without a word, the obsolete where they are asked for.
    for (const texts &row : rows_of(R"(
dropped -> -Xshare:on|-Xshare:auto|-Xshare:automatic|-Dfoo=1|-Dfoobar|-XX:-PrintGCID
obsolete -> -XX:+UseParNewGC|-XX:-PrintGCDateStamps|-XX:PrintGCDateStamps=true
obsolete -> -XX:CMSIncrementalDutyCycle=10|-XX:CMSIncrementalDutyCycleMin=10|-XX:+PrintTLABX|-XX:ThreadPriorityPolicy=42|-XX:ThreadPriorityPolicy=420|-XX:hashCode=5|-version:1.8
obsolete -> -server|-serverX|-d64|-d32|-jre-restrict-search|-no-jre-restrict-search|-Xprof|-Xprofile|-Xincgc
kept -> -Xshare:off|-Xshare:o|-XX:PrintGCDateStamps|-XX:+CMSIncrementalDutyCycle|-XX:+printtlab|-XX:ThreadPriorityPolicy=1
kept -> -XX:ä|-XX:+|-XX:|-XX|-version|-X|-||server|-Dfo
)")) {
        for (const std::string &arg : entries_of(row[1])) {
            const std::string trace = traced_by([&] {
                EXPECT_EQ(is_ignore_property(arg.c_str(), 0), row[0] == "dropped") << arg;
                EXPECT_EQ(is_ignore_property(arg.c_str(), 1), row[0] != "kept") << arg;
            });
            const std::string line = "Java 11+ Host: ignoring obsolete JVM argument '" + arg + "'\n";
            EXPECT_EQ(trace, row[0] == "obsolete" ? line : "");
        }
    }
}

TEST(option_filters, classes_of_arguments) {
    make_disk();
    start("ri 8 8", "ALLOW_VM_OPTIONS=foo\nNON_PATH_OPTIONS=app.home=last");
    // One letter for each class: allowed, non-path (the only one that traces), path, boot class path.
    for (const texts &row : rows_of(R"(
N -> -Dapp.home=C:\x|-Dapp.home2=C:\y|-Dlast
P -> -Dapp.hom|-DApp.home|-Dother=C:\x|-D|-Dfo=1
AP -> -Dfoo=1|-Dfoo.bar=2
A -> -?foo
X -> -Xbootclasspath:|-Xbootclasspath/a:x.jar|-Xbootclasspath/p:
-> -dapp.home|app.home|-Xss1m|-Xbootclasspath/b:x.jar|-Xbootclasspath/a|-Xbootclasspath|-xbootclasspath:|  |
)")) {
        for (const std::string &arg : entries_of(row[1])) {
            std::string classes;
            const std::string trace = traced_by([&] {
                classes += !arg.empty() && is_arg_allowed_vm_property(arg.c_str()) == 1 ? "A" : "";
                classes += is_non_path_option(arg.c_str()) == 1 ? "N" : "";
                classes += is_possible_path_arg(arg.c_str()) == 1 ? "P" : "";
                classes += is_xbootclasspath_arg(arg.c_str()) == 1 ? "X" : "";
            });
            EXPECT_EQ(classes, row[0]) << arg;
            const std::string line = "the following arg will not be treated as a path or list of paths '" + arg + "'\n";
            EXPECT_EQ(trace, classes == "N" ? line + line : "");
        }
    }
}
