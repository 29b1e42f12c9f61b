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
    const strings dropped = {"-Xshare:on", "-Xshare:auto", "-Xshare:automatic",
                             "-Dfoo=1",    "-Dfoobar",     "-XX:-PrintGCID"};
    const strings obsolete = {"-XX:+UseParNewGC",
                              "-XX:-PrintGCDateStamps",
                              "-XX:PrintGCDateStamps=true",
                              "-XX:CMSIncrementalDutyCycle=10",
                              "-XX:CMSIncrementalDutyCycleMin=10",
                              "-XX:+PrintTLABX",
                              "-XX:ThreadPriorityPolicy=42",
                              "-XX:ThreadPriorityPolicy=420",
                              "-XX:hashCode=5",
                              "-version:1.8",
                              "-server",
                              "-serverX",
                              "-d64",
                              "-d32",
                              "-jre-restrict-search",
                              "-no-jre-restrict-search",
                              "-Xprof",
                              "-Xprofile",
                              "-Xincgc"};
    const strings kept = {"-Xshare:off",
                          "-Xshare:o",
                          "-XX:PrintGCDateStamps",
                          "-XX:+CMSIncrementalDutyCycle",
                          "-XX:+printtlab",
                          "-XX:ThreadPriorityPolicy=1",
                          "-XX:\xE4",
                          "-XX:+",
                          "-XX:",
                          "-XX",
                          "-version",
                          "-X",
                          "-",
                          "",
                          "server",
                          "-Dfo"};
    configure(ignore_properties_array, &ignore_properties_count, {"-Dfoo", "-XX:-PrintGCI"});
    // The dropped are dropped without a word, the obsolete where they are asked for.
    const auto expect = [](const strings &args, int plainly, int checked, bool is_traced) {
        for (const std::string &arg : args) {
            const std::string line = "Java 11+ Host: ignoring obsolete JVM argument '" + arg + "'\n";
            EXPECT_EQ(traced_by([&] {
                          EXPECT_EQ(is_ignore_property(arg.c_str(), 0), plainly) << arg;
                          EXPECT_EQ(is_ignore_property(arg.c_str(), 1), checked) << arg;
                      }),
                      is_traced ? line : "");
        }
    };
    expect(dropped, 1, 1, false);
    expect(obsolete, 0, 1, true);
    expect(kept, 0, 0, false);
    release_entries(ignore_properties_array, &ignore_properties_count);
    expect({"-Dfoo=1"}, 0, 0, false);
}

TEST(option_filters, classes_of_arguments) {
    // One letter for each class: allowed, non-path (the only one that traces), path, boot class
    // path.
    const struct {
        const char *classes;
        strings args;
    } rows[] = {
        {"N", {"-Dapp.home=C:\\x", "-Dapp.home2=C:\\y", "-Dlast"}},
        {"P", {"-Dapp.hom", "-DApp.home", "-Dother=C:\\x", "-D", "-Dfo=1"}},
        {"AP", {"-Dfoo=1", "-Dfoo.bar=2"}},
        {"A", {"-?foo"}},
        {"X", {"-Xbootclasspath:", "-Xbootclasspath/a:x.jar", "-Xbootclasspath/p:"}},
        {"",
         {"-dapp.home", "app.home", "-Xss1m", "-Xbootclasspath/b:x.jar", "-Xbootclasspath/a", "-Xbootclasspath",
          "-xbootclasspath:", "  "}},
    };
    configure(allow_vm_properties_array, &allow_vm_properties_count, {"foo"});
    configure(non_path_options_array, &non_path_options_count, {"app.home", "last"});
    for (const auto &row : rows) {
        for (const std::string &arg : row.args) {
            std::string classes;
            const std::string trace = traced_by([&] {
                classes += is_arg_allowed_vm_property(arg.c_str()) == 1 ? "A" : "";
                classes += is_non_path_option(arg.c_str()) == 1 ? "N" : "";
                classes += is_possible_path_arg(arg.c_str()) == 1 ? "P" : "";
                classes += is_xbootclasspath_arg(arg.c_str()) == 1 ? "X" : "";
            });
            EXPECT_EQ(classes, row.classes) << arg;
            const std::string line = "the following arg will not be treated as a path or list of paths '" + arg + "'\n";
            EXPECT_EQ(trace, classes == "N" ? line + line : "");
        }
    }
    release_entries(allow_vm_properties_array, &allow_vm_properties_count);
    release_entries(non_path_options_array, &non_path_options_count);
    EXPECT_EQ(is_arg_allowed_vm_property("-Dfoo"), 0);
    EXPECT_EQ(is_possible_path_arg("-Dapp.home"), 1);
    EXPECT_EQ(is_possible_path_arg(""), 0);
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
