#include "tests/platform/sandbox.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

static std::filesystem::path drive;

void enter_sandbox() {
    char name[] = "/tmp/qvl_platform_XXXXXX";
    if (mkdtemp(name) == nullptr) {
        abort();
    }
    drive = std::filesystem::canonical(name);
    setenv("QVL_HOST_DRIVE_C", drive.c_str(), 1);
    std::filesystem::create_directory(drive / "qvl_test");
    std::filesystem::current_path(drive / "qvl_test");
}

void leave_sandbox() {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(drive);
}

const char *own_file() {
    return "/proc/self/exe";
}

void start_apart(const char *argument) {
    if (vfork() == 0) {
        execl(own_file(), "apart", argument, nullptr);
        _exit(EXIT_FAILURE);
    }
}
