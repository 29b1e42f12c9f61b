#include "core/rewriting/legacy_mode.h"

#include <cstring>

#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/rewriting/java_options.h"
#include "core/rewriting/option_filters.h"
#include "jli/text.h"

namespace {

// Whether paths move to the container home. A mode that has other rules counts as "legacy" here.
bool is_for_container() {
    const launch_mode_row &mode = current_launch_mode();
    return mode.rules != argument_rules::legacy || mode.paths_move_to == &container_home;
}

const char *home() {
    return is_for_container() ? container_home : jvm_home;
}

// A guest of Java 8 or earlier knows no other form.
bool class_path_as_cp() {
    return is_for_container() && !is_guest_java_9_plus;
}

} // namespace

void process_single_arg_for_legacy(const char *arg, char **leading, int *leading_count,
                                   char **trailing, int *trailing_count, int *main_class_found,
                                   int *expect_classpath_value, int *expect_module_value,
                                   int *rule_file_arg_added) {
    const argument_list to_leading = {leading, leading_count};
    const argument_list to_trailing = {trailing, trailing_count};
    if (*main_class_found) {
        place(to_trailing, arg);
    } else if (is_ignore_property(arg, is_host_java_9_plus)) {
        return;
    } else if (begins_with(arg, "-Xrun")) {
        place_agent_library(to_leading, arg);
    } else if (is_class_path_option(arg)) {
        place(to_leading, strcmp(arg, "--class-path") == 0 && class_path_as_cp() ? "-cp" : arg);
        *expect_classpath_value = 1;
    } else if (is_class_path_assignment(arg)) {
        place_class_path_assignment(to_leading, arg, home(), class_path_as_cp());
    } else if (*expect_classpath_value) {
        place(to_leading, moved_value(arg, home()));
        *expect_classpath_value = 0;
    } else if (*expect_module_value) {
        place(to_leading, arg);
        *expect_module_value = 0;
    } else if (ends_options(arg)) {
        place(to_trailing, arg);
        *main_class_found = 1;
    } else if (begins_with(arg, "-javaagent")) {
        place(to_trailing, arg);
    } else if (is_xbootclasspath_arg(arg)) {
        place(to_leading, moved_boot_class_path(arg, home()));
    } else if (begins_with(arg, "-Dcom.quorvel.rules.local")) {
        place_rules_property(to_leading, arg, rule_file_arg_added);
    } else if (is_possible_path_arg(arg)) {
        place(to_leading, moved_property(arg, home()));
    } else if (is_heap_size_in_megabytes(arg)) {
        place_heap_size(to_leading, arg);
    } else {
        place(to_leading, arg);
        if (is_module_value_option(arg)) {
            *expect_module_value = 1;
        }
    }
}
