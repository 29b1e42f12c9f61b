#include "core/rewriting/agent_args.h"

#include <cstring>

#include "core/environment.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/processed_args.h"
#include "core/rewriting/java_options.h"
#include "core/state_arrays.h"
#include "jli/ending.h"
#include "jli/kept.h"
#include "jli/trace.h"
#include "platform/files.h"
#include "platform/windows_services.h"

namespace {

void append_to_lhs(text_ptr arg) {
    keep_until_release(arg.get());
    append_entry(lhs, &lhs_count, arg.release());
}

// The native agent of a native host: in the folder of the JVM's word size, or in the home itself.
text_ptr find_native_agent() {
    const char *folder = native_jvm_bits == 32 ? "\\windows-i586" : "\\windows-x64";
    text_ptr library = format_text("%s%s\\quorvel.dll", quorvel_home, folder);
    if (kind_of(library.get()) != entry_kind::missing) {
        return library;
    }
    JLI_TraceLauncher("Warning: Expected Quorvel native agent library, '%s', doesn't exist\n",
                      library.get());
    library = format_text("%s\\quorvel.dll", quorvel_home);
    JLI_TraceLauncher("         Trying Quorvel native agent library, '%s'\n", library.get());
    if (kind_of(library.get()) == entry_kind::missing) {
        end_with_fault(
            1, format_text("Error: Expected Quorvel native agent library, '%s', doesn't exist\n",
                           library.get()));
    }
    return library;
}

text_ptr native_agent_arg() {
    if (*quorvel_library_path != '\0') {
        return format_text(quotes_arguments_later ? "-agentpath:%s" : "-agentpath:\"%s\"",
                           quorvel_library_path);
    }
    if (is_native_invocation) {
        return format_text("-agentpath:%s", find_native_agent().get());
    }
    if (initialize_agentlib_env() == FAILURE) {
        end_process(1, "the library path could not be set");
    }
    return copy_text("-agentlib:quorvel");
}

bool set_traced(const char *name, const char *value) {
    if (SetEnvironmentVariableA(name, value)) {
        return true;
    }
    trace_fault(format_text("Error: Failed to set %%%s%%\n", name).get());
    return false;
}

text_ptr library_path_with_agents(const char *old_path) {
    const text_ptr i586 = format_text("%s\\windows-i586", quorvel_home);
    const text_ptr x64 = format_text("%s\\windows-x64", quorvel_home);
    if (strstr(old_path, quorvel_home) != nullptr && strstr(old_path, i586.get()) != nullptr &&
        strstr(old_path, x64.get()) != nullptr) {
        return copy_text(old_path);
    }
    return format_text("%s;%s;%s;%s", quorvel_home, i586.get(), x64.get(), old_path);
}

} // namespace

void add_agent_args() {
    const launch_mode_row &mode = current_launch_mode();
    if (mode.runs_container()) {
        append_to_lhs(format_text(are_arguments_whole() ? "-Dcom.quorvel.ContainerHome=%s"
                                                        : "\"-Dcom.quorvel.ContainerHome=%s\"",
                                  container_home));
        append_to_lhs(native_agent_arg());
    }
    if (mode.has_agents) {
        append_to_lhs(format_text(are_arguments_whole() ? "-javaagent:%s%s" : "-javaagent:\"%s%s\"",
                                  quorvel_home, slash_quorvel_jar));
    }
    if (use_advanced_launch_mode == 1) {
        place_constant({lhs, &lhs_count}, "quorvel.Container");
    }
}

int initialize_agentlib_env() {
    const text_ptr value = read_environment("Path");
    const char *old_path = value == nullptr ? "" : value.get();
    if (!set_traced("QUORVEL_ORIGINAL_LIBRARY_PATH", old_path)) {
        return FAILURE;
    }
    const text_ptr new_path = library_path_with_agents(old_path);
    if (!set_traced("Path", new_path.get())) {
        return FAILURE;
    }
    JLI_TraceLauncher("LIBRARY ENVIRONMENT SETTING:\n"
                      "----------------------------\n"
                      "%%Path%%: %s\n\n",
                      new_path.get());
    return SUCCESS;
}
