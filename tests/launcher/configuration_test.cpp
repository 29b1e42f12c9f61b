// What launcher.cfg may hold, shown by the dump of the trace, where the trace goes, and which homes each mode asks for.

#include <cstring>
#include <sstream>

#include "tests/support/world.h"

namespace {

outcome run_with(const std::string &configuration) {
    configure(configuration);
    return run_launcher(LAUNCHER, {});
}

std::string dump_of(const std::string &mode, const std::string &properties) {
    return here("LAUNCHER CONFIGURATION LOADED\n-----------------------------\n"
                "   config_path:                          C:\\L\\launcher.cfg\n"
                "   os_name:                              Windows\n"
                "   launch_mode:                          " +
                mode + "\n   is_native_invocation:                 no\n" + properties + "\n");
}

constexpr const char *EVERY_KEY = R"(RULE_FILE=rules.txt
# JVM_HOME=C:\J
SHOW_START=true
QUORVEL_PROPERTIES_FILE=C:\q\.\my.properties
QUORVEL_NATIVE_AGENT=..\agent\quorvel.dll
NON_PATH_OPTIONS=user.dir=java.io.tmpdir
ALLOW_VM_OPTIONS=a.b=c.d
IGNORE_OPTIONS=-Xfoo==-Xbar
JVM_OPTIONS="-Xmx1g" "-Dx=a b"
CONTAINER_OPTIONS="-Dc=1"
CONTAINER_HOME=..\C\
JVM_HOME=jdk
QUORVEL_HOME=/tools/x
LOG_FILE_OR_DIR=log.txt
LAUNCH_MODE=)";

constexpr const char *EVERY_PROPERTY =
    R"(   log_file_path:                        C:\L\log.txt
   container_home:                       C:\C\
   jvm_home:                             C:\L\jdk
   quorvel_home:                         C:\L\tools\x
   rule_file_arg:                        -Dcom.quorvel.rules.local=C:\L\rules.txt
   quorvel_properties_arg:               -Dcom.quorvel.QuorvelProperties=C:\q\my.properties
   quorvel_library_path:                 C:\agent\quorvel.dll
   non_path_options_value:            user.dir=java.io.tmpdir
        non_path_options_array[ 0 ]:  user.dir
        non_path_options_array[ 1 ]:  java.io.tmpdir
   allow_vm_properties_value:            a.b=c.d
        allow_vm_properties_option(LLM): -Dcom.quorvel.AllowVMProperties=a.b=c.d
        allow_vm_properties_array[ 0 ]:  a.b
        allow_vm_properties_array[ 1 ]:  c.d
   ignore_properties_value:            -Xfoo==-Xbar
        ignore_properties_array[ 0 ]:  -Xfoo
        ignore_properties_array[ 1 ]:  -Xbar
   jvm_options_value:                    "-Xmx1g" "-Dx=a b"
        jvm_options_array[ 0 ]:          -Xmx1g
        jvm_options_array[ 1 ]:          -Dx=a b
   container_options_value:              "-Dc=1"
        container_options_array[ 0 ]:    -Dc=1
)";

// Three homes in the order container, JVM, Quorvel, each a path on drive C; "-" is none.
std::vector<std::string> homes(const char *names) {
    std::vector<std::string> paths;
    std::istringstream words(names);
    for (std::string word; words >> word;) {
        paths.push_back(word == "-" ? "" : here("C:\\" + word));
    }
    return paths;
}

std::string from_environment(const std::string &name, const std::string &value) {
    const std::string title = "Get " + name + " from environment";
    return title + '\n' + std::string(title.size(), '-') + "\n    $" + name +
           (value.empty() ? " not set in environment\n\n" : " set in environment: " + value + "\n\n");
}

