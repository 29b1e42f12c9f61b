#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "tests/rewriting/engine.h"
#include "tests/support/trace.h"

namespace {

using testing::Eq;
using testing::ExitedWithCode;

// What stands for the words in capitals of the tables below.
constexpr char WORDS[] = R"(
RULES -> -Dcom.quorvel.rules.local=C:\L\r & PROPERTIES -> "-Dcom.quorvel.QuorvelProperties=C:\L\p q"
PACK -> -Dcom.quorvel.LauncherPackPath=C:\L & NINE -> -Xshare:off|-XX:+IgnoreUnrecognizedVMOptions & CONFIGURED -> -Xj|"-Dk=a b"
PATCH -> --patch-module=java.base=C:\Q\module_patch.jar & AGENT -> -javaagent:"C:\Q\quorvel.jar"
EXPORTS -> --add-exports=java.base/jdk.internal.misc=ALL-UNNAMED|--add-exports=java.base/jdk.internal.reflect=ALL-UNNAMED
OPENS -> --add-opens=java.base/jdk.internal.misc=ALL-UNNAMED|--add-opens=java.base/jdk.internal.reflect=ALL-UNNAMED
NATIVE -> "-Dcom.quorvel.ContainerHome=C:\C"|-agentlib:quorvel & ALLOWED -> -Dcom.quorvel.AllowVMProperties=allowed
CONTAINER -> -Xc|"-Dc=C:\L d" & BOTH -> -Djava.net.preferIPv4Stack=true|-Dsun.net.inetaddr.ttl=1|-Dnetworkaddress.cache.ttl=1|-Dfile.encoding=C:\L|-Dsun.net.inetaddr.negative.ttl=1|-Dnetworkaddress.cache.negative.ttl=C:\L
MODULES -> -p|-Dx=C:\L|--module-path|-p|--upgrade-module-path|-Xmx1m|-d|-jar|--describe-module|m|--add-modules|m|--limit-modules|m|--add-exports|m|--add-opens|m|--add-reads|m|--patch-module|m
HEAPS -> -Xmx128m|-Xmx255M|-Xmx256m|-Xmx512M|-Xmx1g|-Xmx9|-Xmxm|-Xmx-1m|-Xmx+300m|-Xmx1x999m|-Xmx4294967297m|-Xmx000000000000000000000000000000000000000000000000000128m
LARGE -> -Xmx256m|-Xmx256m|-Xmx256m|-Xmx512M|-Xmx1g|-Xmx9|-Xmx256m|-Xmx256m|-Xmx+300m|-Xmx256m|-Xmx4294967297m|-Xmx256m
)";

constexpr char EVERYTHING[] =
    "RULE_FILE=r\nQUORVEL_PROPERTIES_FILE=p q\nALLOW_VM_OPTIONS=allowed\nIGNORE_OPTIONS=-Xignored\n"
    "JVM_OPTIONS=\"-Xj\" \"-Dk=a b\"\nCONTAINER_OPTIONS=\"-Xc\"\n";

