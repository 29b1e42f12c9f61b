#ifndef CORE_REWRITING_OPTION_FILTERS_H
#define CORE_REWRITING_OPTION_FILTERS_H

/* Classes of Java options. All tests are prefix tests, byte by byte, so an entry of a list matches
 * every longer argument too. The predicates return 1 or 0 and change nothing but the trace; null
 * entries of the configured lists are passed over. */

#ifdef __cplusplus
extern "C" {
#endif

/* 1 when the argument is to be dropped: it begins with an entry of ignore_properties_array or
 * IGNORE_ARGS or, with check_obsolete, is one of the options that a Java 9 or later host no longer
 * accepts (traced). */
int is_ignore_property(const char *arg, int check_obsolete);

/* 1 when the argument after its first two characters, whatever they are, begins with an entry of
 * allow_vm_properties_array. `arg` has at least two characters. */
int is_arg_allowed_vm_property(const char *arg);

/* 1 for a "-D" property that begins with an entry of non_path_options_array (traced). */
int is_non_path_option(const char *arg);

/* 1 for every other "-D" property: its value may hold paths. */
int is_possible_path_arg(const char *arg);

/* 1 for "-Xbootclasspath:", "-Xbootclasspath/p:" and "-Xbootclasspath/a:" with what follows. */
int is_xbootclasspath_arg(const char *arg);

/* The "-agentlib:" form of an argument, which must begin with "-Xrun" (its first five bytes are
 * passed over unread), a new heap string of the caller's: -Xrunjdwp:server=y becomes
 * -agentlib:jdwp=server=y. */
char *convertXrunToAgentLib(const char *arg);

#ifdef __cplusplus
}
#endif

#endif
