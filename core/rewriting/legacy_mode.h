#ifndef CORE_REWRITING_LEGACY_MODE_H
#define CORE_REWRITING_LEGACY_MODE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Places one argument of a Java command line for the modes "legacy", "patch" and "secure": an
 * option in the leading list; the main class, what follows it, and the user's own Java agents in
 * the trailing list. Paths move to the container home in "legacy", to the JVM home in the others.
 * The lists and flags are as for process_single_arg_for_advanced. */
void process_single_arg_for_legacy(const char *arg, char **leading, int *leading_count,
                                   char **trailing, int *trailing_count, int *main_class_found,
                                   int *expect_classpath_value, int *expect_module_value,
                                   int *rule_file_arg_added);

#ifdef __cplusplus
}
#endif

#endif
