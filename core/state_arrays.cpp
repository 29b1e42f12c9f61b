#include "core/state_arrays.h"

#include <cstdlib>

#include "core/jlp_vars.h"
#include "core/settings.h"
#include "core/state_text.h"

namespace {

struct state_array {
    char **slots;
    int capacity;
    const char *holds;
    const char *more = "";
};

constexpr state_array STATE_ARRAYS[] = {
    {processedArg, ARGUMENT_SLOTS, "processed arguments"},
    {lhs, ARGUMENT_SLOTS, "host or leading arguments"},
    {rhs, ARGUMENT_SLOTS, "guest or trailing arguments"},
    {newPathList, ARGUMENT_SLOTS, "rewritten path lists"},
    {updated_options_for_var, VARIABLE_SLOTS, "host options of an option variable"},
    {options_for_quorvel_guest_var, VARIABLE_SLOTS, "guest options of an option variable"},
};

state_array describe(char **array) {
    for (const state_array &known : STATE_ARRAYS) {
        if (known.slots == array) {
            return known;
        }
    }
    for (const setting &row : SETTINGS) {
        if (row.list != nullptr && row.list->slots == array) {
            return {array, row.list->limit, row.key, " entries"};
        }
    }
    return {array, ARGUMENT_SLOTS, "entries"};
}

} // namespace

void append_entry(char **array, int *count, char *entry) {
    const state_array known = describe(array);
    if (*count >= known.capacity) {
        refuse_entry(format_text("%s%s", known.holds, known.more).get(), known.capacity);
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
