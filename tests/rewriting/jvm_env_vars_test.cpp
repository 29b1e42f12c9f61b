#include <gtest/gtest.h>

#include "core/jlp_utils.h"
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
