#ifndef CORE_REWRITING_ADVANCED_MODE_H
#define CORE_REWRITING_ADVANCED_MODE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Splits one argument of a Java command line between the host JVM and the guest program that
 * runs in it: both, one or none. The lists and the four flags are the caller's; the flags are
 * 0 before the first argument of a command line or option variable. Entries belong to the pool
 * processedArg or are constants. A full list ends the process with status 1. */
void process_single_arg_for_advanced(const char *arg, char **host, int *host_count, char **guest,
                                     int *guest_count, int *main_class_found,
                                     int *expect_classpath_value, int *expect_module_value,
                                     int *rule_file_arg_added);

/* Places the configured container options in the host list and processes "_JAVA_OPTIONS", which may
 * append to the launcher state's rhs. While it is running already, it does nothing. */
void apply_configured_container_options(char **guest, int *guest_count, char **host,
                                        int *host_count);

#ifdef __cplusplus
}
#endif

#endif