// Launch mode and Java versions -> arguments -> host or leading list -> guest or trailing list
constexpr char WHOLE[] = R"(
advanced 9 9 -> -Xignored|-ea|-Da=C:\L|-jar|a b|c -> -ea|-Xc|RULES|PROPERTIES|PACK|NINE|CONFIGURED|PATCH|NATIVE|AGENT|quorvel.Container -> -Da=C:\C|-jar|"a b"|c
advanced 8 8 -> -> -Xc|RULES|PROPERTIES|PACK|CONFIGURED|NATIVE|AGENT|quorvel.Container ->
advanced 8 8 -> -Dcom.quorvel.rules.localx|-version -> RULES|PROPERTIES|PACK|CONFIGURED|NATIVE|AGENT|quorvel.Container -> -version
native 9 8 -> -ea|opt|-Dallowed=C:\L|-jar|a b -> -ea|opt|-Dallowed=C:\C|-Xc|RULES|-Dcom.quorvel.QuorvelProperties=C:\L\p q|PACK|-Dcom.quorvel.jnimode=true|NINE|-Xj|-Dk=a b|PATCH|-Dcom.quorvel.ContainerHome=C:\C|-agentpath:C:\Q\windows-x64\quorvel.dll|-javaagent:C:\Q\quorvel.jar|quorvel.Container -> -Dallowed=C:\C|-jar|a b
legacy 9 8 -> -javaagent:a|-ea|-Dcom.quorvel.rules.local=x|Main|-ea -> -ea|RULES|ALLOWED|PROPERTIES|PACK|NINE|CONFIGURED|PATCH|NATIVE|AGENT -> -javaagent:a|Main|-ea
legacy 8 9 -> -> ALLOWED|RULES|PROPERTIES|PACK|CONFIGURED|NATIVE|AGENT ->
patch 9 9 -> -ea|Main|x -> -ea|ALLOWED|RULES|PROPERTIES|-Dcom.quorvel.AgentEnvironment=patch|PACK|NINE|CONFIGURED|PATCH|EXPORTS|OPENS|AGENT -> Main|x
patch 8 9 -> Main -> ALLOWED|RULES|PROPERTIES|-Dcom.quorvel.AgentEnvironment=patch|PACK|CONFIGURED|AGENT -> Main
secure 9 9 -> Main -> ALLOWED|RULES|PROPERTIES|PACK|NINE|CONFIGURED|PATCH|EXPORTS|OPENS|AGENT -> Main
ri 9 9 -> -ea|-Dcom.quorvel.rules.local=C:\L|Main|-ea -> -ea|-Dcom.quorvel.rules.local=C:\J|ALLOWED|CONFIGURED -> Main|-ea
)";

