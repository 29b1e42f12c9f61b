#include <unistd.h>

#include "core/banner.h"
#include "core/config_loading.h"
#include "core/jlp_vars.h"

namespace {

// The blanks differ from line to line; whoever reads these dumps by program knows them so.
constexpr struct {
    char *const *array;
    const int *count;
    const char *value_format;
    const char *entry_format;
} LIST_DUMPS[OPTION_LIST_COUNT] = {
    {non_path_options_array, &non_path_options_count, "   non_path_options_value:            %s\n",
     "        non_path_options_array[ %d ]:  %s\n"},
    {allow_vm_properties_array, &allow_vm_properties_count,
     "   allow_vm_properties_value:            %s\n",
     "        allow_vm_properties_array[ %d ]:  %s\n"},
    {ignore_properties_array, &ignore_properties_count,
     "   ignore_properties_value:            %s\n", "        ignore_properties_array[ %d ]:  %s\n"},
    {jvm_options_array, &jvm_options_count, "   jvm_options_value:                    %s\n",
     "        jvm_options_array[ %d ]:          %s\n"},
    {container_options_array, &container_options_count,
     "   container_options_value:              %s\n",
     "        container_options_array[ %d ]:    %s\n"},
};

bool is_set(const char *text) {
    return text != nullptr && *text != '\0';
}

// SHOW_START= and LAUNCH_MODE= do not count.
bool any_property_set(const config_loading &loading) {
    for (const char *text : {container_home, jvm_home, quorvel_home, rule_file_arg,
                             quorvel_properties_arg, quorvel_library_path}) {
        if (is_set(text)) {
            return true;
        }
    }
    for (const text_ptr &value : loading.list_values) {
        if (is_set(value.get())) {
            return true;
        }
    }
    return is_set(loading.log_file_path.get());
}

void dump_text(const char *format, const char *text) {
    if (is_set(text)) {
        JLI_TraceLauncher(format, text);
    }
}

void dump_list(int list, const char *value) {
    if (!is_set(value)) {
        return;
    }
    const auto &dump = LIST_DUMPS[list];
    JLI_TraceLauncher(dump.value_format, value);
    if (list == ALLOW_VM_LIST && !use_advanced_launch_mode) {
        JLI_TraceLauncher("        allow_vm_properties_option(LLM): %s\n",
                          allow_vm_properties_option);
    }
    for (int i = 0; i < *dump.count; i++) {
        JLI_TraceLauncher(dump.entry_format, i, dump.array[i]);
    }
}

void dump_properties(const config_loading &loading) {
    dump_text("   log_file_path:                        %s\n", loading.log_file_path.get());
    dump_text("   container_home:                       %s\n", container_home);
    dump_text("   jvm_home:                             %s\n", jvm_home);
    dump_text("   quorvel_home:                         %s\n", quorvel_home);
    dump_text("   rule_file_arg:                        %s\n", rule_file_arg);
    dump_text("   quorvel_properties_arg:               %s\n", quorvel_properties_arg);
    dump_text("   quorvel_library_path:                 %s\n", quorvel_library_path);
    for (int list = 0; list < OPTION_LIST_COUNT; list++) {
        dump_list(list, loading.list_values[list].get());
    }
}

} // namespace

void dump_configuration(const config_loading &loading) {
    if (!JLI_IsTraceLauncher()) {
        return; // the time alone, with its zone, would be dearer than the rest of a silent start
    }
    display_banner();
    JLI_TraceLauncher("%s\n", get_current_time_str());
    JLI_TraceLauncher("Launcher PID = %d\n\n", static_cast<int>(getpid()));
    JLI_TraceLauncher("LAUNCHER CONFIGURATION LOADED\n");
    JLI_TraceLauncher("-----------------------------\n");
    JLI_TraceLauncher("   config_path:                          %s\n", loading.config_path.get());
    JLI_TraceLauncher("   os_name:                              %s\n", os_name);
    JLI_TraceLauncher("   launch_mode:                          %s\n", launch_mode);
    JLI_TraceLauncher("   is_native_invocation:                 %s\n",
                      is_native_invocation ? "yes" : "no");
    if (any_property_set(loading)) {
        dump_properties(loading);
    } else {
        JLI_TraceLauncher("   WARNING: No properties set in config file.\n");
    }
    JLI_TraceLauncher("\n");
}
