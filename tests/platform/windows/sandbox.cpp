#include "tests/platform/sandbox.h"

#include <process.h>
#include <stdlib.h>

#include <filesystem>

static constexpr char FOLDER[] = "C:\\qvl_test";

bool enter_empty_folder() {
    std::error_code error;
    std::filesystem::remove_all(FOLDER, error);
    std::filesystem::create_directory(FOLDER, error);
    std::filesystem::current_path(FOLDER, error);
    return !error;
}

void remove_folder() {
    std::error_code error;
    std::filesystem::current_path("C:\\", error);
    std::filesystem::remove_all(FOLDER, error);
}

const char *own_file() {
    return _pgmptr;
}

void start_apart(const char *argument) {
    _spawnl(_P_NOWAIT, own_file(), "apart", argument, nullptr);
}
