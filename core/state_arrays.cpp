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
};

constexpr state_array STATE_ARRAYS[] = {
    {processedArg, ARGUMENT_SLOTS, "processed arguments"},
    {lhs, ARGUMENT_SLOTS, "host or leading arguments"},
    {rhs, ARGUMENT_SLOTS, "guest or trailing arguments"},
    {newPathList, ARGUMENT_SLOTS, "rewritten path lists"},
    {updated_options_for_var, VARIABLE_SLOTS, "host options of an option variable"},
    {options_for_quorvel_guest_var, VARIABLE_SLOTS, "guest options of an option variable"},
};

struct array_limit {
    int capacity = ARGUMENT_SLOTS;
    const char *holds = "entries";
    const char *more = "";
};

array_limit limit_of(char **array) {
    for (const state_array &known : STATE_ARRAYS) {
        if (known.slots == array) {
            return {known.capacity, known.holds};
        }
    }
    for (const setting &row : SETTINGS) {
        if (row.list != nullptr && row.list->slots == array) {
            return {row.list->limit, row.key, " entries"};
        }
    }
    return {};
}

} // namespace

void append_entry(char **array, int *count, char *entry) {
    const array_limit limit = limit_of(array);
    if (*count >= limit.capacity) {
        refuse_entry(joined_text(limit.holds, limit.more).get(), limit.capacity);
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
