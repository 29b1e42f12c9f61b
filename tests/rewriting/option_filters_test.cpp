#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/jlp_utils.h"
#include "core/rewriting/obsolete_options.h"
#include "core/rewriting/option_filters.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/support/trace.h"

namespace {

using strings = std::vector<std::string>;

template <size_t Size>
strings entries_of(const char *const (&table)[Size]) {
    EXPECT_EQ(table[Size - 1], nullptr);
    return strings(table, table + Size - 1);
}

bool begins_with_one_of(const std::string &text, const strings &entries) {
    return std::any_of(entries.begin(), entries.end(),
                       [&](const std::string &entry) { return text.starts_with(entry); });
}

// Makes these the entries of a configured list. Null entries stand around them, as they do once a
// command line has been rewritten.
void configure(char **array, int *count, const strings &entries) {
    release_entries(array, count);
    append_entry(array, count, nullptr);
    for (const std::string &entry : entries) {
        append_entry(array, count, JLI_StringDup(entry.c_str()));
        append_entry(array, count, nullptr);
    }
}

} // namespace

TEST(obsolete_options, tables_hold_what_they_should) {
    const struct {
        strings table;
        size_t count;
        const char *first, *last;
    } rows[] = {
        {entries_of(IGNORE_ARGS), 2, "-Xshare:on", "-Xshare:auto"},
        {entries_of(JVM_11_OBSOLETE_HOST_ARGS), 6, "-d32", "-no-jre-restrict-search"},
        {entries_of(JVM_11_OBSOLETE_HOST_X_ARGS), 2, "-Xincgc", "-Xprof"},
        {entries_of(JVM_11_OBSOLETE_HOST_XX_ARGS), 136, "-XX:AdaptiveSizePausePolicy=", "-XX:ThreadPriorityPolicy=42"},
        {entries_of(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS), 94, "AdjustConcurrency", "VerifySilently"},
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
    const strings options = entries_of(JVM_11_OBSOLETE_HOST_XX_ARGS);
    EXPECT_EQ(
        std::count_if(options.begin(), options.end(),
                      [](const std::string &option) { return option.starts_with("-XX:") && option.ends_with("="); }),
        135);
    auto next = options.begin();
    for (const std::string &flag : entries_of(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS)) {
        next = std::find(next, options.end(), "-XX:" + flag + "=");
        ASSERT_NE(next, options.end()) << flag;
        next++;
    }
}

TEST(option_filters, find_every_entry_of_a_table_and_nothing_else) {
    const strings options = entries_of(JVM_11_OBSOLETE_HOST_XX_ARGS);
    const strings flags = entries_of(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS);
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
    enum { KEPT, OBSOLETE, DROPPED };
    const struct {
        const char *arg;
        int fate;
    } rows[] = {
        {"-Xshare:on", DROPPED},
        {"-Xshare:auto", DROPPED},
        {"-Xshare:automatic", DROPPED},
        {"-Xshare:off", KEPT},
        {"-Xshare:o", KEPT},
        {"-XX:+UseParNewGC", OBSOLETE},
        {"-XX:-PrintGCDateStamps", OBSOLETE},
        {"-XX:PrintGCDateStamps=true", OBSOLETE},
        {"-XX:PrintGCDateStamps", KEPT},
        {"-XX:+CMSIncrementalDutyCycle", KEPT},
        {"-XX:CMSIncrementalDutyCycle=10", OBSOLETE},
        {"-XX:CMSIncrementalDutyCycleMin=10", OBSOLETE},
        {"-XX:+PrintTLABX", OBSOLETE},
        {"-XX:+printtlab", KEPT},
        {"-XX:ThreadPriorityPolicy=42", OBSOLETE},
        {"-XX:ThreadPriorityPolicy=420", OBSOLETE},
        {"-XX:ThreadPriorityPolicy=1", KEPT},
        {"-XX:hashCode=5", OBSOLETE},
        {"-XX:\xE4", KEPT},
        {"-XX:+", KEPT},
        {"-XX:", KEPT},
        {"-XX", KEPT},
        {"-version:1.8", OBSOLETE},
        {"-version", KEPT},
        {"-server", OBSOLETE},
        {"-serverX", OBSOLETE},
        {"-d64", OBSOLETE},
        {"-d32", OBSOLETE},
        {"-jre-restrict-search", OBSOLETE},
        {"-no-jre-restrict-search", OBSOLETE},
        {"-Xprof", OBSOLETE},
        {"-Xprofile", OBSOLETE},
        {"-Xincgc", OBSOLETE},
        {"-X", KEPT},
        {"-", KEPT},
        {"", KEPT},
        {"server", KEPT},
        {"-Dfoo=1", DROPPED},
        {"-Dfoobar", DROPPED},
        {"-Dfo", KEPT},
        {"-XX:-PrintGCID", DROPPED},
    };
    configure(ignore_properties_array, &ignore_properties_count, {"-Dfoo", "-XX:-PrintGCI"});
    for (const auto &row : rows) {
        EXPECT_EQ(traced_by([&] { EXPECT_EQ(is_ignore_property(row.arg, 0), row.fate == DROPPED) << row.arg; }), "");
        const std::string trace =
            traced_by([&] { EXPECT_EQ(is_ignore_property(row.arg, 1), row.fate != KEPT) << row.arg; });
        const std::string line = "Java 11+ Host: ignoring obsolete JVM argument '";
        EXPECT_EQ(trace, row.fate == OBSOLETE ? line + row.arg + "'\n" : "");
    }
    release_entries(ignore_properties_array, &ignore_properties_count);
    EXPECT_EQ(is_ignore_property("-Dfoo=1", 1), 0);
}

TEST(option_filters, classes_of_arguments) {
    // One letter for each class: allowed, non-path (the only one that traces), path, boot class
    // path.
    const struct {
        const char *arg, *classes;
    } rows[] = {
        {"-Dapp.home=C:\\x", "N"},
        {"-Dapp.home2=C:\\y", "N"},
        {"-Dlast", "N"},
        {"-Dapp.hom", "P"},
        {"-DApp.home", "P"},
        {"-Dother=C:\\x", "P"},
        {"-D", "P"},
        {"-dapp.home", ""},
        {"app.home", ""},
        {"-Xss1m", ""},
        {"-Dfoo=1", "AP"},
        {"-Dfoo.bar=2", "AP"},
        {"-Dfo=1", "P"},
        {"-?foo", "A"},
        {"", ""},
        {"-Xbootclasspath:", "X"},
        {"-Xbootclasspath:x.jar", "X"},
        {"-Xbootclasspath/a:x.jar", "X"},
        {"-Xbootclasspath/p:", "X"},
        {"-Xbootclasspath/b:x.jar", ""},
        {"-Xbootclasspath/a", ""},
        {"-Xbootclasspath", ""},
        {"-xbootclasspath:", ""},
    };
    configure(allow_vm_properties_array, &allow_vm_properties_count, {"foo"});
    configure(non_path_options_array, &non_path_options_count, {"app.home", "last"});
    for (const auto &row : rows) {
        std::string classes;
        const auto note = [&](char letter, int answer) {
            EXPECT_TRUE(answer == 0 || answer == 1) << row.arg;
            classes += answer == 1 ? std::string(1, letter) : "";
        };
        const std::string trace = traced_by([&] {
            note('A', *row.arg != '\0' && is_arg_allowed_vm_property(row.arg));
            note('N', is_non_path_option(row.arg));
            note('P', is_possible_path_arg(row.arg));
            note('X', is_xbootclasspath_arg(row.arg));
        });
        EXPECT_EQ(classes, row.classes) << row.arg;
        const std::string line =
            "the following arg will not be treated as a path or list of paths '" + std::string(row.arg) + "'\n";
        EXPECT_EQ(trace, classes == "N" ? line + line : "");
    }
    release_entries(allow_vm_properties_array, &allow_vm_properties_count);
    release_entries(non_path_options_array, &non_path_options_count);
    EXPECT_EQ(is_arg_allowed_vm_property("-Dfoo"), 0);
    EXPECT_EQ(is_possible_path_arg("-Dapp.home"), 1);
}

TEST(option_filters, agents_in_the_new_form) {
    const struct {
        const char *arg, *converted;
    } rows[] = {
        {"-Xrunjdwp:transport=dt_socket,server=y", "-agentlib:jdwp=transport=dt_socket,server=y"},
        {"-Xrunhprof", "-agentlib:hprof"},
        {"-Xrun", "-agentlib:"},
        {"-Xrun:", "-agentlib:="},
        {"-Xrunfoo:", "-agentlib:foo="},
        {"-Xrunfoo:a:b", "-agentlib:foo=a:b"},
    };
    for (const auto &row : rows) {
        EXPECT_STREQ(text_ptr(convertXrunToAgentLib(row.arg)).get(), row.converted);
    }
}
