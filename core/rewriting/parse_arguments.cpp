#include "core/rewriting/parse_arguments.h"

#include <cstring>

#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/rewriting/advanced_mode.h"
#include "core/rewriting/agent_args.h"
#include "core/rewriting/java_options.h"
#include "core/rewriting/jvm_env_vars.h"
#include "core/rewriting/shared_disk_queries.h"
#include "core/rewriting/single_arg.h"
#include "core/state_text.h"
#include "platform/files.h"

namespace {

constexpr char PATCH_MODULE_FILE[] = "module_patch.jar";

constexpr const char *INTERNAL_PACKAGE_OPTIONS[] = {
    "--add-exports=java.base/jdk.internal.misc=ALL-UNNAMED",
    "--add-exports=java.base/jdk.internal.reflect=ALL-UNNAMED",
    "--add-opens=java.base/jdk.internal.misc=ALL-UNNAMED",
    "--add-opens=java.base/jdk.internal.reflect=ALL-UNNAMED",
};

const argument_list LHS = {lhs, &lhs_count};
const argument_list RHS = {rhs, &rhs_count};

void append_quorvel_properties(const launch_mode_row &mode, bool rule_file_arg_added) {
    if (is_set(rule_file) && !rule_file_arg_added) {
        place(LHS, rule_file_arg);
    }
    if (is_set(quorvel_properties_file)) {
        place(LHS, quorvel_properties_arg);
    }
    if (JLI_IsTraceLauncher()) {
        place_constant(LHS, "-Dcom.quorvel.ShowStart=true");
    }
    if (mode.agent_environment != nullptr) {
        place_constant(LHS, mode.agent_environment);
    }
    place_constant(LHS, launcher_path_arg);
}

// Whether configured option `i`, with its value, patches java.base with the Quorvel file already.
bool patches_java_base(int i) {
    const char *option = jvm_options_array[i];
    if (strcmp(option, "--patch-module") == 0 && i + 1 < jvm_options_count) {
        const char *value = jvm_options_array[i + 1];
        return strstr(value, "java.base=") != nullptr &&
               strstr(value, PATCH_MODULE_FILE) != nullptr;
    }
    return std::string_view(option).starts_with("--patch-module=java.base=") &&
           strstr(option, PATCH_MODULE_FILE) != nullptr;
}

bool append_jvm_options() {
    bool is_patched = false;
    for (int i = 0; i < jvm_options_count; i++) {
        is_patched = patches_java_base(i) || is_patched;
        place(LHS, jvm_options_array[i]);
    }
    return is_patched;
}

void append_patch_module() {
    if (quorvel_home == nullptr || !is_directory(quorvel_home)) {
        return;
    }
    const text_ptr file =
        format_text("%s%s%s", quorvel_home, file_separator_str, PATCH_MODULE_FILE);
    if (!is_file(file.get())) {
        return;
    }
    place(LHS, format_text("--patch-module=java.base=%s", file.get()).get());
    JLI_TraceLauncher("ADDED PATCH MODULE ARG:\n"
                      "-----------------------\n"
                      "      %s\n\n",
                      lhs[lhs_count - 1]);
}

void append_internal_packages() {
    JLI_TraceLauncher("ADDED SECURE/PATCH JAVA 9+ ARGS:\n"
                      "--------------------------------\n");
    for (const char *option : INTERNAL_PACKAGE_OPTIONS) {
        place_constant(LHS, option);
        JLI_TraceLauncher("%s\n", option);
    }
    JLI_TraceLauncher("\n");
}

// The counts stay: the filters pass over the nulls.
void release_list_entries(char **entries, int count) {
    for (int i = 0; i < count; i++) {
        release_text(&entries[i]);
    }
}

void trace_list(const argument_list &list) {
    for (int i = 0; i < *list.count; i++) {
        JLI_TraceLauncher(i == 0 ? "%s" : ", %s", list.entries[i]);
    }
    JLI_TraceLauncher("\n\n");
}

void trace_host_and_guest() {
    JLI_TraceLauncher("ADVANCED LAUNCH MODE HOST ARGS:\n-------------------------------\n");
    trace_list(LHS);
    JLI_TraceLauncher("ADVANCED LAUNCH MODE GUEST ARGS:\n--------------------------------\n");
    trace_list(RHS);
}

void trace_one_list(const char *title) {
    JLI_TraceLauncher("%s", title);
    for (int i = 0; i < lhs_count; i++) {
        JLI_TraceLauncher("%s, ", lhs[i]);
    }
    trace_list(RHS);
}

} // namespace

void parse_arguments(int argc, char *const *argv) {
    const shared_disk_queries shared;
    const launch_mode_row &mode = current_launch_mode();
    if (!is_native_invocation) {
        process_jvm_env_var("JDK_JAVA_OPTIONS");
        process_jvm_env_var("JAVA_TOOL_OPTIONS");
        process_jvm_env_var("CLASSPATH");
    }
    const bool rule_file_arg_added = process_args(argc, argv, LHS, RHS);
    if (argc == 0 && use_advanced_launch_mode) {
        apply_configured_container_options(rhs, &rhs_count, lhs, &lhs_count);
    }
    if (!use_advanced_launch_mode && is_set(allow_vm_properties_option)) {
        place(LHS, allow_vm_properties_option);
    }
    if (mode.has_agents) {
        append_quorvel_properties(mode, rule_file_arg_added);
    }
    if (is_native_invocation) {
        place_constant(LHS, "-Dcom.quorvel.jnimode=true");
    }
    if (mode.has_agents && is_host_java_9_plus) {
        place(LHS, "-Xshare:off");
        place(LHS, "-XX:+IgnoreUnrecognizedVMOptions");
    }
    const bool is_patched = append_jvm_options();
    if (mode.has_agents && is_host_java_9_plus) {
        if (!is_patched) {
            append_patch_module();
        }
        if (mode.opens_internal_packages) {
            append_internal_packages();
        }
    }
    release_list_entries(allow_vm_properties_array, allow_vm_properties_count);
    release_list_entries(ignore_properties_array, ignore_properties_count);
    if (use_advanced_launch_mode == 1) {
        trace_host_and_guest();
    } else {
        trace_one_list(mode.arguments_title);
    }
    add_agent_args();
}