// The same, without what parse_arguments adds. MODULES are the options with the name of a module
// or with a path, each with a value that reads like another option; CONTAINER is "-Xc|"-Dc=C:\L d"".
constexpr char PLACES[] = R"(
advanced 9 9 -> MODULES|-Xshare:auto|-Xshare:off|-XX:+UseParNewGC|-d64|-Xno:a|-Xrunno:a|-Xruna:b:1|-Xruna b|-Xrun:|-X|-agentlib:a|-a b|--modulex|--class-pathx|Main|-Xmx1m|-Xshare:on|@x|-cp|C:\L|a b -> MODULES|-Xshare:off|-agentlib:a=b:1|"-agentlib:a b"|-agentlib:=|-X|-agentlib:a|"-a b"|--modulex|--class-pathx|CONTAINER -> Main|-Xmx1m|-Xshare:on|@x|-cp|C:\L|"a b"
advanced 9 9 -> --class-path|C:\L|--class-path=C:\L\a|-cp|-Xshare:on|-Xruna|-jar|-Dx|-m|m|-Dx -> -agentlib:a|-m|CONTAINER -> --class-path|C:\C|--class-path=C:\C\a|-cp|-jar|-Dx|m|-Dx
advanced 9 8 -> --class-path|C:\L|--class-path=C:\L\a|-p|-cp|C:\L|C:\L\m|-jarx|C:\L -> -p|C:\L\m|CONTAINER -> -cp|C:\C|-cp|C:\C\a|-cp|C:\C|-jarx|C:\L
advanced 8 9 -> -Xshare:on|-XX:+UseParNewGC|--module=m|--module|-cp|C:\L\a b.jar;x|-classpathx|C:\Lx|-cpy|C:\L/y|--class-path=C:\L|--class-path|C:\L -> -XX:+UseParNewGC|--module=m|--module|--class-path=C:\L|--class-path|CONTAINER -> -cp|"C:\C\a b.jar;x"|-classpathx|C:\Lx|-cpy|C:\C\y|C:\L
advanced 8 9 -> -p|m -> -p|CONTAINER -> m & advanced 9 8 -> --module|m|-Dx -> CONTAINER -> --module|m|-Dx & advanced 9 8 -> --module=m|-Dx -> CONTAINER -> --module=m|-Dx & advanced 8 8 -> |-X -> CONTAINER -> |-X
advanced 8 8 -> BOTH -> BOTH -> BOTH
advanced 8 8 -> -fullversionx|-Dquorvel:y=C:\L|-Dcom.quorvel.rules.local=C:\L|-Dcom.quorvel|-Dmy.dir=C:\L\d|-Dmy=C:\L|-Dplain=C:\L|-D|-DC:\L|-help|-?x|-javaagent:C:\L|-manpage|-versionx|-Xbootclasspath:C:\L|-Xbootclasspath/p:C:\L|-Xbootclasspath/a:C:\L|-Xbootclasspath -> -Dcom.quorvel.ShowJavaVersion=fullversion|-Dquorvel:y=C:\L|-Dcom.quorvel.rules.local=C:\L|-Dmy.dir=C:\C\d|-help|-Xbootclasspath -> -version|-Dcom.quorvel|-Dmy.dir=C:\C\d|-Dmy=C:\C|-Dplain=C:\L|-D|-DC:\L|-help|-?x|-javaagent:C:\L|-manpage|-versionx|-Xbootclasspath:C:\C|-Xbootclasspath/p:C:\C|-Xbootclasspath/a:C:\C
native 8 8 -> C:\L\x|a b||-jar|C:\L\x -> C:\L\x|a b||-Xc|-Dc=C:\L d -> -jar|C:\L\x
legacy 9 9 -> MODULES|-p|-cp|C:\L|-javaagent:m|-javaagent:a|--class-path|C:\L\a|--class-path=C:\L|-fullversion|-version|-help|-?|-Dfile.encoding=x|-a b -> MODULES|-p|-cp|C:\C|-javaagent:m|--class-path|C:\C\a|--class-path=C:\C|-fullversion|-version|-help|-?|-Dfile.encoding=x|"-a b" -> -javaagent:a
legacy 9 8 -> --class-path|C:\L\a|--class-path=C:\L|-cpx|C:\L -> -cp|C:\C\a|-cp|C:\C|-cpx|C:\C -> & legacy 8 9 -> --class-path=C:\L|--class-path|C:\L -> --class-path=C:\L|--class-path -> C:\L & legacy 8 9 -> -p|m -> -p -> m & legacy 8 8 -> -jarx|C:\L -> -> -jarx|C:\L
legacy 8 8 -> -Xbootclasspath:C:\L|-Dcom.quorvel.rules.local=C:\L|-Dplain=C:\L|-Dcom.quorvel.x=C:\L|-javaagent:a.jar|Main|-javaagent:b|@x|a b -> -Xbootclasspath:C:\C|-Dcom.quorvel.rules.local=C:\L|-Dplain=C:\L|-Dcom.quorvel.x=C:\C -> -javaagent:a.jar|Main|-javaagent:b|@x|"a b"
patch 9 8 -> -Xshare:on|-XX:+UseParNewGC|-server|-Xruna|--class-path|C:\L\a|--class-path=C:\L|-classpath|C:\L|--module|m|-Dx -> -agentlib:a|--class-path|C:\J\a|--class-path=C:\J|-classpath|C:\J -> --module|m|-Dx
patch 9 8 -> --module=m|-Dx -> -> --module=m|-Dx & patch 8 8 -> --module=m|--module||-Dx -> --module=m|--module -> |-Dx
secure 9 8 -> MODULES|-cp|-Xshare:on|C:\L|-Xbootclasspath/a:C:\L|-Dx=C:\L -> MODULES|-cp|C:\J|-Xbootclasspath/a:C:\J|-Dx=C:\J ->
secure 8 8 -> -Xshare:auto|-Xno|-XX:+UseParNewGC|-Xruna:b|-Xshare:off -> -XX:+UseParNewGC|-agentlib:a=b|-Xshare:off ->
ri 9 8 -> MODULES|-Xrunjdwp:a|-Xshare:on|-Xmx100m|-XX:+UseParNewGC|-Xno|-server|-javaagent:a.jar -> MODULES|-Xrunjdwp:a|-Xshare:on|-Xmx100m|-XX:+UseParNewGC|-Xno|-server|-javaagent:a.jar -> & ri 9 8 -> -p|m|m|-p -> -p|m -> m|-p & ri 9 8 -> -jar|C:\L -> -> -jar|C:\L
ri 9 8 -> --class-path|-Dx=1;C:\L|--class-path=C:\L|-classpath|C:\L|-Xbootclasspath/a:C:\L|-Dapp.dir=C:\L\d|-Dplain.dir=C:\L|-DC:\L|--module=m|-Dx=C:\L|-cp|C:\L|@x -> --class-path|-Dx=1;C:\J|--class-path=C:\J|-classpath|C:\J|-Xbootclasspath/a:C:\J|-Dapp.dir=C:\J\d|-Dplain.dir=C:\L|-DC:\L -> --module=m|-Dx=C:\L|-cp|C:\L|@x
ri 8 9 -> --class-path=C:\L|-p|--module=m|--module|--class-path|C:\L -> --class-path=C:\L|-p|--module=m|--module|--class-path -> C:\L
advanced 9 9 -> HEAPS -> LARGE -> & legacy 8 8 -> HEAPS -> LARGE ->
)";

