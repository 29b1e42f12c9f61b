#ifndef CORE_REWRITING_JVM_ENV_VARS_H
#define CORE_REWRITING_JVM_ENV_VARS_H

/* The environment variables through which a Java runtime takes options and its class path. They are
 * rewritten in the environment that the child inherits. What is read of an option variable is its
 * value at the start of the process, each time anew: what an earlier call or the host has set since
 * is not seen. Of "CLASSPATH" it is the value of the moment, so that a second call moves what the
 * first has left. A variable that cannot be set ends the process with status 1, traced. */

#ifdef __cplusplus
extern "C" {
#endif

/* Rewrites one variable by name. Each option of an option variable goes through process_single_arg;
 * the host's result is written back and, in the mode "advanced", the guest's into "QUORVEL_GUEST_"
 * + name, whose own options are appended to rhs. "CLASSPATH" has its paths moved. Overwrites
 * updated_options_for_var and options_for_quorvel_guest_var. An option that may not stand in a
 * variable ends the process with status 1. Needs the configuration (load_config_file). */
void process_jvm_env_var(const char *name);

/* Moves the paths of "CLASSPATH" from the launcher home to `new_home`. Needs launcher_home. */
void process_classpath_env_var(const char *new_home);

/* Sets and traces a variable. */
void set_jvm_env_var(const char *name, const char *value);

#ifdef __cplusplus
}
#endif

#endif
