// What Windows itself does; what Wine does not is passed over there. docs/windows.md and docs/javaw.md tell users.

#include <sys/stat.h>

#include "platform/windows_services.h"
#include "tests/support/world.h"

namespace {

FARPROC service_of_ntdll(const char *name) {
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), name);
}

bool is_wine() {
    return service_of_ntdll("wine_get_version") != nullptr;
}

DWORD windows_build() {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    reinterpret_cast<LONG(WINAPI *)(OSVERSIONINFOW *)>(reinterpret_cast<void *>(service_of_ntdll("RtlGetVersion")))(
        &version);
    return version.dwBuildNumber;
}

uint32_t start_it(const std::string &windows_path, const texts &arguments, unsigned flags) {
    return start({on_disk(windows_path), arguments, on_disk("C:\\work"), {.flags = flags}});
}

bool holds(const std::string &text, const std::string &piece) {
    return text.find(piece) != std::string::npos;
}

class real_windows : public launcher {
    void SetUp() override {
        if (is_wine()) {
            GTEST_SKIP() << "passed over: Wine does otherwise";
        }
        launcher::SetUp();
    }
};

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
TEST_F(real_windows, ends_a_launcher_by_ctrl_c_whose_program_is_on_no_console) {
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

// Wine heeds the manifest's code page whatever Windows it plays.
TEST_F(real_windows, reads_utf8_from_1903_on) {
    const bool is_utf8 = windows_build() >= 18362;
    EXPECT_EQ(GetACP() == CP_UTF8, is_utf8);
    fs::create_directories(on_disk("C:\\日本\\bin"));
    fs::copy_file(on_disk(JAVA), on_disk("C:\\日本\\bin\\java.exe"));
    configure("LAUNCH_MODE=ri\nTRANSPARENT=true\nJVM_HOME=C:\\日本\n");
    const outcome result = run_launcher(LAUNCHER, {});
    EXPECT_EQ(result.status, is_utf8 ? 0 : STATUS_MINUS_1) << result.errors;
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
