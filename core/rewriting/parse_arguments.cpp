#include "core/rewriting/parse_arguments.h"

#include <cstring>

#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/rewriting/advanced_mode.h"
#include "core/rewriting/agent_args.h"
#include "core/rewriting/java_options.h"
#include "core/rewriting/jvm_env_vars.h"
#include "core/rewriting/path_rewriting.h"
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

// Returns whether one of the arguments has put rule_file_arg in its own place.
bool process_args(int argc, char *const *argv) {
    int main_class_found = 0;
    int expect_classpath_value = 0;
    int expect_module_value = 0;
    int rule_file_arg_added = 0;
    for (int i = 0; i < argc; i++) {
        process_single_arg(argv[i], lhs, &lhs_count, rhs, &rhs_count, &main_class_found,
                           &expect_classpath_value, &expect_module_value, &rule_file_arg_added);
    }
    if (argc == 0 && use_advanced_launch_mode) {
        apply_configured_container_options(rhs, &rhs_count, lhs, &lhs_count);
    }
    return rule_file_arg_added != 0;
}

void append_quorvel_properties(bool rule_file_arg_added) {
    if (is_set(rule_file) && !rule_file_arg_added) {
        place(LHS, rule_file_arg);
    }
    if (is_set(quorvel_properties_file)) {
        place(LHS, quorvel_properties_arg);
    }
    if (JLI_IsTraceLauncher()) {
        place_constant(LHS, "-Dcom.quorvel.ShowStart=true");
    }
    if (launch_mode_begins_with("patch")) {
        place_constant(LHS, "-Dcom.quorvel.AgentEnvironment=patch");
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
    JLI_TraceLauncher("ADDED PATCH MODULE ARG:\n");
    JLI_TraceLauncher("-----------------------\n");
    JLI_TraceLauncher("      %s\n", lhs[lhs_count - 1]);
    JLI_TraceLauncher("\n");
}

void append_internal_packages() {
    JLI_TraceLauncher("ADDED SECURE/PATCH JAVA 9+ ARGS:\n");
    JLI_TraceLauncher("--------------------------------\n");
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

void trace_entries(char *const *entries, int count) {
    for (int i = 0; i < count; i++) {
        JLI_TraceLauncher(i == 0 ? "%s" : ", %s", entries[i]);
    }
}

void trace_host_and_guest() {
    JLI_TraceLauncher("ADVANCED LAUNCH MODE HOST ARGS:\n");
    JLI_TraceLauncher("-------------------------------\n");
    trace_entries(lhs, lhs_count);
    JLI_TraceLauncher("\n\n");
    JLI_TraceLauncher("ADVANCED LAUNCH MODE GUEST ARGS:\n");
    JLI_TraceLauncher("--------------------------------\n");
    trace_entries(rhs, rhs_count);
    JLI_TraceLauncher("\n\n");
}

void trace_one_list() {
    if (launch_mode_begins_with("patch")) {
        JLI_TraceLauncher("PATCH LAUNCH MODE ARGS:\n");
        JLI_TraceLauncher("-----------------------\n");
    } else if (launch_mode_begins_with("secure")) {
        JLI_TraceLauncher("SECURE LAUNCH MODE ARGS:\n");
        JLI_TraceLauncher("------------------------\n");
    } else {
        JLI_TraceLauncher("LEGACY LAUNCH MODE ARGS:\n");
        JLI_TraceLauncher("------------------------\n");
    }
    for (int i = 0; i < lhs_count; i++) {
        JLI_TraceLauncher("%s, ", lhs[i]);
    }
    trace_entries(rhs, rhs_count);
    JLI_TraceLauncher("\n\n");
}

} // namespace

void parse_arguments(int argc, char *const *argv) {
    const shared_disk_queries shared;
    const bool has_agents = !launch_mode_begins_with("ri");
    if (!is_native_invocation) {
        process_jvm_env_var("JDK_JAVA_OPTIONS");
        process_jvm_env_var("JAVA_TOOL_OPTIONS");
        process_jvm_env_var("CLASSPATH");
    }
    const bool rule_file_arg_added = process_args(argc, argv);
    if (!use_advanced_launch_mode && is_set(allow_vm_properties_option)) {
        place(LHS, allow_vm_properties_option);
    }
    if (has_agents) {
        append_quorvel_properties(rule_file_arg_added);
    }
    if (is_native_invocation) {
        place_constant(LHS, "-Dcom.quorvel.jnimode=true");
    }
    if (has_agents && is_host_java_9_plus) {
        place(LHS, "-Xshare:off");
        place(LHS, "-XX:+IgnoreUnrecognizedVMOptions");
    }
    const bool is_patched = append_jvm_options();
    if (has_agents && is_host_java_9_plus) {
        if (!is_patched) {
            append_patch_module();
        }
        if (launch_mode_begins_with("patch") || launch_mode_begins_with("secure")) {
            append_internal_packages();
        }
    }
    release_list_entries(allow_vm_properties_array, allow_vm_properties_count);
    release_list_entries(ignore_properties_array, ignore_properties_count);
    if (use_advanced_launch_mode == 1) {
        trace_host_and_guest();
    } else {
        trace_one_list();
    }
    add_agent_args();
}
