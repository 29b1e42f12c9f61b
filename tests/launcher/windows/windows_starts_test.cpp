// What only Windows starts have. docs/windows.md and docs/javaw.md tell users.

#include "platform/windows_services.h"
#include "tests/support/world.h"

namespace {

bool holds(const std::string &text, const std::string &piece) {
    return text.find(piece) != std::string::npos;
}

} // namespace

// Programs that resolve paths start it so; the runtime's stat() of Windows, not Wine's, knows no such path.
TEST_F(launcher, takes_a_resolved_path_for_its_own) {
    const std::string path = "\\\\?\\" + to_text(on_disk(LAUNCHER));
    for (const char *home : {"C:\\J", "C:\\L"}) {
        configure("LAUNCH_MODE=ri\nSHOW_START=true\nJVM_HOME=" + std::string(home));
        const outcome result = end_of_launcher(start({path, {}, on_disk("C:\\work")}));
        EXPECT_TRUE(holds(result.output, here("executable_file_path = C:\\L\\bin\\java.exe\n"))) << result.output;
        EXPECT_EQ(result.status, home[3] == 'J' ? 0u : STATUS_MINUS_1);
    }
}

TEST_F(launcher, gives_a_program_a_console_unless_the_start_is_transparent) {
    EXPECT_EQ(run_launcher(LAUNCHER, {"start"}, {.flags = DETACHED_PROCESS}).output, "");
    configure("LAUNCH_MODE=ri\nTRANSPARENT=true\nJVM_HOME=C:\\J\n");
    const outcome result = run_launcher(LAUNCHER, {"start"}, {.flags = DETACHED_PROCESS});
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
