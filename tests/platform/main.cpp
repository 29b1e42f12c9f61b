#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/platform/child_program.h"
#include "tests/platform/sandbox.h"

void write_file(const char *path, std::string_view bytes) {
    FILE *file = fopen(path, "wb");
    if (file == nullptr || fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size() || fclose(file) != 0) {
        perror(path);
        abort();
    }
}

int main(int argc, char **argv) {
    if (const char *role = getenv("QVL_CHILD"); role != nullptr) {
        return play_role(role, argc, argv);
    }
    // The current directory of all tests: C:\qvl_test\d with the folder e and the file g.txt; f
    // stands beside it.
    enter_sandbox();
    std::filesystem::create_directories("d/e");
    std::filesystem::current_path("d");
    write_file("../f", "");
    write_file("g.txt", "");
    testing::InitGoogleTest(&argc, argv);
    int result = RUN_ALL_TESTS();
    leave_sandbox();
    return result;
}
