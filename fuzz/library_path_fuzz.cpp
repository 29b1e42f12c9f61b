// A native host's start: the path of its JNI library, then launcher.cfg below the launcher home that the path
// names, then the Java versions of the homes. The parts of the input are
//     the path, in which "*" and "^" are the library's name in small and in capital letters; what is missing on the
//     disk; what is turned on it; launcher.cfg

#include <cstring>
#include <strings.h>

#include "core/jlp_utils.h"
#include "fuzz/product_run.h"

namespace {

enum part { PATH, MISSING, TURNED, CONFIG, PARTS };

constexpr std::string_view LIBRARY = "\\jni\\qvljni.dll";

std::string library_path(const std::string &form) {
    std::string path;
    for (const char c : form) {
        path += c == '*' ? LIBRARY : c == '^' ? "\\JNI\\QvlJni.DLL" : std::string_view(&c, 1);
    }
    return path;
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

int is_java_9_plus(const std::string &home) {
    return is_directory(home.c_str()) && is_file((home + "\\lib\\jrt-fs.jar").c_str()) &&
           is_directory((home + "\\legal\\java.base").c_str());
}

void check_start(const std::string &home) {
    assert(launcher_home == home && (world.last_read.empty() || world.last_read == home + "\\launcher.cfg"));
    assert(is_native_invocation == 1 && native_jvm_bits == 64 && strcmp(os_name, "Windows") == 0);
    assert(strcmp(launch_mode, "advanced") == 0 && use_advanced_launch_mode == 1);
    assert(is_host_java_9_plus == is_java_9_plus(jvm_home));
    assert(is_guest_java_9_plus == is_java_9_plus(container_home));
    assert(launcher_path_arg == "-Dcom.quorvel.LauncherPackPath=" + home);
    assert(processedArgCount == 1);
    reset_jlp_for_native_invocation();
    assert(processedArgCount == 0 && processedArg[0] == nullptr);
}

void check_exit(const std::string &path, size_t library_at, int status) {
    const std::string_view complaint = product.complained;
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
    const std::vector<std::string> parts = split_input(data, size, PARTS);
    const std::string path = library_path(parts[PATH]);
    const size_t library_at = find_library(path);
    world = {};
    world.missing = parts[MISSING];
    world.turned = parts[TURNED];
    world.config = parts[CONFIG];
    const auto check = [&] {
        if (product.by_exit) {
            check_exit(path, library_at, product.status);
        } else {
            assert(library_at != std::string::npos && product.complained.empty());
            check_start(path.substr(0, library_at));
        }
        assert(JLI_IsTraceLauncher() || product.shown.empty());
        assert(product.logged == (world.has_log ? product.shown : ""));
    };
    run_product([&] { initialize_jlp_for_native_invocation(path.c_str(), 0); }, check);
    return 0;
}
