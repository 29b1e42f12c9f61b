#ifndef CORE_REWRITING_PARSE_ARGUMENTS_H
#define CORE_REWRITING_PARSE_ARGUMENTS_H

#ifdef __cplusplus
extern "C" {
#endif

/* Rewrites a Java command line, the `argc` arguments after the program's name, for the configured
 * launch mode. The result is lhs followed by rhs, appended to as they stand; entries are owned by
 * the launcher state and not released one by one. Needs the configuration and the Java version
 * flags (native_invocation.h). Outside a native invocation "JDK_JAVA_OPTIONS", "JAVA_TOOL_OPTIONS",
 * "CLASSPATH" and the library path are rewritten in the environment; so is "_JAVA_OPTIONS", in any
 * invocation, where the mode "advanced" meets the main class or gets no arguments. The allow and
 * ignore lists are released: the next command line has neither, unless the configuration is loaded
 * anew or a native host has called release_jlp_for_native_invocation(). Argument files go on from
 * where the last command line has left them (jli/args.h). Ends the process with status 1 where the
 * native agent, a variable or an argument file fails it, and where a list is full.
 *
 * In a native invocation the arguments are options, as the invocation interface takes them. A main
 * class is none: what neither begins with "-" nor is an option's value goes to lhs as it stands,
 * before the agents, and what follows is still taken for options. "-jar" alone ends them. */
void parse_arguments(int argc, char *const *argv);

#ifdef __cplusplus
}
#endif

#endif
