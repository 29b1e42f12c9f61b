#include "tests/rewriting/plain_walk.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "core/config_text.h"
#include "core/state_text.h"
#include "platform/files.h"
#include "platform/windows_services.h"

namespace {

char upper_case_drive(const std::string &path) {
    const bool has_drive = path.size() > 1 && path[1] == ':';
    return has_drive ? static_cast<char>(toupper(static_cast<unsigned char>(path[0]))) : '\0';
}

std::string full_path(const std::string &path) {
    static std::array<char, TEXT_SIZE> buffer;
    buffer[0] = '\0';
    GetFullPathNameA(path.c_str(), TEXT_SIZE, buffer.data(), nullptr);
    return buffer.data();
}

} // namespace

plain_walk walk_plainly(const std::string &old_path) {
    plain_walk walk;
    std::string path = old_path;
    walk.trace = "RESOLVE PATH:\n-------------\n   old_path: " + path + "\n";
    if (path.find('/') != std::string::npos) {
        walk.trace += "   old_path_copy contains forward slashes:      " + path + "\n";
        std::replace(path.begin(), path.end(), '/', '\\');
        walk.trace += "   old_path_copy with forward slashes replaced: " + path + "\n";
    }
    const std::string current = text_ptr(current_directory()).get();
    if (is_path_relative(path.c_str())) {
        walk.trace += "   cwd = " + current + "\n";
        path = current + "\\" + path;
    }
    const bool is_elsewhere = upper_case_drive(path) != upper_case_drive(current);
    int number = 0;
    for (size_t at = path.find('\\'); at != std::string::npos; number++) {
        const size_t next = path.find('\\', at + 1);
        const std::string component = path.substr(at + 1, next - at - 1);
        at = next;
        walk.trace += "   path_component[" + std::to_string(number) + "] = " + component + "\n";
        walk.absolute += number == 0 && is_elsewhere ? path.substr(0, 2) : "";
        walk.absolute += "\\" + component;
        walk.trace += "       path_prefix = " + walk.absolute + "\n";
        walk.queries++;
        if (kind_of(walk.absolute.c_str()) != entry_kind::missing) {
            walk.existing.insert(walk.absolute);
            walk.absolute = full_path(walk.absolute);
            walk.trace += "       path_prefix_resolved = " + walk.absolute + "\n";
        }
    }
    walk.trace += "   old_path_abs: " + walk.absolute + "\n\n";
    return walk;
}
