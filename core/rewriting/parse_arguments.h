#ifndef CORE_REWRITING_PARSE_ARGUMENTS_H
#define CORE_REWRITING_PARSE_ARGUMENTS_H

#ifdef __cplusplus
extern "C" {
#endif

/* Rewrites a Java command line, the `argc` arguments after the program's name, for the configured
 * launch mode. The result is lhs followed by rhs, appended to as they stand; entries are owned by
 * the launcher state and not released one by one. Needs the configuration and the Java version
 * flags (native_invocation.h). Outside a native invocation the option variables and the library
 * path are rewritten in the environment. The allow and ignore lists are released. Ends the process
 * with status 1 where the native agent, a variable or an argument file fails it, and where a list
 * is full. */
void parse_arguments(int argc, char *const *argv);

#ifdef __cplusplus
}
#endif

#endif
