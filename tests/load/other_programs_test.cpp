// No other program: whatever stands in the way, the launcher starts the java.exe of the home or none.
// Every decoy is a stand-in, which would report its own path.

#include "tests/support/world.h"

namespace {

class other_programs : public launcher {};

void put_decoys(const texts &windows_paths) {
    for (const std::string &path : windows_paths) {
        put_java(path);
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
        {"C:\\K 1", {"C:\\K.exe", "C:\\work\\1\\bin\\java.exe", "C:\\K 1\\bin\\java"}, {}},
        {"C:\\K 1 2 (x)", {"C:\\K", "C:\\K 1.exe", "C:\\K 1 2"}, {"(x)\\bin\\java.exe"}},
        {"C:\\K  1", {"C:\\K.exe", "C:\\K .exe", "C:\\K 1\\bin\\java.exe"}, {}},
        {"C:\\K x\\y z", {"C:\\K", "C:\\K x\\y.exe", "C:\\K x\\y"}, {}},
        {"C:\\-K&x^%PATH%;y", {"C:\\-K", "C:\\-K.exe", "C:\\work\\x.exe"}, {"&", "calc.exe"}},
        {"C:\\K2",
         {"C:\\K2.exe", "C:\\K2\\bin\\java.exe 1.exe", "C:\\K2\\bin\\java.exe 1\\x.exe", "C:\\x.exe"},
         {"1\\x.exe", "..\\..\\..\\x.exe"}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.home);
        SetUp();
        put_decoys(row.decoys);
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
    for (const char *name : {"java", "java.exe.exe", "java.com", "java.bat", "java.cmd", "java.exe.com"}) {
        put_java(std::string("C:\\J\\bin\\") + name);
    }
    for (const char *folder : {"C:\\work\\", "C:\\work\\bin\\", "C:\\work\\J\\bin\\", "C:\\path\\"}) {
        for (const char *name : {"java.exe", "java", "java.com", "C.exe", "cmd.exe"}) {
            put_java(std::string(folder) + name);
        }
    }
    const std::string old_path = std::getenv("PATH");
    set_environment("PATH", to_text(on_disk("C:\\path")) + (on_windows ? ";" : ":") + old_path);
    expect_java_of("C:\\J", {"java", "java.exe", "cmd.exe", "/c"});
    set_environment("PATH", old_path);
}

// The launcher's own name is the name below the home. What Windows refuses in a name is no name.
TEST_F(other_programs, are_not_named_by_odd_names) {
    put_decoys({"C:\\J\\bin\\my.exe", "C:\\J\\bin\\my", "C:\\work\\my.exe", "C:\\work\\x.exe"});
    for (const std::string name :
         {"my java.exe", "java", "my java", "java.exe.exe", "java.old", "x;calc.exe", "&x.exe", "-jar", "'x'.exe"}) {
        put_launcher("C:\\L\\bin\\" + name);
        put_java("C:\\J\\bin\\" + name);
        EXPECT_EQ(run_launcher("C:\\L\\bin\\" + name, {"x.exe"}).output, report("C:\\J\\bin\\" + name, {"x.exe"}));
        fs::remove(on_disk("C:\\J\\bin\\" + name));
        EXPECT_EQ(run_launcher("C:\\L\\bin\\" + name, {}).output, invalid_command("C:\\J\\bin\\" + name));
    }

    // No such name can be made on Windows.
    for (const std::string name : {"x\"y.exe", "x\ty.exe", "*.exe"}) {
        if (!on_windows) {
            put_launcher("C:\\L\\bin\\" + name);
            put_decoys({"C:\\J\\bin\\" + name, "C:\\J\\bin\\x.exe"});
            const outcome result = run_launcher("C:\\L\\bin\\" + name, {});
            EXPECT_EQ(result.output.rfind("Error: java executable path either doesn't exist or is invalid: ", 0), 0u);
            EXPECT_EQ(result.status, 1u);
        }
    }

    configure("LAUNCH_MODE=ri");
    put_decoys({"C:\\J.exe", "C:\\J 1.exe"});
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
