// What Windows itself does; what Wine does not is passed over there. docs/windows.md and docs/javaw.md tell users.

#include <sys/stat.h>

#include "platform/windows_services.h"
#include "tests/support/world.h"

namespace {

bool is_wine() {
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
}

uint32_t start_it(const std::string &windows_path, const texts &arguments, unsigned flags) {
    return start({on_disk(windows_path), arguments, on_disk("C:\\work"), {.flags = flags}});
}

bool holds(const std::string &text, const std::string &piece) {
    return text.find(piece) != std::string::npos;
}

} // namespace

// Programs that resolve paths start it so; the runtime's stat() of Windows, not Wine's, knows no such path.
TEST_F(launcher, takes_a_resolved_path_for_its_own) {
    const std::string path = "\\\\?\\" + to_text(on_disk(LAUNCHER));
    struct stat found;
    EXPECT_TRUE(is_wine() || stat(path.c_str(), &found) != 0);
    for (const char *home : {"C:\\J", "C:\\L"}) {
        configure("LAUNCH_MODE=ri\nSHOW_START=true\nJVM_HOME=" + std::string(home));
        const outcome result = end_of_launcher(start({path, {}, on_disk("C:\\work")}));
        EXPECT_TRUE(holds(result.output, here("executable_file_path = C:\\L\\bin\\java.exe\n"))) << result.output;
        EXPECT_EQ(result.status, home[3] == 'J' ? 0u : STATUS_MINUS_1);
    }
}

// Wine without a terminal has no console to send the event from.
TEST_F(launcher, ends_by_ctrl_c_when_its_program_is_on_no_console) {
    if (is_wine()) {
        GTEST_SKIP() << "passed over: Wine does otherwise";
    }
    constexpr unsigned NEW_GROUP = 0x200;
    put_launcher("C:\\L\\bin\\javaw.exe");
    put_program("stand_in_javaw.exe", "C:\\J\\bin\\javaw.exe");
    const uint32_t id = start_it("C:\\L\\bin\\javaw.exe", {hold_order("C:\\work")}, NEW_GROUP);
    ASSERT_TRUE(comes_true([] { return process_id_in("C:\\work\\held") != 0; }));
    const uint32_t child = process_id_in("C:\\work\\held");
    if (!GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, id)) {
        end_by_force(id);
    }
    EXPECT_EQ(wait_for_end(id), 0xC000013A);
    EXPECT_TRUE(comes_true([&] { return !is_running(child); }));
}

TEST_F(launcher, gives_a_program_a_console_unless_the_start_is_transparent) {
    EXPECT_EQ(end_of_launcher(start_it(LAUNCHER, {"start"}, DETACHED_PROCESS)).output, "");
    configure("LAUNCH_MODE=ri\nTRANSPARENT=true\nJVM_HOME=C:\\J\n");
    const outcome result = end_of_launcher(start_it(LAUNCHER, {"start"}, DETACHED_PROCESS));
    EXPECT_TRUE(holds(result.output, "no console")) << result.output << result.errors;
}

TEST_F(launcher, javaw_hands_on_streams_and_status_without_a_console) {
    put_program("javaw.exe", "C:\\L\\bin\\javaw.exe");
    put_program("stand_in_javaw.exe", "C:\\J\\bin\\javaw.exe");
    for (const char *key : {"", "TRANSPARENT=true\n"}) {
        configure(std::string("LAUNCH_MODE=ri\nJVM_HOME=C:\\J\n") + key);
        const outcome result = run_launcher("C:\\L\\bin\\javaw.exe", {"start", "exit=7"});
        EXPECT_EQ(result.status, 7u);
        EXPECT_TRUE(holds(result.output, "no console")) << result.output << result.errors;
    }
}
