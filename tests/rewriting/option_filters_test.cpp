#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>

#include "core/jlp_utils.h"
#include "core/rewriting/obsolete_options.h"
#include "core/rewriting/option_filters.h"
#include "tests/rewriting/engine.h"
#include "tests/support/trace.h"

namespace {

// How many different entries, the first and the last.
template <size_t Size>
std::string summary(const char *const (&table)[Size]) {
    const std::set<std::string> entries(table, table + Size - 1);
    return std::to_string(entries.size()) + ' ' + table[0] + ' ' + table[Size - 2] + (table[Size - 1] ? " no end" : "");
}

// Classes -> arguments. A letter for each class: ignored, obsolete or ignored, allowed, non-path, path,
// boot class path.
constexpr char CLASSES[] = R"(
   -> -Xshare:off|-Xshare:o|-XX:PrintGCDateStamps|-XX:+CMSIncrementalDutyCycle|-XX:+printtlab|-XX:+|-XX:|-XX|-X|-||server
   -> -XX:ThreadPriorityPolicy=1|-version|-dapp.home|-Xss1m|-Xbootclasspath/b:x.jar|-Xbootclasspath/a|-xbootclasspath:
O  -> -XX:+UseParNewGC|-XX:-PrintGCDateStamps|-XX:PrintGCDateStamps=true|-XX:CMSIncrementalDutyCycleMin=10|-XX:+PrintTLABX
O  -> -XX:ThreadPriorityPolicy=420|-XX:hashCode=5|-version:1.8|-serverX|-d64|-d32|-no-jre-restrict-search|-Xprofile|-Xincgc
IO -> -Xshare:on|-Xshare:automatic|-XX:-PrintGCID
N  -> -Dapp.home=C:\x|-Dapp.home2=C:\y|-Dlast
P  -> -Dapp.hom|-DApp.home|-Dother=C:\x|-D|-Dfo=1
A  -> -?foo & IOAP -> -Dfoo=1|-Dfoobar & X -> -Xbootclasspath:|-Xbootclasspath/a:x.jar|-Xbootclasspath/p:
)";

} // namespace

// Of the 135 names with a value 94 are flags too, in the same order.
TEST(option_filters, tables_hold_what_they_should) {
    EXPECT_EQ(summary(IGNORE_ARGS), "2 -Xshare:on -Xshare:auto");
    EXPECT_EQ(summary(JVM_11_OBSOLETE_HOST_ARGS), "6 -d32 -no-jre-restrict-search");
    EXPECT_EQ(summary(JVM_11_OBSOLETE_HOST_X_ARGS), "2 -Xincgc -Xprof");
    EXPECT_EQ(summary(JVM_11_OBSOLETE_HOST_XX_ARGS), "136 -XX:AdaptiveSizePausePolicy= -XX:ThreadPriorityPolicy=42");
    EXPECT_EQ(summary(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS), "94 AdjustConcurrency VerifySilently");
    const texts options(JVM_11_OBSOLETE_HOST_XX_ARGS, std::end(JVM_11_OBSOLETE_HOST_XX_ARGS) - 1);
    const texts flags(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS, std::end(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS) - 1);
    auto next = options.begin();
    for (const std::string &flag : flags) {
        next = std::find(next, options.end(), "-XX:" + flag + "=");
        ASSERT_NE(next, options.end()) << flag;
    }
    for (const std::string &option : options) {
        EXPECT_TRUE(option.starts_with("-XX:") && (option.ends_with("=") || option == options.back())) << option;
        const std::string name = option.substr(4, option.find('=') - 4);
        for (const std::string &text : {name, name + "=", name + "=42", name + "X", name.substr(0, name.size() - 1)}) {
            for (const char *sign : {"-XX:", "-XX:+", "-XX:-"}) {
                const texts &table = strlen(sign) == 4 ? options : flags;
                const bool found = std::any_of(table.begin(), table.end(), [&](const std::string &entry) {
                    return ((strlen(sign) == 4 ? sign : "") + text).starts_with(entry);
                });
                EXPECT_EQ(is_ignore_property((sign + text).c_str(), 1), found) << sign << text;
            }
        }
    }
}

TEST(option_filters, sort_arguments) {
    make_homes();
    start("ri 8 8", "IGNORE_OPTIONS=-Dfoo=-XX:-PrintGCI\nALLOW_VM_OPTIONS=foo\nNON_PATH_OPTIONS=app.home=last");
    rewrite(""); // leaves nulls in the lists
    EXPECT_EQ(is_ignore_property("-Dfoo=1", 1) + is_arg_allowed_vm_property("-Dfoo"), 0);
    load_config_file();
    for (const texts &row : rows_of(CLASSES)) {
        for (const std::string &text : split(row[1], "|")) {
            const char *arg = text.c_str();
            std::string classes;
            const std::string trace = traced_by([&] {
                classes += is_ignore_property(arg, 0) == 1 ? "I" : "";
                classes += is_ignore_property(arg, 1) == 1 ? "O" : "";
                classes += text.size() > 1 && is_arg_allowed_vm_property(arg) == 1 ? "A" : "";
                classes += is_non_path_option(arg) == 1 ? "N" : "";
                classes += is_possible_path_arg(arg) == 1 ? "P" : "";
                classes += is_xbootclasspath_arg(arg) == 1 ? "X" : "";
            });
            EXPECT_EQ(classes, row[0]) << arg;
            const std::string not_path =
                "the following arg will not be treated as a path or list of paths '" + text + "'\n";
            EXPECT_EQ(trace, classes == "O"   ? "Java 11+ Host: ignoring obsolete JVM argument '" + text + "'\n"
                             : classes == "N" ? not_path + not_path
                                              : "");
        }
    }
}
