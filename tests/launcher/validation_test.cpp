// Which homes each mode asks for, where it takes them from, and what it says of a bad one.

#include <sstream>

#include "tests/launcher/world.h"

namespace {

struct homes {
    const char *container = "", *jvm = "", *quorvel = "";
};

struct validation_row {
    const char *modes;
    homes configured, environment;
    const char *trace; // after the key directories
    const char *launcher_place = "\\bin\\java.exe";
};

void put_homes() {
    put_folder("C:\\jar\\quorvel.jar");
    put_folder("C:\\folder\\bin\\java.exe");
    put_launcher("C:\\L\\jre\\bin\\java.exe");
    put_java("C:\\C\\jre\\bin\\java.exe");
}

std::string configuration(const homes &values, const std::string &mode) {
    std::string text = "SHOW_START=true\nLAUNCH_MODE=" + mode + "\nCONTAINER_HOME=";
    text += std::string(values.container) + "\nJVM_HOME=" + values.jvm;
    return here(text + "\nQUORVEL_HOME=" + values.quorvel + "\n");
}

std::string after_key_directories(const outcome &result) {
    const std::string trace = after_banner(result);
    const size_t block = trace.find("KEY DIRECTORIES:\n");
    return trace.substr(trace.find("\n\n", block) + 2);
}

#define FROM_ENVIRONMENT(name, dashes, value)                                                      \
    "Get " name " from environment\n" dashes "-----------------------\n    $" name " " value "\n"  \
    "\n"
#define CONTAINER(value) FROM_ENVIRONMENT("CONTAINER_HOME", "------------", value)
#define JVM(value) FROM_ENVIRONMENT("JVM_HOME", "------", value)
#define QUORVEL(value) FROM_ENVIRONMENT("QUORVEL_HOME", "----------", value)
#define UNSET "not set in environment"

const validation_row ROWS[] = {
    // In their order, with the faults of the later tests in place.
    {"advanced legacy",
     {"C:\\no", "C:\\no", "C:\\no"},
     {},
     "Error: CONTAINER_HOME directory 'C:\\no' doesn't exist\n"},
    {"advanced legacy",
     {"C:\\empty\\", "C:\\no", "C:\\no"},
     {},
     "Error: neither bin/java nor jre/bin/java exist in CONTAINER_HOME 'C:\\empty'\n"
     "Error: \\bin/java doesn't exist in CONTAINER_HOME 'C:\\empty'\n"},
    {"advanced",
     {"C:\\folder", "C:\\no", "C:\\no"},
     {},
     "Error: neither bin/java nor jre/bin/java exist in CONTAINER_HOME 'C:\\folder'\n"
     "Error: \\bin/java doesn't exist in CONTAINER_HOME 'C:\\folder'\n"},
    {"advanced legacy patch secure ri",
     {"C:\\C\\", "C:\\Q\\quorvel.jar", "C:\\no"},
     {},
     "Error: JVM_HOME directory 'C:\\Q\\quorvel.jar' doesn't exist\n"},
    {"advanced legacy patch secure ri",
     {"C:\\C", "C:\\empty\\", "C:\\no"},
     {},
     "Error: \\bin/java doesn't exist in JVM_HOME 'C:\\empty'\n"},
    {"advanced legacy patch secure",
     {"C:\\C", "C:\\J\\", "C:\\no"},
     {},
     "Error: QUORVEL_HOME directory 'C:\\no' doesn't exist\n"},
    {"advanced legacy patch secure",
     {"C:\\C", "C:\\J", "C:\\empty\\"},
     {},
     "Error: Quorvel agent jar file 'C:\\empty\\quorvel.jar' doesn't exist\n"},
    {"patch",
     {"", "C:\\J", "C:\\jar"},
     {},
     "Error: Quorvel agent jar file 'C:\\jar\\quorvel.jar' doesn't exist\n"},

    // In a jre\bin folder the container home needs one too, the JVM home does not.
    {"legacy",
     {"C:\\J", "C:\\no", "C:\\no"},
     {},
     "Error: neither bin/java nor jre/bin/java exist in CONTAINER_HOME 'C:\\J'\n"
     "Error: \\jre\\bin/java doesn't exist in CONTAINER_HOME 'C:\\J'\n",
     "\\jre\\bin\\java.exe"},
    {"advanced secure",
     {"C:\\C", "C:\\J", "C:\\no"},
     {},
     "Error: QUORVEL_HOME directory 'C:\\no' doesn't exist\n",
     "\\jre\\bin\\java.exe"},
    {"ri",
     {"", "C:\\J", ""},
     {},
     "Error: invalid command: C:\\J\\jre\\bin\\java.exe\n",
     "\\jre\\bin\\java.exe"},

    // From the environment, as they stand there, what the mode needs and the file leaves empty.
    {"advanced legacy",
     {},
     {},
     CONTAINER(UNSET) JVM(UNSET)
         QUORVEL(UNSET) "Error: CONTAINER_HOME directory '' doesn't exist\n"},
    {"patch secure",
     {},
     {"C:\\C", " C:\\J", "C:\\Q"},
     JVM("set in environment:  C:\\J")
         QUORVEL("set in environment: C:\\Q") "Error: JVM_HOME directory ' C:\\J' doesn't exist\n"},
    {"ri", {}, {"C:\\C", "", "C:\\Q"}, JVM(UNSET) "Error: JVM_HOME directory '' doesn't exist\n"},
    {"legacy", {"C:\\C", "C:\\J", "C:\\Q"}, {"C:\\no", "C:\\no", "C:\\no"}, nullptr},
    {"advanced",
     {"", "", "C:\\no"},
     {"C:\\C\\", "C:\\J\\", "C:\\Q"},
     CONTAINER("set in environment: C:\\C\\") JVM(
         "set in environment: C:\\J\\") "Error: QUORVEL_HOME directory 'C:\\no' doesn't exist\n"},
};

} // namespace

TEST_F(launcher, asks_for_the_homes_that_its_mode_needs) {
    put_homes();
    for (const validation_row &row : ROWS) {
        set_environment("CONTAINER_HOME", here(row.environment.container));
        set_environment("JVM_HOME", here(row.environment.jvm));
        set_environment("QUORVEL_HOME", here(row.environment.quorvel));
        std::istringstream modes(row.modes);
        for (std::string mode; modes >> mode;) {
            put_file("C:\\L\\launcher.cfg", configuration(row.configured, mode));
            const outcome result = run_launcher(std::string("C:\\L") + row.launcher_place, {});
            const std::string trace = after_key_directories(result);
            if (row.trace == nullptr) {
                EXPECT_EQ(trace.find("OUTPUT COMMAND:\n"), 0u) << mode << ": " << trace;
            } else {
                EXPECT_EQ(trace, here(row.trace)) << mode << ", " << row.launcher_place;
            }
            EXPECT_EQ(result.status, row.trace == nullptr ? 0 : STATUS_MINUS_1);
            EXPECT_EQ(result.errors, "");
        }
    }
}
