#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"

namespace {

using testing::Eq;
using testing::ExitedWithCode;

constexpr char EVERYTHING[] = "RULE_FILE=r\nQUORVEL_PROPERTIES_FILE=p q\n"
                              "ALLOW_VM_OPTIONS=allowed\nIGNORE_OPTIONS=-Xignored\n"
                              "JVM_OPTIONS=\"-Xj\" \"-Dk=a b\"\nCONTAINER_OPTIONS=\"-Xc\"\n";

// What stands for the words in capitals of the table below.
constexpr char WORDS[] = R"(
RULES -> -Dcom.quorvel.rules.local=C:\L\r
PROPERTIES -> "-Dcom.quorvel.QuorvelProperties=C:\L\p q"
PACK -> -Dcom.quorvel.LauncherPackPath=C:\L
NINE -> -Xshare:off|-XX:+IgnoreUnrecognizedVMOptions
CONFIGURED -> -Xj|"-Dk=a b"
PATCH -> --patch-module=java.base=C:\Q\module_patch.jar
PACKAGES -> --add-exports=java.base/jdk.internal.misc=ALL-UNNAMED|--add-exports=java.base/jdk.internal.reflect=ALL-UNNAMED|OPENS
OPENS -> --add-opens=java.base/jdk.internal.misc=ALL-UNNAMED|--add-opens=java.base/jdk.internal.reflect=ALL-UNNAMED
NATIVE -> "-Dcom.quorvel.ContainerHome=C:\C"|-agentlib:quorvel
AGENT -> -javaagent:"C:\Q\quorvel.jar"
ALLOWED -> -Dcom.quorvel.AllowVMProperties=allowed
)";

// Launch mode and Java versions -> arguments -> host or leading list -> guest or trailing list
constexpr char COMMAND_LINES[] = R"(
advanced 9 9 -> -Xignored|-ea|-Da=C:\L|-jar|a b|c -> -ea|-Xc|RULES|PROPERTIES|PACK|NINE|CONFIGURED|PATCH|NATIVE|AGENT|quorvel.Container -> -Da=C:\C|-jar|"a b"|c
advanced 8 8 -> -> -Xc|RULES|PROPERTIES|PACK|CONFIGURED|NATIVE|AGENT|quorvel.Container ->
advanced 8 8 -> -version -> RULES|PROPERTIES|PACK|CONFIGURED|NATIVE|AGENT|quorvel.Container -> -version
native 9 8 -> -ea|opt|-Dallowed=C:\L|-jar|a b -> -ea|opt|-Dallowed=C:\C|-Xc|RULES|-Dcom.quorvel.QuorvelProperties=C:\L\p q|PACK|-Dcom.quorvel.jnimode=true|NINE|-Xj|-Dk=a b|PATCH|-Dcom.quorvel.ContainerHome=C:\C|-agentpath:C:\Q\windows-x64\quorvel.dll|-javaagent:C:\Q\quorvel.jar|quorvel.Container -> -Dallowed=C:\C|-jar|a b
legacy 9 8 -> -javaagent:a|-ea|-Dcom.quorvel.rules.local=x|Main|-ea -> -ea|RULES|ALLOWED|PROPERTIES|PACK|NINE|CONFIGURED|PATCH|NATIVE|AGENT -> -javaagent:a|Main|-ea
legacy 8 9 -> -> ALLOWED|RULES|PROPERTIES|PACK|CONFIGURED|NATIVE|AGENT ->
patch 9 9 -> -ea|Main|x -> -ea|ALLOWED|RULES|PROPERTIES|-Dcom.quorvel.AgentEnvironment=patch|PACK|NINE|CONFIGURED|PATCH|PACKAGES|AGENT -> Main|x
patch 8 9 -> Main -> ALLOWED|RULES|PROPERTIES|-Dcom.quorvel.AgentEnvironment=patch|PACK|CONFIGURED|AGENT -> Main
secure 9 9 -> Main -> ALLOWED|RULES|PROPERTIES|PACK|NINE|CONFIGURED|PATCH|PACKAGES|AGENT -> Main
ri 9 9 -> -ea|Main|-ea -> -ea|ALLOWED|CONFIGURED -> Main|-ea
)";

std::string in_full(std::string list) {
    for (const texts &word : rows_of(WORDS)) {
        const size_t at = ('|' + list + '|').find('|' + word[0] + '|');
        if (at != std::string::npos) {
            list.replace(at, word[0].size(), word[1]);
        }
    }
    return list;
}

