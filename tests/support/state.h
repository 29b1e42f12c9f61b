#ifndef TESTS_SUPPORT_STATE_H
#define TESTS_SUPPORT_STATE_H

// What a process keeps, set back to what it is at the start of one.

#include "core/jlp_utils.h"
#include "core/settings.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "jli/kept.h"

inline void forget_state() {
    for (char **text : {&executable_dir, &bin_dir, &launcher_home, &launcher_path_arg, &new_mem_val_as_str}) {
        release_text(text);
    }
    for (const setting &row : SETTINGS) {
        for (char **text : {row.text, row.property == nullptr ? nullptr : row.property->argument}) {
            if (text != nullptr) {
                release_text(text);
            }
        }
        if (row.list != nullptr) {
            release_entries(row.list->slots, row.list->count);
        }
    }
    release_entries(processedArg, &processedArgCount);
    release_entries(newPathList, &newPathListCount);
    for (JLI_List list : {kept_blocks, allow_vm_properties_loaded, ignore_properties_loaded}) {
        JLI_List_free(list);
    }
    kept_blocks = allow_vm_properties_loaded = ignore_properties_loaded = nullptr;
    lhs_count = rhs_count = updated_options_for_var_count = options_for_quorvel_guest_var_count = 0;
    LOG_FILE_FD = nullptr;
    os_name = nullptr;
    is_native_invocation = is_host_java_9_plus = is_guest_java_9_plus = 0;
    native_jvm_bits = -1;
    use_advanced_launch_mode = 1;
    is_taking_container_options = 0;
    is_transparent = rewrites_arguments = quotes_arguments_later = 0;
    leaves_standard_output = says_faults = 0;
    _launcher_debug = 0;
    JLI_ResetArgProcessing();
}

#endif