std::string in_full(const std::string &list) {
    static const std::vector<texts> words = rows_of(WORDS);
    std::string full;
    for (std::string entry : split(list, "|")) {
        for (const texts &word : words) {
            entry = entry == word[0] ? word[1] : entry;
        }
        full += '|' + entry;
    }
    return full.substr(1);
}

// Configuration -> native_jvm_bits, for a native host -> an argument that is there, or not after "no"
constexpr char AGENTS[] = R"(
JVM_OPTIONS="--patch-module" "java.base=C:\x\module_patch.jar" -> -> no & JVM_OPTIONS="--patch-module=java.base=module_patch.jar;x" "-Xj" -> -> no
JVM_OPTIONS="--patch-module" "java.base=x.jar" -> -> & JVM_OPTIONS="--patch-module" "java.sql=module_patch.jar" -> ->
JVM_OPTIONS="java.base=module_patch.jar" "--patch-module" -> -> & JVM_OPTIONS="--patch-module=java.sql=java.base=module_patch.jar" -> ->
JVM_OPTIONS="--patch-module=java.base=x" -> -> & QUORVEL_HOME=C:\none -> -> no & QUORVEL_HOME=C:\L -> -> no & QUORVEL_HOME=C:\folder -> -> no
-> -1 -> -agentpath:C:\Q\windows-x64\quorvel.dll & QUORVEL_HOME=C:\Q2 -> 32 -> -agentpath:C:\Q2\windows-i586\quorvel.dll & QUORVEL_HOME=C:\Q2 -> 64 -> -agentpath:C:\Q2\quorvel.dll
QUORVEL_NATIVE_AGENT=C:\a b.dll -> 64 -> -agentpath:"C:\a b.dll" & QUORVEL_NATIVE_AGENT=a.dll -> 0 -> -agentpath:"C:\L\a.dll"
)";