const struct {
    const char *modes, *folder, *configured, *environment;
    const char *taken; // the initials of those that are taken from the environment
    const char *error; // null: the start succeeds
} ROWS[] = {
    // In their order, with the faults of later tests in place.
    {"advanced legacy", "bin", "no no no", "C J Q", "", "Error: CONTAINER_HOME directory 'C:\\no' doesn't exist\n"},
    {"advanced legacy", "bin", "empty\\ no no", "C J Q", "",
     "Error: neither bin/java nor jre/bin/java exist in CONTAINER_HOME 'C:\\empty'\n"
     "Error: \\bin/java doesn't exist in CONTAINER_HOME 'C:\\empty'\n"},
    {"advanced", "bin", "folder no no", "C J Q", "",
     "Error: neither bin/java nor jre/bin/java exist in CONTAINER_HOME 'C:\\folder'\n"
     "Error: \\bin/java doesn't exist in CONTAINER_HOME 'C:\\folder'\n"},
    {"advanced legacy patch secure ri", "bin", "C\\ Q\\quorvel.jar no", "- - -", "",
     "Error: JVM_HOME directory 'C:\\Q\\quorvel.jar' doesn't exist\n"},
    {"advanced legacy patch secure ri", "bin", "C empty\\ no", "- - -", "",
     "Error: \\bin/java doesn't exist in JVM_HOME 'C:\\empty'\n"},
    {"advanced legacy patch secure", "bin", "C J\\ no", "- - -", "",
     "Error: QUORVEL_HOME directory 'C:\\no' doesn't exist\n"},
    {"advanced legacy patch secure", "bin", "C J empty\\", "- - -", "",
     "Error: Quorvel agent jar file 'C:\\empty\\quorvel.jar' doesn't exist\n"},
    {"patch", "bin", "- J jar", "- - -", "", "Error: Quorvel agent jar file 'C:\\jar\\quorvel.jar' doesn't exist\n"},

    // In a jre\bin folder the container home needs one too, the JVM home does not.
    {"legacy", "jre\\bin", "J no no", "- - -", "",
     "Error: neither bin/java nor jre/bin/java exist in CONTAINER_HOME 'C:\\J'\n"
     "Error: \\jre\\bin/java doesn't exist in CONTAINER_HOME 'C:\\J'\n"},
    {"advanced secure", "jre\\bin", "C J no", "- - -", "", "Error: QUORVEL_HOME directory 'C:\\no' doesn't exist\n"},
    {"ri", "bin", "- L\\x\\.. -", "- - -", "", "Error: invalid command: C:\\L\\bin\\java.exe\n"}, // itself
    {"ri", "jre\\bin", "- J -", "- - -", "", "Error: invalid command: C:\\J\\jre\\bin\\java.exe\n"},

    // From the environment, as it stands there: what the mode needs and the file leaves empty.
    {"advanced legacy", "bin", "- - -", "- - -", "CJQ", "Error: CONTAINER_HOME directory '' doesn't exist\n"},
    {"patch secure", "bin", "- - -", "C no\\..\\no Q", "JQ",
     "Error: JVM_HOME directory 'C:\\no\\..\\no' doesn't exist\n"},
    {"ri", "bin", "- - -", "C - Q", "J", "Error: JVM_HOME directory '' doesn't exist\n"},
    {"advanced legacy", "bin", "- J -", "C\\ no Q\\", "CQ", nullptr},
    {"patch secure", "bin", "no J\\ Q\\", "no no no", "", nullptr},
    {"ri", "bin", "no J no", "no no no", "", nullptr},
};

} // namespace

