#ifndef CORE_NATIVE_INVOCATION_H
#define CORE_NATIVE_INVOCATION_H

/* The core's set-up for a native host: a process that has loaded the core through its JNI library
 * (jni\qvljni.dll of the launcher home) and calls the core itself. Such a host calls
 *
 *     initialize_jlp_for_native_invocation(path of the JNI library, 0);
 *     parse_arguments(argc, argv);                        // rewriting/parse_arguments.h
 *     ... start the Java runtime with lhs and rhs ...
 *     reset_jlp_for_native_invocation();                  // before a further command line
 *
 * from one thread. The homes come from launcher.cfg alone and are not checked. These functions,
 * parse_arguments, JLI_SetTraceLauncher (before the first, to trace everything), lhs and rhs with
 * their counts and the homes are what a library for hosts has of the core (jlp_core.def). */

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Takes the launcher home from the library's path, loads the configuration (the launch mode is
 * always "advanced") and finds out about the Java versions. Sets native_jvm_bits to 64; `reserved`
 * is not read. Once per process: a second call appends the option lists of the configuration to
 * those of the first. Ends the process as init_launcher_home_from_library_path and load_config_file
 * do. */
void initialize_jlp_for_native_invocation(const char *library_path, int32_t reserved);

/* Sets launcher_home to what stands before the last \jni\qvljni.dll, in any letter case, of
 * `library_path`; sets is_native_invocation and os_name. The path is only
 * read as a text: with backslashes, whether the file is there or not and whatever follows its name.
 * A path without it ends the process with status 1 and a message on standard error. */
void init_launcher_home_from_library_path(const char *library_path);

/* Sets is_host_java_9_plus and is_guest_java_9_plus where jvm_home and container_home hold
 * lib\jrt-fs.jar and legal\java.base; never sets them back. A home that is no directory is passed
 * over. Traced. */
void init_host_and_guest_versions(void);

/* Empties processedArg, lhs and rhs for the next command line; outside a native invocation it does
 * nothing. What it leaves: entries of lhs and rhs that the pool does not own, newPathList (so a
 * process can have 10000 path lists rewritten, over all its command lines), and the bookkeeping of
 * argument files (jli/args.h): once one of them has held a main class or "--disable-@files", none
 * is expanded in any later command line, and "@" arguments are dropped. */
void reset_jlp_for_native_invocation(void);

#ifdef __cplusplus
}
#endif

#endif
