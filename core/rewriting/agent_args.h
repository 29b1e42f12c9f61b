#ifndef CORE_REWRITING_AGENT_ARGS_H
#define CORE_REWRITING_AGENT_ARGS_H

#ifdef __cplusplus
extern "C" {
#endif

/* Appends to lhs what the Quorvel agents need: container home, native agent, Java agent and
 * container main class, as the launch mode has them; nothing in the mode "ri". New entries are heap
 * strings that live until release_jlp_for_native_invocation() or the end of the process. A native
 * invocation has them without quotes, but for the path of a configured agent: -agentpath:"path",
 * whose quotes the host takes off. Ends the process with status 1, traced, when a native invocation
 * has no native agent library or the library path cannot be set. */
void add_agent_args(void);

/* Puts the Quorvel home and its platform folders in front of "Path", where the JVM looks for the
 * native agent, unless all are in it; "QUORVEL_ORIGINAL_LIBRARY_PATH" keeps the old value. Needs
 * quorvel_home. SUCCESS, or FAILURE when a variable cannot be set. Traced. */
int initialize_agentlib_env(void);

#ifdef __cplusplus
}
#endif

#endif
