#ifndef CORE_REWRITING_RI_MODE_H
#define CORE_REWRITING_RI_MODE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Places one argument of a Java command line for the mode "ri": an option in lhs, the main class
 * and what follows it in rhs; nothing but paths changes, which move to the JVM home. The value of
 * an option on modules is known by the option, the last entry of lhs. The lists and flags are as
 * for process_single_arg_for_advanced. */
void process_single_arg_for_ri(const char *arg, char **lhs, int *lhs_count, char **rhs,
                               int *rhs_count, int *main_class_found, int *expect_classpath_value);

#ifdef __cplusplus
}
#endif

#endif
