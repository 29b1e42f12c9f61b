// A native host's start: the path of its JNI library, then launcher.cfg below the launcher home that the path
// names, then the Java versions of the homes. Null bytes part the input into
//     letters of the library's name that are capitals, a bit each, or nothing for a path without it;
//     what stands before the name; what stands behind it; launcher.cfg
// On the made-up disk no entry exists that holds "!", and no lib\jrt-fs.jar below a folder "8".

#include <cctype>
#include <cstring>
#include <strings.h>

#include "core/jlp_utils.h"
#include "fuzz/product_run.h"
#include "platform/files.h"

namespace {

enum part { CAPITALS, BEFORE, BEHIND, CONFIG, PARTS };
std::vector<std::string> parts;
std::string expected_home;

constexpr std::string_view LIBRARY = "\\jni\\qvljni.dll";

std::string library_path() {
    std::string path = parts[BEFORE];
    for (size_t i = 0; !parts[CAPITALS].empty() && i < LIBRARY.size(); i++) {
        const unsigned byte = static_cast<unsigned char>(parts[CAPITALS][i / 8 % parts[CAPITALS].size()]);
        path += static_cast<char>((byte >> i % 8) % 2 != 0 ? toupper(LIBRARY[i]) : LIBRARY[i]);
    }
    return path + parts[BEHIND];
}

// Where the last name of the library begins, or npos.
size_t find_library(const std::string &path) {
    for (size_t at = path.size(); at-- > 0;) {
        if (strncasecmp(path.c_str() + at, LIBRARY.data(), LIBRARY.size()) == 0) {
            return at;
        }
    }
    return std::string::npos;
}

entry_kind kind_on_disk(std::string_view path) {
    if (path.empty() || path.find('!') != std::string_view::npos || !is_possible_path(path) ||
        path.find("\\8\\lib") != std::string_view::npos) {
        return entry_kind::missing;
    }
    const bool is_file =
        path.ends_with("\\legal\\java.base") ? path.find(" f") != std::string_view::npos : names_file(path);
    return is_file ? entry_kind::file : entry_kind::directory;
}

int is_java_9_plus(const std::string &home) {
    return kind_on_disk(home) == entry_kind::directory &&
           kind_on_disk(home + "\\lib\\jrt-fs.jar") == entry_kind::file &&
           kind_on_disk(home + "\\legal\\java.base") == entry_kind::directory;
}

} // namespace

extern "C" {
entry_kind __wrap__Z7kind_ofPKc(const char *path);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    return kind_on_disk(path);
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode) {
    if (strchr(path, '!') != nullptr) {
        return nullptr;
    }
    if (*mode == 'w') {
        return opened(fopen("/dev/null", mode));
    }
    assert(path == expected_home + "\\launcher.cfg");
    return open_content(parts[CONFIG]);
}
}

namespace {

void check_start() {
    assert(launcher_home == expected_home);
    assert(is_native_invocation == 1 && native_jvm_bits == 64 && strcmp(os_name, "Windows") == 0);
    assert(strcmp(launch_mode, "advanced") == 0 && use_advanced_launch_mode == 1);
    assert(is_host_java_9_plus == is_java_9_plus(jvm_home));
    assert(is_guest_java_9_plus == is_java_9_plus(container_home));
    assert(launcher_path_arg == "-Dcom.quorvel.LauncherPackPath=" + expected_home);
    assert(processedArgCount == 1);
    reset_jlp_for_native_invocation();
    assert(processedArgCount == 0 && processedArg[0] == nullptr);
}

void check_exit(const std::string &path, size_t library_at, int status) {
    const std::string_view complaint = printed.complained;
    if (library_at == std::string::npos) {
        assert(status == 1 && launcher_home == nullptr && is_native_invocation == 0);
        assert(complaint == "Error: failed to identify launcher_home in library path: " + path + "\n");
    } else if (status == 1) {
        assert(complaint.starts_with("Error: too many ") || complaint.starts_with("Error: text too long "));
    } else {
        assert(status == -1 && complaint.starts_with("Error! Could not open log_file_path: "));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const bool drives_are_known = [] {
        setenv("QVL_HOST_DRIVE_C", "/tmp", 1);
        free(current_directory());
        return true;
    }();
    assert(drives_are_known);
    parts = split_input(data, size, PARTS);
    parts[CONFIG] = parts[CONFIG].c_str();
    const std::string path = library_path();
    const size_t library_at = find_library(path);
    expected_home = path.substr(0, library_at);
    start_product();
    const product_end end = run_product([&] {
        initialize_jlp_for_native_invocation(path.c_str(), 0);
        check_start();
    });
    assert(end.by_exit || (library_at != std::string::npos && printed.complained.empty()));
    assert(JLI_IsTraceLauncher() || (printed.shown.empty() && printed.logged.empty()));
    assert(printed.logged.empty() || printed.logged == printed.shown);
    if (end.by_exit) {
        check_exit(path, library_at, end.status);
    }
    release_product();
    return 0;
}