// Launch mode and Java versions -> arguments -> variable -> its value -> that of its guest copy
//     -> guest or trailing list -> the variable of the child -> its guest copy
constexpr char VARIABLES[] = R"(
advanced 8 8 -> Main -> JDK_JAVA_OPTIONS -> -Xmx1m  -Dx=C:\L '-Dy=a b' -> -Dg=C:\L '-Dh=a b' -> -Dg=C:\L|"-Dh=a b"|Main -> -Xmx256m -> -Dx=C:\C "-Dy=a b"
advanced 8 8 -> -ea -> JAVA_TOOL_OPTIONS -> -cp C:\L -> -> -> -> -cp C:\C & advanced 8 8 -> -Dx|Main -> _JAVA_OPTIONS -> -Xruna -Xshare:on -> -Dg -> -Dx|-Dg|Main -> -agentlib:a ->
advanced 8 8 -> Main -> JDK_JAVA_OPTIONS -> -> -Dg -> -Dg|Main -> (unset) -> -Dg & advanced 8 8 -> Main -> CLASSPATH -> C:\L\a;C:\Lx -> -Dg -> Main -> C:\C\a;C:\Lx -> -Dg
advanced 8 8 -> -ea -> _JAVA_OPTIONS -> -Xruna -> -Dg -> -> -Xruna -> -Dg & advanced 8 8 -> -> _JAVA_OPTIONS -> -Xruna -> -> -> -agentlib:a ->
advanced 8 8 -> Main -> _JAVA_OPTIONS -> --source 11 -Dx -> -Dg -> -Dg|Main -> --source -> 11 -Dx
native 8 8 -> -jar -> _JAVA_OPTIONS -> -Xruna '-Dq=1 2' -> -Dg -> -Dg|-jar -> -agentlib:a -> -Dq=1 2 & native 8 8 -> -jar -> CLASSPATH -> C:\L -> -> -jar -> C:\L -> (unset)
native 8 8 -> -jar -> JDK_JAVA_OPTIONS -> -Xruna -> -Dg -> -jar -> -Xruna -> -Dg & legacy 8 8 -> Main -> _JAVA_OPTIONS -> -Xruna -> -> Main -> -Xruna -> (unset)
legacy 8 8 -> Main -> JDK_JAVA_OPTIONS -> -Xmx1m '-Dx=C:\L\d e' -javaagent:a -> -Dg -> Main -> -Xmx256m "-Dx=C:\C\d e" -> -Dg & legacy 8 8 -> Main -> CLASSPATH -> C:\L -> -> Main -> C:\C -> (unset)
patch 9 8 -> Main -> JDK_JAVA_OPTIONS -> @C:\L\opts -> -> Main -> -cp C:\J "-Da=b c" -agentlib:x -> (unset) & patch 9 8 -> Main -> JAVA_TOOL_OPTIONS -> -server -> -> Main -> -> (unset)
patch 9 8 -> Main -> CLASSPATH -> C:\L;;x -> -> Main -> C:\J;;x -> (unset) & secure 9 8 -> -> CLASSPATH -> C:\L -> -> -> C:\J -> (unset) & ri 9 8 -> Main -> CLASSPATH -> C:\L -> -> Main -> C:\J -> (unset)
secure 9 8 -> -> JDK_JAVA_OPTIONS -> -p C:\L -cp '' --class-path=C:\L -> -> -> -p C:\L -cp  --class-path=C:\J -> (unset)
ri 9 8 -> Main -> JAVA_TOOL_OPTIONS -> -Xmx1m -Xshare:on -Da=C:\L -> -> Main -> -Xmx1m -Xshare:on -Da=C:\J -> (unset)
legacy 8 8 -> -> PATH -> C:\w -> -> -> C:\Q;C:\Q\windows-i586;C:\Q\windows-x64;C:\w -> (unset) & legacy 8 8 -> -> PATH -> -> -> -> C:\Q;C:\Q\windows-i586;C:\Q\windows-x64; -> (unset)
legacy 8 8 -> -> PATH -> C:\Q;C:\Q\windows-i586 -> -> -> C:\Q;C:\Q\windows-i586;C:\Q\windows-x64;C:\Q;C:\Q\windows-i586 -> (unset)
legacy 8 8 -> -> PATH -> C:\Q\windows-x64s;C:\Q\windows-i586 -> -> -> C:\Q\windows-x64s;C:\Q\windows-i586 -> (unset)
)";

// Launch mode and Java versions -> arguments, and "JDK_JAVA_OPTIONS" -> leading list, up to what is
// added -> trailing list; or what is printed where the process ends. "_JAVA_OPTIONS" holds -ea.
constexpr char ARGUMENT_FILES[] = R"(
legacy 8 8 -> @C:\L\opts|@C:\L\empty|@@x|@C:\L\opts -> -> -cp|C:\C|"-Da=b c"|-agentlib:x| -> @x|@C:\L\opts
legacy 8 8 -> @C:\L\main|@C:\L\missing -> -> -> Main|@x|-Xmx1m|@C:\L\missing & legacy 8 8 -> @|@C:\L\missing|-ea -> -> -ea| ->
legacy 8 8 -> --disable-@files|@C:\L\off|@C:\L\missing|-ea -> -> --disable-@files|--disable-@files|-ea| ->
legacy 8 8 -> @C:\L\missing -> -> & advanced 8 8 -> @C:\L\main -> -> & legacy 8 8 -> -> -version -> & legacy 8 8 -> -> -ea Main -> & legacy 8 8 -> -> @C:\L\missing ->
legacy 8 8 -> -> @C:\L\heaps -> Error: too many host options of an option variable (at most 100000)
)";

std::string times(int count, const std::string &arg) {
    std::string args;
    while (count-- > 0) {
        args += arg;
    }
    return args;
}

class command_line : public testing::Test {
protected:
    void SetUp() override { make_homes(); }
};

} // namespace

