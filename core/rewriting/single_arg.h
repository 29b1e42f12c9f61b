#ifndef CORE_REWRITING_SINGLE_ARG_H
#define CORE_REWRITING_SINGLE_ARG_H

#ifdef __cplusplus
extern "C" {
#endif

/* Rewrites one argument of a command line or option variable for the launch mode. Before the main
 * class an argument file is expanded, and its arguments are rewritten in its place; where it gives
 * no list (arg_files.h) it is dropped. The lists and flags are as for
 * process_single_arg_for_advanced. */
void process_single_arg(const char *arg, char **leading, int *leading_count, char **trailing,
                        int *trailing_count, int *main_class_found, int *expect_classpath_value,
                        int *expect_module_value, int *rule_file_arg_added);

/* The same without argument files: hands the argument to the function of the launch mode. */
void process_single_arg_for_launch_mode(const char *arg, char **leading, int *leading_count,
                                        char **trailing, int *trailing_count, int *main_class_found,
                                        int *expect_classpath_value, int *expect_module_value,
                                        int *rule_file_arg_added);

#ifdef __cplusplus
}

struct argument_list; // java_options.h

// Rewrites the arguments of one command line or option variable in their order, with flags of their
// own. Returns whether one of them has put rule_file_arg in its place.
bool process_args(int argc, char *const *argv, const argument_list &leading,
                  const argument_list &trailing);
#endif

#endif
