#ifndef TESTS_SUPPORT_STATE_H
#define TESTS_SUPPORT_STATE_H

// What a process keeps, set back to what it is at the start of one.

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "jli/kept.h"

constexpr char **STATE_TEXTS[] = {
    &executable_dir,
    &bin_dir,
    &launcher_home,
    &container_home,
    &jvm_home,
    &quorvel_home,
    &launch_mode,
    &launcher_path_arg,
    &rule_file,
    &rule_file_arg,
    &quorvel_properties_file,
    &quorvel_properties_arg,
    &quorvel_library_path,
    &allow_vm_properties_option,
    &new_mem_val_as_str,
};

constexpr struct {
    char **entries;
    int *count;
    int slots;
    bool owns;
} STATE_LISTS[] = {
    {processedArg, &processedArgCount, ARGUMENT_SLOTS, true},
    {newPathList, &newPathListCount, ARGUMENT_SLOTS, true},
    {lhs, &lhs_count, ARGUMENT_SLOTS, false},
    {rhs, &rhs_count, ARGUMENT_SLOTS, false},
    {updated_options_for_var, &updated_options_for_var_count, VARIABLE_SLOTS, false},
    {options_for_quorvel_guest_var, &options_for_quorvel_guest_var_count, VARIABLE_SLOTS, false},
    {non_path_options_array, &non_path_options_count, OPTION_SLOTS, true},
    {allow_vm_properties_array, &allow_vm_properties_count, OPTION_SLOTS, true},
    {ignore_properties_array, &ignore_properties_count, OPTION_SLOTS, true},
    {jvm_options_array, &jvm_options_count, OPTION_SLOTS, true},
    {container_options_array, &container_options_count, OPTION_SLOTS, true},
};

// Frees what the state owns.
inline void release_state() {
    for (char **text : STATE_TEXTS) {
        release_text(text);
    }
    for (const auto &list : STATE_LISTS) {
        if (list.owns) {
            release_entries(list.entries, list.count);
        }
    }
    for (JLI_List list : {kept_blocks, allow_vm_properties_loaded, ignore_properties_loaded}) {
        JLI_List_free(list);
    }
    kept_blocks = nullptr;
}

// Frees nothing.
inline void forget_state() {
    for (char **text : STATE_TEXTS) {
        *text = nullptr;
    }
    for (const auto &list : STATE_LISTS) {
        *list.count = 0;
    }
    LOG_FILE_FD = nullptr;
    os_name = nullptr;
    is_native_invocation = is_host_java_9_plus = is_guest_java_9_plus = 0;
    native_jvm_bits = -1;
    use_advanced_launch_mode = 1;
    is_taking_container_options = 0;
    is_transparent = rewrites_arguments = quotes_arguments_later = 0;
    leaves_standard_output = says_faults = 0;
    kept_blocks = allow_vm_properties_loaded = ignore_properties_loaded = nullptr;
    _launcher_debug = 0;
    JLI_ResetArgProcessing();
}

#endif
