// Surroundings that go wrong while the launcher runs: who started it, its output, its log.

#include <regex>

#include "tests/support/world.h"

namespace {

const std::string RI = "LAUNCH_MODE=ri\nJVM_HOME=C:\\J\nSHOW_START=true\nLOG_FILE_OR_DIR=";

class surroundings : public launcher {};

std::string text_of(const std::string &windows_path) {
    return read_file(on_disk(windows_path));
}

// A start's output without what the next start has otherwise.
std::string lasting_part(const outcome &result) {
    EXPECT_TRUE(is_traced(result.output)) << result.output;
    return without_child_id(after_banner(result));
}

} // namespace

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
    let_go("C:\\work");
    const std::string expected = report(JAVA, {hold, "exit=3"}, "C:\\work\\run") + invalid_command(JAVA);
    EXPECT_TRUE(comes_true([&] { return text_of("C:\\work\\run\\out") == expected; })) << text_of("C:\\work\\run\\out");
    EXPECT_FALSE(is_running(child));
}

TEST_F(surroundings, its_log_takes_nothing) {
    const texts orders = {"-cp", "a.jar", "exit=4"};
    configure(RI + "Z:\\dev\\full");
    const outcome full = run_launcher(LAUNCHER, orders);
    configure(RI + "C:\\a.log");
    const outcome sound = run_launcher(LAUNCHER, orders);
    const std::string expected =
        std::regex_replace(lasting_part(sound), std::regex(R"((log_file_path: +).*)"), "$1Z:\\dev\\full");
    EXPECT_EQ(lasting_part(full), expected);
    EXPECT_EQ(full.errors, "");
    EXPECT_EQ(full.status, 4u);
}
