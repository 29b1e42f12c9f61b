// A native host's start: the path of its JNI library, then launcher.cfg below the launcher home that the path
// names, then the Java versions of the homes. The parts of the input are
//     the path, in which "*" is the library's name; what is missing on the disk; launcher.cfg

#include <algorithm>
#include <cstring>

#include "core/jlp_utils.h"
#include "fuzz/made_up_world.h"
#include "platform/files.h"

namespace {

enum part { PATH, MISSING, CONFIG, PARTS };

constexpr std::string_view LIBRARY = "\\JNI\\QvlJni.DLL";

bool is_java_9_plus(const std::string &home) {
    return is_directory(home.c_str()) && is_file((home + "\\lib\\jrt-fs.jar").c_str()) &&
           is_directory((home + "\\legal\\java.base").c_str());
}

void check_start(const std::string &home) {
    assert(launcher_home == home && strcmp(launch_mode, "advanced") == 0 && use_advanced_launch_mode == 1);
    assert((is_host_java_9_plus != 0) == is_java_9_plus(jvm_home));
    assert((is_guest_java_9_plus != 0) == is_java_9_plus(container_home));
    assert(launcher_path_arg == "-Dcom.quorvel.LauncherPackPath=" + home);
    assert(world.logged == (LOG_FILE_FD != nullptr ? world.shown : "") && world.complained.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::vector<std::string> parts = split_input(data, size, PARTS);
    std::string path = parts[PATH], lower_case;
    for (size_t at = 0; (at = path.find('*', at)) != std::string::npos;) {
        path.replace(at, 1, LIBRARY);
    }
    std::ranges::transform(path, std::back_inserter(lower_case), [](unsigned char c) { return tolower(c); });
    const size_t home_size = lower_case.rfind("\\jni\\qvljni.dll");
    world = {.missing = parts[MISSING], .config = parts[CONFIG]};
    run_product([&] { initialize_jlp_for_native_invocation(path.c_str(), 0); });
    if (!world.status) {
        check_start(path.substr(0, home_size));
    }
    const std::string fault = "Error: failed to identify launcher_home in library path: " + path + "\n";
    assert((world.complained == fault) == (home_size == std::string::npos));
    return 0;
}
