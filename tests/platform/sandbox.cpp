#include "tests/platform/sandbox.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

void write_file(const char *path, std::string_view bytes) {
    FILE *file = fopen(path, "wb");
    if (file == nullptr || fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size() ||
        fclose(file) != 0) {
        perror(path);
        abort();
    }
}

void enter_sandbox() {
    if (!enter_empty_folder()) {
        abort();
    }
    std::filesystem::create_directories("d/e");
    std::filesystem::current_path("d");
    write_file("../f", "");
    write_file("g.txt", "");
}

void leave_sandbox() {
    remove_folder();
}
