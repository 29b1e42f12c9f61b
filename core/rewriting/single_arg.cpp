#include "core/rewriting/single_arg.h"

#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/rewriting/advanced_mode.h"
#include "core/rewriting/arg_files.h"
#include "core/rewriting/java_options.h"
#include "core/rewriting/legacy_mode.h"
#include "core/rewriting/ri_mode.h"

void process_single_arg(const char *arg, char **leading, int *leading_count, char **trailing,
                        int *trailing_count, int *main_class_found, int *expect_classpath_value,
                        int *expect_module_value, int *rule_file_arg_added) {
    const auto process = [&](const char *each) {
        process_single_arg_for_launch_mode(each, leading, leading_count, trailing, trailing_count,
                                           main_class_found, expect_classpath_value,
                                           expect_module_value, rule_file_arg_added);
    };
    if (*main_class_found || !is_arg_file(arg)) {
        process(arg);
        return;
    }
    JLI_List args = get_arg_list_from_arg_file(arg);
    if (args == nullptr) {
        return;
    }
    for (size_t i = 0; i < args->size; i++) {
        process(args->elements[i]);
    }
    JLI_List_free(args);
}

void process_single_arg_for_launch_mode(const char *arg, char **leading, int *leading_count,
                                        char **trailing, int *trailing_count, int *main_class_found,
                                        int *expect_classpath_value, int *expect_module_value,
                                        int *rule_file_arg_added) {
    // The flag decides on the advanced mode, and not launch_mode: a host may set one by itself.
    if (use_advanced_launch_mode) {
        process_single_arg_for_advanced(arg, leading, leading_count, trailing, trailing_count,
                                        main_class_found, expect_classpath_value,
                                        expect_module_value, rule_file_arg_added);
    } else if (current_launch_mode().rules == argument_rules::ri) {
        process_single_arg_for_ri(arg, leading, leading_count, trailing, trailing_count,
                                  main_class_found, expect_classpath_value);
    } else {
        process_single_arg_for_legacy(arg, leading, leading_count, trailing, trailing_count,
                                      main_class_found, expect_classpath_value, expect_module_value,
                                      rule_file_arg_added);
    }
}

bool process_args(int argc, char *const *argv, const argument_list &leading,
                  const argument_list &trailing) {
    int main_class_found = 0;
    int expect_classpath_value = 0;
    int expect_module_value = 0;
    int rule_file_arg_added = 0;
    for (int i = 0; i < argc; i++) {
        process_single_arg(argv[i], leading.entries, leading.count, trailing.entries,
                           trailing.count, &main_class_found, &expect_classpath_value,
                           &expect_module_value, &rule_file_arg_added);
    }
    return rule_file_arg_added != 0;
}