// JVM_OPTIONS= or QUORVEL_HOME= -> whether the module patch is added
constexpr char PATCHED_MODULES[] = R"(
JVM_OPTIONS="--patch-module" "java.base=C:\x\module_patch.jar" -> no
JVM_OPTIONS="--patch-module=java.base=module_patch.jar;x" "-Xj" -> no
JVM_OPTIONS="--patch-module" "java.base=x.jar" -> yes
JVM_OPTIONS="--patch-module" "java.sql=module_patch.jar" -> yes
JVM_OPTIONS="java.base=module_patch.jar" "--patch-module" -> yes
JVM_OPTIONS="--patch-module=java.sql=java.base=module_patch.jar" -> yes
JVM_OPTIONS="--patch-module=java.base=x" -> yes
QUORVEL_HOME=C:\none -> no
QUORVEL_HOME=C:\L -> no
QUORVEL_HOME=C:\folder -> no
)";

// Mode -> configuration -> native_jvm_bits -> native agent
constexpr char NATIVE_AGENTS[] = R"(
native -> -> -1 -> -agentpath:C:\Q\windows-x64\quorvel.dll
native -> QUORVEL_HOME=C:\Q2 -> 32 -> -agentpath:C:\Q2\windows-i586\quorvel.dll
native -> QUORVEL_HOME=C:\Q2 -> 64 -> -agentpath:C:\Q2\quorvel.dll
native -> QUORVEL_NATIVE_AGENT=C:\a b.dll -> 64 -> -agentpath:"C:\a b.dll"
legacy -> QUORVEL_NATIVE_AGENT=a.dll -> 64 -> -agentpath:"C:\L\a.dll"
)";

class command_line : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        for (const char *file : {"C:\\Q\\module_patch.jar", "C:\\Q\\windows-x64\\quorvel.dll",
                                 "C:\\Q2\\windows-i586\\quorvel.dll", "C:\\Q2\\quorvel.dll"}) {
            put_file(file, "");
        }
        put_folder("C:\\folder\\module_patch.jar");
    }
};

bool is_in_host_list(const std::string &arg) {
    return ('|' + host_list() + '|').find('|' + arg + '|') != std::string::npos;
}

} // namespace

TEST_F(command_line, is_put_in_order) {
    for (const texts &row : rows_of(COMMAND_LINES)) {
        start(row[0], EVERYTHING);
        rewrite(row[1]);
        EXPECT_EQ(host_list(), in_full(row[2])) << row[0] << ' ' << row[1];
        EXPECT_EQ(guest_list(), row[3]) << row[0] << ' ' << row[1];
    }
}

TEST_F(command_line, patches_java_base_once) {
    for (const texts &row : rows_of(PATCHED_MODULES)) {
        start("secure 9 9", row[0]);
        rewrite("");
        EXPECT_EQ(is_in_host_list("--patch-module=java.base=C:\\Q\\module_patch.jar"), row[1] == "yes") << row[0];
    }
}

