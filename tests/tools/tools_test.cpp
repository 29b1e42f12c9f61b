// explain_launch, the example of a native host, and the example configurations, as users run them.

#include "tests/support/world.h"

namespace {

class tools : public launcher {};

// The status and the output of a tool of this build.
std::pair<uint32_t, std::string> run(const std::string &tool, texts arguments) {
    for (std::string &argument : arguments) {
        argument = here(argument);
    }
    const fs::path file = own_file().parent_path() / (on_windows ? tool + ".exe" : tool);
    const outcome result = end_of_launcher(start({file, arguments, on_disk("C:\\work")}));
    return {result.status, result.output};
}

} // namespace

TEST_F(tools, a_launch_is_explained) {
    configure("LAUNCH_MODE=legacy\nCONTAINER_HOME=..\\C\nQUORVEL_HOME=..\\Q\\\nQUORVEL_NATIVE_AGENT=..\\Q\\n.dll\n");
    put_file("C:\\Q\\n.dll", "");
    put_folder("C:\\L\\lib");
    set_environment("JVM_HOME", here("C:\\J"));
    set_environment("CLASSPATH", here("C:\\L\\lib\\x.jar"));
    const auto [status, output] =
        run("explain_launch", {"--launcher-home", "C:\\L\\", "--one-per-line", "--", "-Xmx64m", "Main", "a b"});
    set_environment("CLASSPATH", "");
    EXPECT_EQ(status, 0u);
    EXPECT_EQ(output, here(R"(Launcher home
  C:\L

Launch mode
  legacy

Homes
  CONTAINER_HOME  C:\C (from launcher.cfg): passes
  JVM_HOME        C:\J (from the environment): passes
  QUORVEL_HOME    C:\Q\ (from launcher.cfg): passes

Executable
  C:\C\bin\java.exe

Leading arguments
  -Xmx256m
  -Dcom.quorvel.LauncherPackPath=C:\L
  "-Dcom.quorvel.ContainerHome=C:\C"
  -agentpath:"C:\Q\n.dll"
  -javaagent:"C:\Q\quorvel.jar"

Trailing arguments
  Main
  "a b"

Variables
  CLASSPATH
    old: C:\L\lib\x.jar
    new: C:\C\lib\x.jar

The launch would go through.
)"));
}

TEST_F(tools, a_launch_that_fails_says_where) {
    put_file("C:\\L\\jni\\qvljni.dll", "");
    const std::string refused = "The rewriting ended the launch with status 1; --trace shows why.\n";
    const texts home = {"--launcher-home", "C:\\L", "--"}, with_file = {"--launcher-home", "C:\\L", "--", "@none"};
    const texts traced = {"--launcher-home", "C:\\L", "--trace", "--", "-cp", "x"};
    const texts library = {"--library", "C:\\L\\jni\\qvljni.dll", "--", "-version"};
    const struct {
        const char *configuration;
        texts arguments;
        uint32_t status;
        std::string said;
    } rows[] = {
        {"LAUNCH_MODE=ri\nJVM_HOME=none", home, 1,
         "C:\\L\\none (from launcher.cfg): Error: JVM_HOME directory 'C:\\L\\none' doesn't exist\n"},
        {"LAUNCH_MODE=ri\n", home, 1, " (set nowhere): Error: JVM_HOME directory '' doesn't exist\n"},
        {"LAUNCH_MODE=ri\nJVM_HOME=..\\J", with_file, 1, refused},
        {"LAUNCH_MODE=ri\nJVM_HOME=..\\J", traced, 0,
         "LEGACY LAUNCH MODE ARGS:\n------------------------\n-cp, x, \n\n"},
        {"JVM_HOME=..\\J\nCONTAINER_HOME=..\\C\nQUORVEL_HOME=..\\Q", library, 1, refused},
        {"", {"--launcher-home", "C:\\L"}, 2, ""},
        {"", {"--launcher-home", "C:\\L", "--library", "C:\\x", "--"}, 2, ""},
    };
    for (const auto &row : rows) {
        configure(row.configuration);
        const auto [status, output] = run("explain_launch", row.arguments);
        EXPECT_EQ(status, row.status) << output;
        EXPECT_NE(output.find(here(row.said)), std::string::npos) << output;
    }
}

TEST_F(tools, the_example_of_a_native_host_starts_java_twice) {
    configure("JVM_HOME=..\\J\nCONTAINER_HOME=..\\C\nQUORVEL_HOME=..\\Q\nIGNORE_OPTIONS=-Dold\n");
    put_file("C:\\Q\\quorvel.dll", "");
    const auto [status, output] = run("native_host", {"C:\\L\\jni\\qvljni.dll", "-Dold=1", "-cp", "C:\\L\\a b;x",
                                                      "exit=3", "--", "-version", "-Dold=1", "-Da=C:\\L\\", "exit=42"});
    EXPECT_EQ(status, 42u);
    size_t at = 0;
    for (const char *expected :
         {"arg     -Dcom.quorvel.ContainerHome=C:\\C\n", "arg     -cp\narg     C:\\C\\a b;x\n", "Java ended with 3\n",
          "arg     -version\n", "arg     -Da=C:\\C\\\n", "Java ended with 42\n"}) {
        at = output.find(here(expected), at);
        ASSERT_NE(at, std::string::npos) << expected << output;
    }
}

TEST_F(tools, every_example_configuration_is_for_its_mode) {
    for (const char *mode : {"advanced", "legacy", "patch", "secure", "ri"}) {
        const std::string example = read_file(own_file().parent_path() / "launcher_cfg" / (std::string(mode) + ".cfg"));
        configure(example);
        const auto [status, output] = run("explain_launch", {"--launcher-home", "C:\\L", "--", "-Dold.switch=1"});
        EXPECT_NE(output.find("Launch mode\n  " + std::string(mode) + "\n"), std::string::npos) << output;
        // Every line that sets something is understood: its home is there, and its list drops the option.
        EXPECT_NE(output.find("(from launcher.cfg)"), std::string::npos) << output;
        EXPECT_NE(output.find("-Dold.switch") == std::string::npos,
                  example.find("IGNORE_OPTIONS=") == std::string::npos);
    }
}
