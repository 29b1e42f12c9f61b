// Which homes each mode asks for, where it takes them from, and what it says of a bad one.

#include <sstream>

#include "tests/support/world.h"

namespace {

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