TEST_F(command_line, is_put_in_order) {
    for (const texts &row : rows_of(WHOLE)) {
        start(row[0], EVERYTHING);
        rewrite(row[1]);
        EXPECT_EQ(result(), in_full(row[2]) + " -> " + row[3]) << row[0] << ' ' << row[1];
    }
    for (const texts &row : rows_of(PLACES)) {
        start(row[0], "NON_PATH_OPTIONS=plain\nALLOW_VM_OPTIONS=my.dir=elp\nIGNORE_OPTIONS=-Xno=-Xrunno\n"
                      "CONTAINER_OPTIONS=\"-Xc\" \"-Dc=C:\\L d\"");
        place_each(in_full(row[1]));
        EXPECT_EQ(result(), in_full(row[2]) + " -> " + in_full(row[3])) << row[0];
    }
    // A mode is chosen by how its name begins.
    for (const texts &row :
         rows_of("ri -> 1 -> C & rich -> 0 -> J & patched -> 0 -> J & secured -> 0 -> J & legacy2 -> 0 -> C")) {
        start(row[0] + " 8 8");
        use_advanced_launch_mode = row[1] == "1";
        place_each("-cp|C:\\L");
        EXPECT_NE(result().find("-cp|C:\\" + row[2]), std::string::npos) << row[0];
    }
}

TEST_F(command_line, has_the_module_patch_and_the_agents) {
    for (const texts &row : rows_of(AGENTS)) {
        const int bits = std::stoi('0' + row[1]);
        start(row[1].empty() ? "secure 9 9" : row[1] == "0" ? "legacy 8 8" : "native 8 8", row[0]);
        native_jvm_bits = bits;
        rewrite("");
        const std::string arg = row[1].empty() ? "--patch-module=java.base=C:\\Q\\module_patch.jar" : row[2];
        EXPECT_EQ(('|' + result()).find('|' + arg) != std::string::npos, row[2] != "no") << row[0] << result();
    }
    const auto trace_until_exit = [] {
        start("native 8 8", "QUORVEL_HOME=C:\\L");
        JLI_SetTraceLauncher();
        fclose(stdout);
        LOG_FILE_FD = stderr;
        add_agent_args();
    };
    EXPECT_EXIT(
        trace_until_exit(), ExitedWithCode(1),
        Eq(here("Warning: Expected Quorvel native agent library, 'C:\\L\\windows-x64\\quorvel.dll', doesn't exist\n"
                "         Trying Quorvel native agent library, 'C:\\L\\quorvel.dll'\n"
                "Error: Expected Quorvel native agent library, 'C:\\L\\quorvel.dll', doesn't exist\n")));
}

TEST_F(command_line, goes_with_variables_and_argument_files) {
    put_file("C:\\L\\opts", here("-cp C:\\L \"-Da=b c\" # no\n-Xrunx"));
    put_file("C:\\L\\main", "Main @x -Xmx1m");
    put_file("C:\\L\\off", "--disable-@files");
    put_file("C:\\L\\empty", "");
    put_file("C:\\L\\heaps", times(100001, "-Xmx1m "));
    const std::string path = child_variable("PATH");
    for (const texts &row : rows_of(VARIABLES)) {
        SCOPED_TRACE(row[0] + ' ' + row[2] + ' ' + row[3]);
        set_variable(row[2], row[3]);
        set_variable("QUORVEL_GUEST_" + row[2], row[4]);
        start(row[0]);
        rewrite(row[1]);
        EXPECT_EQ(result().substr(result().find(" -> ") + 4), row[5]);
        EXPECT_EQ(child_variable(row[2] == "PATH" ? "Path" : row[2]), row[6]);
        EXPECT_EQ(child_variable("QUORVEL_GUEST_" + row[2]), row[7]);
        EXPECT_TRUE(row[2] != "PATH" || child_variable("QUORVEL_ORIGINAL_LIBRARY_PATH") == row[3]);
        set_variable(row[2], row[2] == "PATH" ? path : "");
        set_variable("QUORVEL_GUEST_" + row[2], "");
    }
    set_variable("_JAVA_OPTIONS", "-ea -Dfile.encoding=u");
    for (const texts &row : rows_of(ARGUMENT_FILES)) {
        const bool ends = row.size() == 4;
        set_variable("JDK_JAVA_OPTIONS", row[2]);
        const auto show_lists = [&] {
            start(row[0]);
            rewrite(row[1]);
            std::string lists = result();
            const size_t added = lists.find("-Dcom.quorvel.L");
            fputs(lists.replace(added, lists.find(" -> ") - added, "").c_str(), stderr);
            exit(0);
        };
        EXPECT_EXIT(show_lists(), ExitedWithCode(ends),
                    Eq(ends ? row[3] + (row[3].empty() ? "" : "\n") : row[3] + " -> " + row[4]));
    }
    set_variable("_JAVA_OPTIONS", "");
    set_variable("JDK_JAVA_OPTIONS", "");
}

