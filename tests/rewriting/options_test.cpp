#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/rewriting/obsolete_options.h"
#include "core/rewriting/option_filters.h"
#include "tests/rewriting/engine.h"

namespace {

// Launch mode and Java versions -> arguments -> variable -> its value -> that of its guest copy
//     -> guest or trailing list -> the variable of the child -> its guest copy
constexpr char VARIABLES[] = R"(
advanced 8 8 -> Main -> JDK_JAVA_OPTIONS -> -Xmx1m  -Dx=C:\L '-Dy=a b' -> -Dg=C:\L '-Dh=a b' -> -Dg=C:\L|"-Dh=a b"|Main -> -Xmx256m -> -Dx=C:\C "-Dy=a b"
advanced 8 8 -> -ea -> JAVA_TOOL_OPTIONS -> -cp C:\L -> -> -> -> -cp C:\C
advanced 8 8 -> -Dx|Main -> _JAVA_OPTIONS -> -Xruna -Xshare:on -> -Dg -> -Dx|-Dg|Main -> -agentlib:a ->
advanced 8 8 -> Main -> JDK_JAVA_OPTIONS -> -> -Dg -> -Dg|Main -> (unset) -> -Dg
advanced 8 8 -> Main -> CLASSPATH -> C:\L\a;C:\Lx -> -Dg -> Main -> C:\C\a;C:\Lx -> -Dg
// Without a main class it is left alone, except where there are no arguments.
advanced 8 8 -> -ea -> _JAVA_OPTIONS -> -Xruna -> -Dg -> -> -Xruna -> -Dg
advanced 8 8 -> -> _JAVA_OPTIONS -> -Xruna -> -> -> -agentlib:a ->
// An argument that ends the options does not start the container again.
advanced 8 8 -> Main -> _JAVA_OPTIONS -> --source 11 -Dx -> -Dg -> -Dg|Main -> --source -> 11 -Dx
native 8 8 -> -jar -> _JAVA_OPTIONS -> -Xruna '-Dq=1 2' -> -Dg -> -Dg|-jar -> -agentlib:a -> -Dq=1 2
native 8 8 -> -jar -> JDK_JAVA_OPTIONS -> -Xruna -> -Dg -> -jar -> -Xruna -> -Dg
native 8 8 -> -jar -> CLASSPATH -> C:\L -> -> -jar -> C:\L -> (unset)
legacy 8 8 -> Main -> JDK_JAVA_OPTIONS -> -Xmx1m '-Dx=C:\L\d e' -javaagent:a -> -Dg -> Main -> -Xmx256m "-Dx=C:\C\d e" -> -Dg
legacy 8 8 -> Main -> _JAVA_OPTIONS -> -Xruna -> -> Main -> -Xruna -> (unset)
legacy 8 8 -> Main -> CLASSPATH -> C:\L -> -> Main -> C:\C -> (unset)
patch 9 8 -> Main -> JDK_JAVA_OPTIONS -> @C:\L\opts -> -> Main -> -cp C:\J "-Da=b c" -agentlib:x -> (unset)
patch 9 8 -> Main -> JAVA_TOOL_OPTIONS -> -server -> -> Main -> -> (unset)
patch 9 8 -> Main -> CLASSPATH -> C:\L;;x -> -> Main -> C:\J;;x -> (unset)
secure 9 8 -> -> JDK_JAVA_OPTIONS -> -p C:\L -cp '' --class-path=C:\L -> -> -> -p C:\L -cp  --class-path=C:\J -> (unset)
secure 9 8 -> -> CLASSPATH -> C:\L -> -> -> C:\J -> (unset)
ri 9 8 -> Main -> JAVA_TOOL_OPTIONS -> -Xmx1m -Xshare:on -Da=C:\L -> -> Main -> -Xmx1m -Xshare:on -Da=C:\J -> (unset)
ri 9 8 -> Main -> CLASSPATH -> C:\L -> -> Main -> C:\J -> (unset)
)";

class option_variables : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        put_file("C:\\Q\\windows-x64\\quorvel.dll", "");
        put_file("C:\\L\\opts", here("-cp C:\\L \"-Da=b c\" # no\n-Xrunx"));
    }
};

} // namespace

TEST_F(option_variables, are_rewritten_for_the_child) {
    for (const texts &row : rows_of(VARIABLES)) {
        const std::string guest_name = "QUORVEL_GUEST_" + row[2];
        set_variable(row[2], row[3]);
        set_variable(guest_name, row[4]);
        start(row[0]);
        rewrite(row[1]);
        EXPECT_EQ(guest_list(), row[5]) << row[0] << ' ' << row[2];
        EXPECT_EQ(child_variable(row[2]), row[6]) << row[0] << ' ' << row[2];
        EXPECT_EQ(child_variable(guest_name), row[7]) << row[0] << ' ' << row[2];
        set_variable(row[2], "");
        set_variable(guest_name, "");
    }
}

TEST(obsolete_options, each_name_is_one_of_its_table) {
    EXPECT_EQ(std::size(JVM_11_OBSOLETE_HOST_XX_ARGS), 137u); // with the null at the end
    EXPECT_EQ(std::size(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS), 95u);
    for (const char *const *flag = JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS; *flag != nullptr; flag++) {
        EXPECT_EQ(is_ignore_property(("-XX:-" + std::string(*flag)).c_str(), 1), 1) << *flag;
    }
    for (const char *const *option = JVM_11_OBSOLETE_HOST_XX_ARGS; *option != nullptr; option++) {
        EXPECT_EQ(is_ignore_property(*option, 1), 1) << *option;
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
