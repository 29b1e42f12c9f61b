#ifndef CORE_NATIVE_INVOCATION_H
#define CORE_NATIVE_INVOCATION_H

/* The core's set-up for a native host: a process that has loaded the core through its JNI library
 * (jni\qvljni.dll of the launcher home) and calls the core itself. Such a host calls
 *
 *     initialize_jlp_for_native_invocation(path of the JNI library, 0);
 *     parse_arguments(argc, argv);                        // rewriting/parse_arguments.h
 *     ... start the Java runtime with lhs and rhs ...
 *     reset_jlp_for_native_invocation();                  // before a further command line
 *     release_jlp_for_native_invocation();                // if there may be many
 *
 * from one thread. The homes come from launcher.cfg alone and are not checked. These functions,
 * set_jlp_end_listener, parse_arguments, JLI_SetTraceLauncher (before the first, to trace
 * everything), lhs and rhs with their counts and the homes are what a library for hosts has of the
 * core (jlp_core.def). */

#include <stdint.h>

#include "core/java_versions.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Takes the launcher home from the library's path, loads the configuration (the launch mode is
 * always "advanced") and finds out about the Java versions. Sets native_jvm_bits to 64; `reserved`
 * is not read. From here on what ends the process is said on standard error, in one line, though
 * nothing is traced (set_jlp_end_listener has another say).
 *
 * A further call loads the configuration anew: it empties the option lists, lhs, rhs and the pool,
 * and releases the settings and the homes of the call before (a home whose pointer the host has
 * replaced stays the host's). Version flags that are set stay set, and so does tracing; a log file
 * is begun again. Ends the process as init_launcher_home_from_library_path and load_config_file do.
 */
void initialize_jlp_for_native_invocation(const char *library_path, int32_t reserved);

/* Sets launcher_home to what stands before the last \jni\qvljni.dll, in any letter case, of
 * `library_path`; sets is_native_invocation and os_name. The path is only
 * read as a text: with backslashes, whether the file is there or not and whatever follows its name.
 * A path without it ends the process with status 1 and a message on standard error. */
void init_launcher_home_from_library_path(const char *library_path);

/* Empties processedArg, lhs and rhs for the next command line; outside a native invocation it does
 * nothing. It leaves, until release_jlp_for_native_invocation or the end of the process: the texts
 * of the agents; newPathList, so that 10000 path lists can be rewritten in all; the lists of the
 * option variables; allow and ignore lists without their entries; and the bookkeeping of argument
 * files (jli/args.h): once one of them has held a main class or "--disable-@files", none is
 * expanded in any later command line, and "@" arguments are dropped. */
void reset_jlp_for_native_invocation(void);

/* Resets, and gives back what a reset leaves: the next command line finds what the first one has
 * found, allow and ignore lists included, and the process does not grow with their number. The
 * settings stay. Entries that lhs and rhs have held are gone, and so are texts that the host itself
 * has had expanded from option variables (jli/args.h). Outside a native invocation it does nothing.
 */
void release_jlp_for_native_invocation(void);

/* Sets who is told when the core is about to end the process, null for nobody; may be called at any
 * time. `message` is one text without a line end, valid during the call; `status` is that of the
 * process. The listener runs on the thread that has called the core, once, with everything as it
 * stands: it may write, flush and note, and then returns (the process ends by exit(status)) or ends
 * the process itself. It must not call the core, nor leave by longjmp or an exception: a command
 * line is half rewritten, and nothing can go on from there. While one is set, what is said on
 * standard error for want of a trace is left to it; a message that goes there in any case stays.
 *
 * exit() is that of the core's own runtime. A host on Windows with another one (UCRT) beside
 * jlp_core.dll finds its atexit functions not called and its buffers not written: it flushes in the
 * listener, or ends the process there by its own exit(). */
void set_jlp_end_listener(void (*listener)(const char *message, int status));

#ifdef __cplusplus
}
#endif

#endif
