#include <gtest/gtest.h>

#include <algorithm>

#include "core/jlp_utils.h"
#include "core/rewriting/obsolete_options.h"
#include "core/rewriting/option_filters.h"
#include "tests/rewriting/engine.h"

namespace {

template <size_t Size>
texts entries_in(const char *const (&table)[Size]) {
    EXPECT_EQ(table[Size - 1], nullptr);
    return texts(table, table + Size - 1);
}

} // namespace

TEST(obsolete_options, flags_are_a_part_of_the_options_with_a_value_in_their_order) {
    const texts options = entries_in(JVM_11_OBSOLETE_HOST_XX_ARGS);
    const auto takes_value = [](const std::string &o) { return o.starts_with("-XX:") && o.ends_with("="); };
    EXPECT_EQ(std::count_if(options.begin(), options.end(), takes_value), 135); // and -XX:ThreadPriorityPolicy=42
    EXPECT_EQ(options.size(), 136u);
    EXPECT_EQ(entries_in(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS).size(), 94u);
    auto next = options.begin();
    for (const std::string &flag : entries_in(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS)) {
        next = std::find(next, options.end(), "-XX:" + flag + "=");
        ASSERT_NE(next, options.end()) << flag;
        next++;
        EXPECT_EQ(is_ignore_property(("-XX:-" + flag).c_str(), 1), 1) << flag;
    }
    for (const std::string &option : options) {
        EXPECT_EQ(is_ignore_property((option + "42").c_str(), 1), 1) << option;
        EXPECT_EQ(is_ignore_property((option.substr(0, option.size() - 1) + "#").c_str(), 1), 0) << option;
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
