// What stands in the launcher's way: paths that can be read in two ways, and surroundings that go wrong while it runs.

#include <regex>

#include "tests/support/world.h"

namespace {

class surroundings : public launcher {};

void expect_java_of(const std::string &home, const texts &arguments) {
    const outcome result = run_launcher(LAUNCHER, arguments);
    EXPECT_EQ(result.output, report(home + "\\bin\\java.exe", arguments));
    EXPECT_EQ(result.status, 0u);
}

// A start's output without what the next start has otherwise.
std::string lasting_part(const outcome &result) {
    EXPECT_TRUE(is_traced(result.output)) << result.output;
    return without_child_id(after_banner(result));
}

} // namespace

// Every decoy is a stand-in, which would report its own path. Shorter and longer readings of an unquoted path, from the
// configuration and from the environment.
TEST_F(surroundings, other_programs_are_not_read_out_of_a_path) {
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
        for (const std::string &decoy : row.decoys) {
            put_java("C:\\" + decoy);
        }
        put_java(row.home + "\\bin\\java.exe");
        configure("LAUNCH_MODE=ri\nJVM_HOME=" + row.home);
        expect_java_of(row.home, row.arguments);
        configure("LAUNCH_MODE=ri");
        set_environment("JVM_HOME", here(row.home));
        expect_java_of(row.home, row.arguments);
    }
}

// 259 is also what Windows calls a process that has not ended.
TEST_F(surroundings, every_bit_of_the_exit_code_comes_back) {
    for (const uint32_t code : {7u, 255u, 256u, 259u, 0x7FFFFFFFu, 0xC0000005u, 0xFFFFFFFFu}) {
        const std::string order = "exit=" + std::to_string(code);
        EXPECT_EQ(run_launcher(LAUNCHER, {order}).status, on_windows ? code : code % 256) << code;
    }
}

// The launcher's last line, after the child's own, shows that it has waited to the end.
TEST_F(surroundings, whoever_started_it_is_killed) {
    put_folder("C:\\work\\run");
    const std::string hold = hold_order("C:\\work");
    const uint32_t parent =
        start_launcher("C:\\C\\bin\\java.exe", {"run=" + to_text(on_disk(LAUNCHER)), hold, "exit=3"});
    ASSERT_TRUE(comes_true([] { return process_id_in("C:\\work\\held") != 0; }));
    const uint32_t child = process_id_in("C:\\work\\held");
    end_by_force(parent);
    wait_for_end(parent);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_TRUE(is_running(child));
    fs::remove(on_disk("C:\\work\\held"));
    const std::string expected = report(JAVA, {hold, "exit=3"}, "C:\\work\\run") + invalid_command(JAVA);
    EXPECT_TRUE(comes_true([&] { return read_file(on_disk("C:\\work\\run\\out")) == expected; }))
        << read_file(on_disk("C:\\work\\run\\out"));
    EXPECT_FALSE(is_running(child));
}

TEST_F(surroundings, its_log_takes_nothing) {
    const texts orders = {"-cp", "a.jar", "exit=4"};
    const std::string ri = "LAUNCH_MODE=ri\nJVM_HOME=C:\\J\nSHOW_START=true\nLOG_FILE_OR_DIR=";
    configure(ri + "Z:\\dev\\full");
    const outcome full = run_launcher(LAUNCHER, orders);
    configure(ri + "C:\\a.log");
    const outcome sound = run_launcher(LAUNCHER, orders);
    const std::string expected =
        std::regex_replace(lasting_part(sound), std::regex(R"((log_file_path: +).*)"), "$1Z:\\dev\\full");
    EXPECT_EQ(lasting_part(full), expected);
    EXPECT_EQ(full.errors, "");
    EXPECT_EQ(full.status, 4u);
}
