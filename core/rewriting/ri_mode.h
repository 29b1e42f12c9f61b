#ifndef CORE_REWRITING_RI_MODE_H
#define CORE_REWRITING_RI_MODE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Places one argument of a Java command line for the mode "ri": an option in the leading list, the
 * main class and what follows it in the trailing list; nothing but paths changes, which move to the
 * JVM home. The value of an option on modules is known by the option, the last entry of the leading
 * list. The lists and flags are as for process_single_arg_for_advanced. */
void process_single_arg_for_ri(const char *arg, char **leading, int *leading_count, char **trailing,
                               int *trailing_count, int *main_class_found,
                               int *expect_classpath_value);

#ifdef __cplusplus
}
#endif

#endif
