#include "core/java_versions.h"

#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "jli/text.h"
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

void init_host_and_guest_versions() {
    if (jvm_home != nullptr && is_directory(jvm_home)) {
        init_host_version();
    }
    if (container_home != nullptr && is_directory(container_home)) {
        init_guest_version();
    }
}
