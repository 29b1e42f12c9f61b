#include "core/native_invocation.h"

#include <cctype>
#include <cstdlib>

#include "core/configuration.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "platform/files.h"

namespace {

bool trace_presence(const text_ptr &path, entry_kind wanted) {
    const bool is_present = kind_of(path.get()) == wanted;
    JLI_TraceLauncher(is_present ? "%s is present\n" : "%s is NOT present\n", path.get());
    return is_present;
}

bool has_java_9_layout(const char *home) {
    return trace_presence(format_text("%s\\lib\\jrt-fs.jar", home), entry_kind::file) &&
           trace_presence(format_text("%s\\legal\\java.base", home), entry_kind::directory);
}

const char *version_text(int is_java_9_plus) {
    return is_java_9_plus ? "9+" : "8-";
}

void init_host_version() {
    JLI_TraceLauncher("DETERMINING HOST JVM VERSION:\n");
    JLI_TraceLauncher("-----------------------------\n");
    if (has_java_9_layout(jvm_home)) {
        is_host_java_9_plus = 1;
    }
    JLI_TraceLauncher("Host JVM is Java %s\n", version_text(is_host_java_9_plus));
    JLI_TraceLauncher("\n");
}

void init_guest_version() {
    JLI_TraceLauncher("DETERMINING GUEST JAVA VERSION:\n");
    JLI_TraceLauncher("-------------------------------\n");
    if (has_java_9_layout(container_home)) {
        is_guest_java_9_plus = 1;
    }
    if (current_launch_mode().runs_container()) {
        JLI_TraceLauncher("Guest JVM is Java %s\n", version_text(is_guest_java_9_plus));
    }
}

} // namespace

void initialize_jlp_for_native_invocation(const char *library_path, int32_t) {
    native_jvm_bits = 64;
    init_launcher_home_from_library_path(library_path);
    load_config_file();
    init_host_and_guest_versions();
}

void init_launcher_home_from_library_path(const char *library_path) {
    const text_ptr lower_case = copy_text(library_path);
    for (char *c = lower_case.get(); *c != '\0'; c++) {
        *c = static_cast<char>(tolower(static_cast<unsigned char>(*c)));
    }
    const size_t length = std::string_view(lower_case.get()).rfind(jni_lib_path);
    if (length == std::string_view::npos) {
        print_text(stderr,
                   format_text("Error: failed to identify launcher_home in library path: %s\n",
                               library_path));
        exit(1);
    }
    assign_text(&launcher_home, {library_path, length});
    is_native_invocation = 1;
    os_name = "Windows";
}

void init_host_and_guest_versions() {
    if (jvm_home != nullptr && is_directory(jvm_home)) {
        init_host_version();
    }
    if (container_home != nullptr && is_directory(container_home)) {
        init_guest_version();
    }
}

void reset_jlp_for_native_invocation() {
    if (!is_native_invocation) {
        return;
    }
    release_entries(processedArg, &processedArgCount);
    rhs_count = 0;
    lhs_count = 0;
}