TEST_F(launcher, reads_every_key_and_dumps_it) {
    const std::string none = "   WARNING: No properties set in config file.\n", traced = "SHOW_START=true\n";
    const std::string long_name(99999 - strlen("IGNORE_OPTIONS="), 'x');
    const struct {
        std::string configuration, mode, properties;
        bool mode_rejected = false;
    } rows[] = {
        {"\xEF\xBB\xBF" + std::string(EVERY_KEY) + "legacy\r\n", "legacy", EVERY_PROPERTY},
        {"SHOW_START= \t trueish\v\f\nLAUNCH_MODE= ri and more \n", "ri and more", none},
        {traced + "SHOW_START=false\nLAUNCH_MODE=\nLAUNCH_MODE=Legacy\n", "advanced", none, true},
        {traced + "LAUNCH_MODE=x\nLAUNCH_MODE=patch", "patch", none, true},
        {traced + "TRANSPARENT=true\nREWRITE_ARGUMENTS= true and more \nTRANSPARENT=True\n", "advanced",
         "   rewrite_arguments:                    yes\n"},

        // Passed over: indented, commented, misspelt; left as it was: an empty value.
        {traced + "\n JVM_HOME=1\n\tJVM_HOME=1\n#JVM_HOME=1\nJVM_HOME =1\njvm_home=1\nJVM_HOME\nJVM_HOMES=1\nX=\n"
                  "JVM_HOME=\nQUORVEL_PROPERTIES_FILE= \nQUORVEL_NATIVE_AGENT=\nJVM_OPTIONS=\n",
         "advanced", none},
        {traced +
             "JVM_HOME=C:\\1\nJVM_HOME=\"C:\\J\"\nJVM_HOME= \nQUORVEL_HOME=\\\\server\\share\\. \r\n CONTAINER_HOME=x",
         "advanced",
         "   jvm_home:                             C:\\L\\\"C:\\J\"\n"
         "   quorvel_home:                         C:\\L\\server\\share\n"},

        // Repeated lists gather their entries and show the last value.
        {traced + "ALLOW_VM_OPTIONS=a.b\nALLOW_VM_OPTIONS==c.d=\nNON_PATH_OPTIONS=gone\nNON_PATH_OPTIONS=\n",
         "advanced",
         "   allow_vm_properties_value:            =c.d=\n"
         "        allow_vm_properties_array[ 0 ]:  a.b\n"
         "        allow_vm_properties_array[ 1 ]:  c.d\n"},

        // A line of more than 99999 characters is a line of that many and another.
        {traced + "IGNORE_OPTIONS=" + long_name + "JVM_HOME=C:\\1\n", "advanced",
         "   jvm_home:                             C:\\1\n"
         "   ignore_properties_value:            " +
             long_name + "\n        ignore_properties_array[ 0 ]:  " + long_name + "\n"},
    };
    for (const auto &row : rows) {
        const outcome result = run_with(row.configuration);
        const std::string trace = after_banner(result);
        EXPECT_EQ(trace.substr(0, trace.find("INPUT COMMAND:\n")), dump_of(row.mode, here(row.properties)));
        const std::string warning = "WARNING: LAUNCH_MODE must be one of the following [advanced, "
                                    "legacy, patch, secure, ri], defaulting to '" +
                                    row.mode + "'\n";
        EXPECT_EQ(result.output.rfind(warning), row.mode_rejected ? 0 : std::string::npos);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, STATUS_MINUS_1);
    }
}

TEST_F(launcher, logs_to_the_last_file_that_is_named) {
    put_folder("C:\\L\\logs");
    const outcome result = run_with("SHOW_START=true\nLOG_FILE_OR_DIR=first\nLOG_FILE_OR_DIR=logs\\");
    EXPECT_EQ(result.errors, "");
    ASSERT_EQ(std::distance(fs::directory_iterator(on_disk("C:\\L\\logs")), {}), 1);
    const fs::path file = fs::directory_iterator(on_disk("C:\\L\\logs"))->path();
    const std::string end = "_pid" + std::to_string(result.process_id) + ".log";
    EXPECT_TRUE(to_text(file.filename()).starts_with("jlp_ts") && to_text(file).ends_with(end)) << file;
    EXPECT_EQ(read_file(file), result.output);
    EXPECT_EQ(fs::file_size(on_disk("C:\\L\\first")), 0u);
}

TEST_F(launcher, asks_for_the_homes_that_its_mode_needs) {
    put_folder("C:\\jar\\quorvel.jar");
    put_folder("C:\\folder\\bin\\java.exe");
    put_launcher("C:\\L\\jre\\bin\\java.exe");
    put_java("C:\\C\\jre\\bin\\java.exe");
    const char *const names[] = {"CONTAINER_HOME", "JVM_HOME", "QUORVEL_HOME"};
    for (const auto &row : ROWS) {
        std::string configuration = "SHOW_START=true\n", expected;
        for (size_t i = 0; i < 3; i++) {
            const std::string variable = homes(row.environment)[i];
            set_environment(names[i], variable);
            configuration += names[i] + ("=" + homes(row.configured)[i]) + "\n";
            if (std::string(row.taken).find(*names[i]) != std::string::npos) {
                expected += from_environment(names[i], variable);
            }
        }
        expected += row.error == nullptr ? "OUTPUT COMMAND:\n" : here(row.error);
        std::istringstream modes(row.modes);
        for (std::string mode; modes >> mode;) {
            put_file("C:\\L\\launcher.cfg", configuration + "LAUNCH_MODE=" + mode);
            const outcome result = run_launcher("C:\\L\\" + std::string(row.folder) + "\\java.exe", {});
            const std::string trace = after_banner(result);
            const size_t start = trace.find("\n\n", trace.find("KEY DIRECTORIES:\n")) + 2;
            EXPECT_EQ(trace.substr(start, row.error == nullptr ? expected.size() : std::string::npos), expected)
                << mode;
            EXPECT_EQ(result.status, row.error == nullptr ? 0 : STATUS_MINUS_1);
            EXPECT_EQ(result.errors, "");
        }
    }
}
