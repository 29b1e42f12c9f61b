// No library is loaded from the current folder or from PATH.

#include "platform/windows_services.h"
#include "tests/support/world.h"

namespace {

// What the launcher imports, and what programs of its kind are known to load besides.
const char *const LIBRARIES[] = {"kernel32.dll",       "kernelbase.dll",  "ntdll.dll",           "msvcrt.dll",
                                 "ucrtbase.dll",       "advapi32.dll",    "sechost.dll",         "apphelp.dll",
                                 "version.dll",        "cryptbase.dll",   "cryptsp.dll",         "rsaenh.dll",
                                 "user32.dll",         "imm32.dll",       "shell32.dll",         "vcruntime140.dll",
                                 "libgcc_s_seh-1.dll", "libstdc++-6.dll", "libwinpthread-1.dll", "libssp-0.dll"};

} // namespace

TEST_F(launcher, loads_no_library_from_the_current_folder_or_from_path) {
    configure("LAUNCH_MODE=ri\nJVM_HOME=C:\\J\nSHOW_START=true\nLOG_FILE_OR_DIR=a.log\n");
    for (const char *folder : {"C:\\work\\", "C:\\path\\"}) {
        for (const char *library : LIBRARIES) {
            put_program("planted.dll", std::string(folder) + library);
        }
    }
    const std::string old_path = std::getenv("PATH");
    set_environment("PATH", here("C:\\path;") + old_path);
    for (const char *order : {"exit=0", "exit=9"}) {
        const outcome result = run_launcher(LAUNCHER, {order});
        EXPECT_NE(result.output.find(report(JAVA, {order})), std::string::npos) << result.output;
        EXPECT_EQ(result.status, order[5] - '0' + 0u);
    }
    for (const char *folder : {"C:\\work\\", "C:\\path\\"}) {
        for (const char *library : LIBRARIES) {
            EXPECT_FALSE(fs::exists(on_disk(std::string(folder) + library + ".loaded"))) << library;
        }
    }

    // That it leaves a mark: by its path, and by its name from PATH.
    put_program("planted.dll", "C:\\path\\only_planted.dll");
    FreeLibrary(LoadLibraryA(here("C:\\work\\libssp-0.dll").c_str()));
    FreeLibrary(LoadLibraryA("only_planted.dll"));
    set_environment("PATH", old_path);
    EXPECT_TRUE(fs::exists(on_disk("C:\\work\\libssp-0.dll.loaded")));
    EXPECT_TRUE(fs::exists(on_disk("C:\\path\\only_planted.dll.loaded")));
}
