#include "core/state_arrays.h"

#include <cstdlib>

#include "core/jlp_vars.h"
#include "core/state_text.h"

namespace {

struct state_array {
    char **slots;
    int capacity;
    const char *holds;
};

constexpr state_array STATE_ARRAYS[] = {
    {processedArg, ARGUMENT_SLOTS, "processed arguments"},
    {lhs, ARGUMENT_SLOTS, "host or leading arguments"},
    {rhs, ARGUMENT_SLOTS, "guest or trailing arguments"},
    {newPathList, ARGUMENT_SLOTS, "rewritten path lists"},
    {updated_options_for_var, VARIABLE_SLOTS, "host options of an option variable"},
    {options_for_quorvel_guest_var, VARIABLE_SLOTS, "guest options of an option variable"},
    {non_path_options_array, OPTION_SLOTS, "NON_PATH_OPTIONS entries"},
    {allow_vm_properties_array, OPTION_SLOTS, "ALLOW_VM_OPTIONS entries"},
    {ignore_properties_array, OPTION_SLOTS, "IGNORE_OPTIONS entries"},
    {jvm_options_array, OPTION_SLOTS, "JVM_OPTIONS entries"},
    {container_options_array, OPTION_SLOTS, "CONTAINER_OPTIONS entries"},
};

constexpr state_array UNKNOWN_ARRAY = {nullptr, ARGUMENT_SLOTS, "entries"};

const state_array &describe(char **array) {
    for (const state_array &known : STATE_ARRAYS) {
        if (known.slots == array) {
            return known;
        }
    }
    return UNKNOWN_ARRAY;
}

} // namespace

void append_entry(char **array, int *count, char *entry) {
    const state_array &described = describe(array);
    if (*count >= described.capacity) {
        refuse_entry(described.holds, described.capacity);
    }
    array[(*count)++] = entry;
}

void release_entries(char **array, int *count) {
    for (int i = 0; i < *count; i++) {
        free(array[i]);
        array[i] = nullptr;
    }
    *count = 0;
}