TEST_F(command_line, of_a_native_host_follows_another) {
    start("native 8 8", EVERYTHING);
    init_host_and_guest_versions();
    EXPECT_EQ(is_guest_java_9_plus - is_host_java_9_plus, 1);
    std::string lists[2];
    for (std::string &list : lists) {
        rewrite("-Dother=C:\\L|-ea|-jar|a");
        list = result();
        reset_jlp_for_native_invocation();
        EXPECT_EQ(lhs_count + rhs_count + processedArgCount, 0);
    }
    EXPECT_EQ(lists[0], lists[1]);
    // The allow and ignore lists hold for the first command line alone.
    rewrite("-Dallowed=1|-Xignored");
    EXPECT_TRUE(result().starts_with("-Xignored|-Dcom.") && result().ends_with(" -> -Dallowed=1")) << result();
}

TEST_F(command_line, may_be_large_but_is_refused_when_it_does_not_fit) {
    const std::string token = "-X" + std::string((8 << 20) - 3, 'x');
    put_file("C:\\L\\large", times(8, token + '\n'));
    start("legacy 8 8");
    rewrite("@C:\\L\\large");
    EXPECT_TRUE(lhs_count > 8 && std::all_of(lhs, lhs + 8, [&](const char *arg) { return arg == token; }));
    start("ri 8 8");
    rewrite(times(9998, "-ea|") + "Main"); // the pool has a slot for launcher_path_arg too
    EXPECT_TRUE(lhs_count == 9998 && result().ends_with("|-ea -> Main"));
    const std::string host_full = "Error: too many host or leading arguments (at most 10000)\n";
    const texts rows[] = {{"ri", times(9999, "-ea|") + "-ea", "Error: too many processed arguments (at most 10000)\n"},
                          {"legacy", times(10000, "-Xmx1m|") + "-Xmx1m", host_full},
                          {"advanced", times(9999, "-fullversion|") + "-Xmx1m|-fullversion", host_full}};
    for (const texts &row : rows) {
        EXPECT_EXIT((start(row[0] + " 8 8"), rewrite(row[1])), ExitedWithCode(1), Eq(row[2]));
    }
}

TEST_F(command_line, is_traced) {
    start("secure 9 9", "QUORVEL_HOME=C:\\Q q");
    std::string trace = traced_by([] { rewrite("-server|-ea|Main|a b"); });
    const std::string quoting = "QUOTING WINDOWS ARG DUE TO SPACES:\n    Before: ";
    std::string patch = "--patch-module=java.base=C:\\Q q\\module_patch.jar\"";
    const std::string packages = in_full("EXPORTS|OPENS");
    std::string lines,
        list = "-ea, -Dcom.quorvel.LauncherPackPath=C:\\L, -Xshare:off, -XX:+IgnoreUnrecognizedVMOptions, \"" + patch;
    for (const std::string &option : split(packages, "|")) {
        lines += option + '\n';
        list += ", " + option;
    }
    EXPECT_EQ(
        trace,
        here("Get CLASSPATH from environment\n-----------------------------\n    $CLASSPATH not set in environment\n\n"
             "Java 11+ Host: ignoring obsolete JVM argument '-server'\n" +
             quoting + "a b\n    After:  \"a b\"\n\n" + quoting + patch.substr(0, patch.size() - 1) +
             "\n    After:  \"" + patch + "\n\nADDED PATCH MODULE ARG:\n-----------------------\n      \"" + patch +
             "\n\nADDED SECURE/PATCH JAVA 9+ ARGS:\n--------------------------------\n" + lines +
             "\nSECURE LAUNCH MODE ARGS:\n------------------------\n" + list + ", Main, \"a b\"\n\n"));
    for (const texts &row : rows_of("patch 8 8 -> PATCH & legacy 8 8 -> LEGACY & ri 8 8 -> LEGACY")) {
        start(row[0]);
        trace = traced_by([] { rewrite("-ea|Main|x"); });
        const std::string header = row[1] + " LAUNCH MODE ARGS:\n" + std::string(row[1].size() + 18, '-') + "\n-ea, ";
        EXPECT_NE(trace.find("\n\n" + header), std::string::npos) << trace;
        EXPECT_NE(trace.find(", Main, x\n\n"), std::string::npos) << trace;
    }
}
