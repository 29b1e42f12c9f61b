#include "core/rewriting/ri_mode.h"

#include <cstring>

#include "core/jlp_vars.h"
#include "core/rewriting/java_options.h"
#include "core/rewriting/option_filters.h"

namespace {

// How an entry began before its command-line form put quotes around blanks.
const char *without_quote(const char *entry) {
    const bool is_quoted = !is_native_invocation && strchr(entry, ' ') != nullptr;
    return is_quoted ? entry + 1 : entry;
}

// Whether the last entry is an option on modules that still waits for its value. A value may read
// like such an option too: in a row of them the first is an option, the second its value, and so
// on. After a class path option, which always is one, the first is the value of that.
bool ends_with_module_option(const argument_list &list) {
    int i = *list.count - 1;
    while (i >= 0 && is_module_value_option(list.entries[i])) {
        i--;
    }
    int row_length = *list.count - 1 - i;
    if (row_length == 0) {
        return false;
    }
    // An assignment of the class path is no value either.
    while (i >= 0 && is_class_path_assignment(without_quote(list.entries[i]))) {
        i--;
    }
    if (i >= 0 && is_class_path_option(without_quote(list.entries[i]))) {
        row_length--;
    }
    return row_length % 2 == 1;
}

} // namespace

void process_single_arg_for_ri(const char *arg, char **leading, int *leading_count, char **trailing,
                               int *trailing_count, int *main_class_found,
                               int *expect_classpath_value) {
    const argument_list to_leading = {leading, leading_count};
    const argument_list to_trailing = {trailing, trailing_count};
    if (*main_class_found) {
        place(to_trailing, arg);
    } else if (is_class_path_option(arg)) {
        place(to_leading, arg);
        *expect_classpath_value = 1;
    } else if (is_class_path_assignment(arg)) {
        place(to_leading, moved_assignment(arg, jvm_home));
    } else if (*expect_classpath_value) {
        place(to_leading, moved_value(arg, jvm_home));
        *expect_classpath_value = 0;
    } else if (ends_with_module_option(to_leading)) {
        place(to_leading, arg);
    } else if (ends_options(arg)) {
        place(to_trailing, arg);
        *main_class_found = 1;
    } else if (is_xbootclasspath_arg(arg)) {
        place(to_leading, moved_boot_class_path(arg, jvm_home));
    } else if (is_possible_path_arg(arg)) {
        place(to_leading, moved_property(arg, jvm_home));
    } else {
        place(to_leading, arg);
    }
}