TEST_F(command_line, names_the_native_agent) {
    for (const texts &row : rows_of(NATIVE_AGENTS)) {
        start(row[0], row[1]);
        native_jvm_bits = std::stoi(row[2]);
        rewrite("");
        EXPECT_TRUE(is_in_host_list(row[3])) << host_list();
    }
    const auto trace_until_exit = [] {
        start("native 8 8", "QUORVEL_HOME=C:\\L");
        JLI_SetTraceLauncher();
        fclose(stdout);
        LOG_FILE_FD = stderr;
        add_agent_args();
    };
    EXPECT_EXIT(trace_until_exit(), ExitedWithCode(1),
                Eq(here(R"(Warning: Expected Quorvel native agent library, 'C:\L\windows-x64\quorvel.dll', doesn't exist
         Trying Quorvel native agent library, 'C:\L\quorvel.dll'
Error: Expected Quorvel native agent library, 'C:\L\quorvel.dll', doesn't exist
)")));
}

TEST_F(command_line, is_traced) {
    const std::string path = child_variable("PATH");
    set_variable("PATH", "w");
    set_variable("JAVA_TOOL_OPTIONS", "-Xmx1m -Dfile.encoding=a");
    set_variable("_JAVA_OPTIONS", "-ea -Dfile.encoding=u");
    set_variable("CLASSPATH", "Q:\\L,C:");
    put_file("C:\\Q q\\module_patch.jar", "");
    put_file("C:\\L\\module", "-ea --add-modules");
    start("advanced 8 8", "CONTAINER_OPTIONS=\"-Xc\"");
    assign_text(&launcher_home, "Q:\\L");
    EXPECT_EQ(traced_by([] { rewrite("@C:\\L\\module|@|Main|a b"); }),
              here(R"(NOTE: Picked up JAVA_TOOL_OPTIONS: -Xmx1m -Dfile.encoding=a

****************************************************************
********* WARNING: A JVM ENV VAR, 'JAVA_TOOL_OPTIONS', has been set.
*********          This var cannot override existing JVM arguments on the command line,
*********          but it can add arguments that can change the runtime behaviour of the application.
****************************************************************

JVM ENVIRONMENT SETTING:
------------------------
%JAVA_TOOL_OPTIONS%: -Xmx256m -Dfile.encoding=a

JVM ENVIRONMENT SETTING:
------------------------
%QUORVEL_GUEST_JAVA_TOOL_OPTIONS%: -Dfile.encoding=a

Get CLASSPATH from environment
-----------------------------
    $CLASSPATH set in environment: Q:\L,C:

TRANSFORMING PATH LIST:
-----------------------
   property:  -cp or -classpath
   old_paths: Q:\L,C:

RESOLVE PATH:
-------------
   old_path: Q:\L
   path_component[0] = L
       path_prefix = Q:\L
   old_path_abs: Q:\L

TRANSFORMING PATH:
------------------
   old_path_abs: Q:\L
   new_path: C:\C

RESOLVE PATH:
-------------
   old_path: C:
   old_path_abs: 

NOT TRANSFORMING PATH:
----------------------
   old_path: C:
   new_path: C:

TRANSFORM PATH LIST END:
------------------------
   newPathList: C:\C,C:

@<file> arg encountered: @C:\L\module
    @C:\L\module[0]: -ea
    @C:\L\module[1]: --add-modules

@<file> arg encountered: @
    @<file> arg , @, doesn't contain any relevant arguments, so skipping

NOTE: Picked up _JAVA_OPTIONS: -ea -Dfile.encoding=u

****************************************************************
********* WARNING: A JVM ENV VAR, '_JAVA_OPTIONS', has been set.
*********          This var can override JVM arguments on the command line,
*********          and can change the runtime behaviour of the application.
****************************************************************

JVM ENVIRONMENT SETTING:
------------------------
%_JAVA_OPTIONS%: -ea -Dfile.encoding=u

JVM ENVIRONMENT SETTING:
------------------------
%QUORVEL_GUEST__JAVA_OPTIONS%: -Dfile.encoding=u

QUOTING WINDOWS ARG DUE TO SPACES:
    Before: a b
    After:  "a b"

ADVANCED LAUNCH MODE HOST ARGS:
-------------------------------
-ea, --add-modules, -Xc, -Dcom.quorvel.ShowStart=true, -Dcom.quorvel.LauncherPackPath=C:\L

ADVANCED LAUNCH MODE GUEST ARGS:
--------------------------------
Main, "a b"

LIBRARY ENVIRONMENT SETTING:
----------------------------
%Path%: C:\Q;C:\Q\windows-i586;C:\Q\windows-x64;w

)"));
    for (const char *name : {"JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS", "CLASSPATH", "QUORVEL_GUEST_JAVA_TOOL_OPTIONS",
                             "QUORVEL_GUEST__JAVA_OPTIONS"}) {
        set_variable(name, "");
    }
    set_variable("PATH", path);
    const char *const ends[][2] = {
        {"secure 9 9", R"(QUOTING WINDOWS ARG DUE TO SPACES:
    Before: --patch-module=java.base=C:\Q q\module_patch.jar
    After:  "--patch-module=java.base=C:\Q q\module_patch.jar"

ADDED PATCH MODULE ARG:
-----------------------
      "--patch-module=java.base=C:\Q q\module_patch.jar"

ADDED SECURE/PATCH JAVA 9+ ARGS:
--------------------------------
--add-exports=java.base/jdk.internal.misc=ALL-UNNAMED
--add-exports=java.base/jdk.internal.reflect=ALL-UNNAMED
--add-opens=java.base/jdk.internal.misc=ALL-UNNAMED
--add-opens=java.base/jdk.internal.reflect=ALL-UNNAMED

SECURE LAUNCH MODE ARGS:
------------------------
-ea, )"},
        {"patch 8 8", "\n\nPATCH LAUNCH MODE ARGS:\n-----------------------\n-ea, "},
        {"legacy 8 8",
         "    $CLASSPATH not set in environment\n\nLEGACY LAUNCH MODE ARGS:\n------------------------\n-ea, "},
        {"ri 8 8", "\n\nLEGACY LAUNCH MODE ARGS:\n------------------------\n-ea, "},
    };
    for (const auto &[how, end] : ends) {
        start(how, "QUORVEL_HOME=C:\\Q q");
        const std::string trace = traced_by([] { rewrite("-ea|Main|x"); });
        EXPECT_NE(trace.find(here(end)), std::string::npos) << trace;
        EXPECT_NE(trace.find(", Main, x\n\n"), std::string::npos) << trace;
    }
}
