// No other program: whatever stands in the way, the launcher starts the java.exe of the home or none.
// Every decoy is a stand-in, which would report its own path.

#include "tests/support/world.h"

namespace {

class other_programs : public launcher {};

void put_decoys(const std::string &folder, const texts &names) {
    for (const std::string &name : names) {
        put_java(folder + name);
    }
}

void expect_java_of(const std::string &home, const texts &arguments = {}) {
    const outcome result = run_launcher(LAUNCHER, arguments);
    EXPECT_EQ(result.output, report(home + "\\bin\\java.exe", arguments));
    EXPECT_EQ(result.status, 0u);
}

} // namespace

// Shorter and longer readings of an unquoted path, from the configuration and from the environment.
TEST_F(other_programs, are_not_read_out_of_a_path) {
    const struct {
        std::string home;
        texts decoys, arguments;
    } rows[] = {
        {"C:\\K 1", {"K.exe", "work\\1\\bin\\java.exe", "K 1\\bin\\java"}, {}},
        {"C:\\K 1 2 (x)", {"K", "K 1.exe", "K 1 2"}, {"(x)\\bin\\java.exe"}},
        {"C:\\K  1", {"K.exe", "K .exe", "K 1\\bin\\java.exe"}, {}},
        {"C:\\K x\\y z", {"K", "K x\\y.exe", "K x\\y"}, {}},
        {"C:\\-K&x^%PATH%;y", {"-K", "-K.exe", "work\\x.exe"}, {"&", "calc.exe"}},
        {"C:\\K2",
         {"K2.exe", "K2\\bin\\java.exe 1.exe", "K2\\bin\\java.exe 1\\x.exe", "x.exe"},
         {"1\\x.exe", "..\\..\\..\\x.exe"}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.home);
        SetUp();
        put_decoys("C:\\", row.decoys);
        put_java(row.home + "\\bin\\java.exe");
        configure("LAUNCH_MODE=ri\nJVM_HOME=" + row.home);
        expect_java_of(row.home, row.arguments);
        configure("LAUNCH_MODE=ri");
        set_environment("JVM_HOME", here(row.home));
        expect_java_of(row.home, row.arguments);
    }
}

// Beside the real one, in the current folder, and first on PATH.
TEST_F(other_programs, are_not_found_by_name) {
    put_decoys("C:\\J\\bin\\", {"java", "java.exe.exe", "java.com", "java.bat", "java.cmd", "java.exe.com"});
    for (const char *folder : {"C:\\work\\", "C:\\work\\bin\\", "C:\\work\\J\\bin\\", "C:\\path\\"}) {
        put_decoys(folder, {"java.exe", "java", "java.com", "C.exe", "cmd.exe"});
    }
    const std::string old_path = std::getenv("PATH");
    set_environment("PATH", to_text(on_disk("C:\\path")) + (on_windows ? ";" : ":") + old_path);
    expect_java_of("C:\\J", {"java", "java.exe", "cmd.exe", "/c"});
    set_environment("PATH", old_path);
}

// The launcher's own name is the name below the home.
TEST_F(other_programs, are_not_named_by_odd_names) {
    put_decoys("C:\\", {"J\\bin\\my.exe", "J\\bin\\my", "work\\my.exe", "work\\x.exe"});
    for (const std::string name :
         {"my java.exe", "java", "my java", "java.exe.exe", "java.old", "x;calc.exe", "&x.exe", "-jar", "'x'.exe"}) {
        put_launcher("C:\\L\\bin\\" + name);
        put_java("C:\\J\\bin\\" + name);
        EXPECT_EQ(run_launcher("C:\\L\\bin\\" + name, {"x.exe"}).output, report("C:\\J\\bin\\" + name, {"x.exe"}));
        fs::remove(on_disk("C:\\J\\bin\\" + name));
        EXPECT_EQ(run_launcher("C:\\L\\bin\\" + name, {}).output, invalid_command("C:\\J\\bin\\" + name));
    }

    configure("LAUNCH_MODE=ri");
    put_decoys("C:\\", {"J.exe", "J 1.exe"});
    for (const std::string home : {"C:\\J\" x", "\"C:\\J\"", "\"C:\\J 1\"", "C:\\J\tx", "C:\\J*", "C:\\J?", "C:\\J|x",
                                   "C:\\<J>", "C:\\J\nx", "C:\\J 1\\\"C:\\J"}) {
        SCOPED_TRACE(home);
        if (!on_windows && home[0] != '"') {
            put_java(home + "\\bin\\java.exe");
        }
        set_environment("JVM_HOME", here(home));
        const outcome result = run_launcher(LAUNCHER, {});
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.status, STATUS_MINUS_1);
    }
}
