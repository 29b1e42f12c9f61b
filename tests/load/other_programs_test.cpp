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

// What Windows refuses in a name is no name.
TEST_F(other_programs, are_not_named_by_odd_names) {
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
