// explain_launch, the example of a native host, and the example configurations, as users run them.

#include <gtest/gtest.h>

#include "tests/support/programs.h"

namespace {

class tools : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        put_folder("C:\\work");
        put_java("C:\\C\\bin\\java.exe");
        put_java("C:\\J\\bin\\java.exe");
        put_file("C:\\Q\\quorvel.jar", "");
        put_file("C:\\Q\\n.dll", "");
    }

    static void put_java(const std::string &windows_path) {
        put_file(windows_path, "");
        fs::copy_file(own_file().parent_path() / "stand_in_java.exe", on_disk(windows_path),
                      fs::copy_options::overwrite_existing);
    }

    // The status and the output of a tool of this build.
    static std::pair<uint32_t, std::string> run(const std::string &tool, std::vector<std::string> arguments) {
        for (std::string &argument : arguments) {
            argument = here(argument);
        }
        const fs::path file = own_file().parent_path() / (on_windows ? tool + ".exe" : tool);
        const uint32_t id = start({file, arguments, on_disk("C:\\work")});
        const uint32_t status = wait_for_end(id);
        return {status, read_file(on_disk("C:\\work\\out"))};
    }
};

} // namespace

TEST_F(tools, a_launch_is_explained) {
    put_file("C:\\L\\launcher.cfg", "LAUNCH_MODE=legacy\nCONTAINER_HOME=..\\C\nQUORVEL_HOME=..\\Q\\\n"
                                    "QUORVEL_NATIVE_AGENT=..\\Q\\n.dll\n");
    set_environment("JVM_HOME", here("C:\\J"));
    set_environment("CLASSPATH", here("C:\\L\\lib\\x.jar"));
    put_folder("C:\\L\\lib");
    const auto [status, output] =
        run("explain_launch", {"--launcher-home", "C:\\L\\", "--one-per-line", "--", "-Xmx64m", "Main", "a b"});
    set_environment("JVM_HOME", "");
    set_environment("CLASSPATH", "");
    EXPECT_EQ(status, 0u);
    EXPECT_EQ(output, here("Launcher home\n"
                           "  C:\\L\n"
                           "\n"
                           "Launch mode\n"
                           "  legacy\n"
                           "\n"
                           "Homes\n"
                           "  CONTAINER_HOME  C:\\C (from launcher.cfg): passes\n"
                           "  JVM_HOME        C:\\J (from the environment): passes\n"
                           "  QUORVEL_HOME    C:\\Q\\ (from launcher.cfg): passes\n"
                           "\n"
                           "Executable\n"
                           "  C:\\C\\bin\\java.exe\n"
                           "\n"
                           "Leading arguments\n"
                           "  -Xmx256m\n"
                           "  -Dcom.quorvel.LauncherPackPath=C:\\L\n"
                           "  \"-Dcom.quorvel.ContainerHome=C:\\C\"\n"
                           "  -agentpath:\"C:\\Q\\n.dll\"\n"
                           "  -javaagent:\"C:\\Q\\quorvel.jar\"\n"
                           "\n"
                           "Trailing arguments\n"
                           "  Main\n"
                           "  \"a b\"\n"
                           "\n"
                           "Variables\n"
                           "  CLASSPATH\n"
                           "    old: C:\\L\\lib\\x.jar\n"
                           "    new: C:\\C\\lib\\x.jar\n"
                           "\n"
                           "The launch would go through.\n"));
}

TEST_F(tools, a_launch_that_fails_says_where) {
    put_file("C:\\L\\jni\\qvljni.dll", "");
    const struct {
        const char *configuration;
        std::vector<std::string> arguments;
        uint32_t status;
        const char *said;
    } rows[] = {
        {"LAUNCH_MODE=ri\nJVM_HOME=none",
         {"--launcher-home", "C:\\L", "--"},
         1,
         "C:\\L\\none (from launcher.cfg): Error: JVM_HOME directory 'C:\\L\\none' doesn't "
         "exist\n"},
        {"LAUNCH_MODE=ri\n",
         {"--launcher-home", "C:\\L", "--"},
         1,
         " (set nowhere): Error: JVM_HOME directory '' doesn't exist\n"},
        {"LAUNCH_MODE=ri\nJVM_HOME=..\\J",
         {"--launcher-home", "C:\\L", "--", "@none"},
         1,
         "The rewriting ended the launch with status 1; --trace shows why.\n"},
        {"LAUNCH_MODE=ri\nJVM_HOME=..\\J",
         {"--launcher-home", "C:\\L", "--trace", "--", "-cp", "x"},
         0,
         "LEGACY LAUNCH MODE ARGS:\n------------------------\n-cp, x, \n\n"},
        {"JVM_HOME=..\\J\nCONTAINER_HOME=..\\C\nQUORVEL_HOME=..\\Q",
         {"--library", "C:\\L\\jni\\qvljni.dll", "--", "-version"},
         1,
         "The rewriting ended the launch with status 1; --trace shows why.\n"},
        {"", {"--launcher-home", "C:\\L"}, 2, ""},
        {"", {"--launcher-home", "C:\\L", "--library", "C:\\x", "--"}, 2, ""},
    };
    for (const auto &row : rows) {
        put_file("C:\\L\\launcher.cfg", row.configuration);
        const auto [status, output] = run("explain_launch", row.arguments);
        EXPECT_EQ(status, row.status) << output;
        EXPECT_NE(output.find(here(row.said)), std::string::npos) << output;
    }
}

TEST_F(tools, the_example_of_a_native_host_starts_java_twice) {
    put_file("C:\\L\\launcher.cfg", "JVM_HOME=..\\J\nCONTAINER_HOME=..\\C\nQUORVEL_HOME=..\\Q\nIGNORE_OPTIONS=-Dold\n");
    put_file("C:\\Q\\quorvel.dll", "");
    const auto [status, output] = run("native_host", {"C:\\L\\jni\\qvljni.dll", "-Dold=1", "-cp", "C:\\L\\a b;x",
                                                      "exit=3", "--", "-version", "-Dold=1", "-Da=C:\\L\\", "exit=42"});
    EXPECT_EQ(status, 42u);
    const char *const arguments[] = {"arg     -Dcom.quorvel.ContainerHome=C:\\C\n",
                                     "arg     -cp\narg     C:\\C\\a b;x\n",
                                     "Java ended with 3\n",
                                     "arg     -version\n",
                                     "arg     -Da=C:\\C\\\n",
                                     "Java ended with 42\n"};
    size_t at = 0;
    for (const char *expected : arguments) {
        at = output.find(here(expected), at);
        ASSERT_NE(at, std::string::npos) << expected << output;
    }
}

TEST_F(tools, every_example_configuration_is_for_its_mode) {
    for (const char *mode : {"advanced", "legacy", "patch", "secure", "ri"}) {
        const std::string example = read_file(fs::path(EXAMPLES) / (std::string(mode) + ".cfg"));
        put_file("C:\\L\\launcher.cfg", example);
        const auto [status, output] = run("explain_launch", {"--launcher-home", "C:\\L", "--", "-Dold.switch=1"});
        EXPECT_NE(output.find("Launch mode\n  " + std::string(mode) + "\n"), std::string::npos) << output;
        // Every line that sets something is understood: its home is there, and its list drops the
        // option.
        EXPECT_NE(output.find("(from launcher.cfg)"), std::string::npos) << output;
        EXPECT_EQ(output.find("-Dold.switch") == std::string::npos,
                  example.find("IGNORE_OPTIONS=") != std::string::npos)
            << output;
    }
}
