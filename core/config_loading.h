#ifndef CORE_CONFIG_LOADING_H
#define CORE_CONFIG_LOADING_H

// What the configuration's reader and its dump share.

#include "jli/text.h"

enum option_list_index {
    NON_PATH_LIST,
    ALLOW_VM_LIST,
    IGNORE_LIST,
    JVM_LIST,
    CONTAINER_LIST,
    OPTION_LIST_COUNT
};

// One call of load_config_file, beside the launcher state that it sets.
struct config_loading {
    text_ptr config_path;
    text_ptr log_file_path{new_text_buffer()};
    // Of each option list, the value of its last line; null before there is one.
    text_ptr list_values[OPTION_LIST_COUNT];
    bool launch_mode_rejected = false;
};

// `text` without the is_space characters around it.
std::string_view trimmed(std::string_view text);

// Traces the start block and what was loaded.
void dump_configuration(const config_loading &loading);

#endif
