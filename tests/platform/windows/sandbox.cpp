#include "tests/platform/sandbox.h"

#include <process.h>
#include <stdlib.h>

#include <filesystem>

static constexpr char FOLDER[] = "C:\\qvl_test";

void enter_sandbox() {
    std::filesystem::remove_all(FOLDER);
    std::filesystem::create_directory(FOLDER);
    std::filesystem::current_path(FOLDER);
}

void leave_sandbox() {
    std::filesystem::current_path("C:\\");
    std::filesystem::remove_all(FOLDER);
}

const char *own_file() {
    return _pgmptr;
}

void start_apart(const char *argument) {
    _spawnl(_P_NOWAIT, own_file(), "apart", argument, nullptr);
}
