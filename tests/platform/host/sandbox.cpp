#include "tests/platform/sandbox.h"

#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>

static char drive[] = "/tmp/qvl_platform_XXXXXX";

bool enter_empty_folder() {
    char canonical[PATH_MAX];
    return mkdtemp(drive) != nullptr && realpath(drive, canonical) != nullptr &&
           setenv("QVL_HOST_DRIVE_C", canonical, 1) == 0 &&
           std::filesystem::create_directory(std::string(drive) + "/qvl_test") &&
           chdir((std::string(drive) + "/qvl_test").c_str()) == 0;
}

void remove_folder() {
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
