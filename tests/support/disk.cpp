#include "tests/support/disk.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace {

const fs::path &root() {
    static const fs::path folder = fs::current_path() / "disk";
    return folder;
}

} // namespace

std::string replaced(std::string text, const std::string &from, const std::string &to) {
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// What a process that has just ended had open may be closed a moment later.
void make_disk() {
    std::error_code error;
    for (int tries = 0; tries == 0 || (error && tries < 100); tries++) {
        usleep(tries == 0 ? 0 : 50000);
        error.clear();
        fs::remove_all(root(), error);
    }
    fs::create_directories(root());
    static std::string drive = "QVL_HOST_DRIVE_C=" + to_text(root());
    putenv(drive.data());
}

// What is of this disk already, which may lie on the real drive C, stays.
std::string here(std::string text) {
    const std::string drive = "C:\\", folder = to_text(root()) + "\\";
    return on_windows ? replaced(replaced(std::move(text), folder, drive), drive, folder) : text;
}

fs::path on_disk(const std::string &windows_path) {
    const std::string path = windows_path.substr(3);
    return root() / to_path(on_windows ? path : replaced(path, "\\", "/"));
}

void put_file(const std::string &windows_path, const std::string &content) {
    const fs::path file = on_disk(windows_path);
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

void put_folder(const std::string &windows_path) {
    fs::create_directories(on_disk(windows_path));
}

std::string read_bytes(const fs::path &file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string read_file(const fs::path &file) {
    const std::string text = read_bytes(file);
    return on_windows ? replaced(text, "\r\n", "\n") : text;
}
