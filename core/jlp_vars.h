#ifndef CORE_JLP_VARS_H
#define CORE_JLP_VARS_H

/* The launcher state: the globals of the launcher core, defined once in jlp_vars.cpp.
 *
 * One thread reads and writes it by name; nothing is locked. Texts are narrow, null-terminated heap
 * strings in the active code page, released with free(). A text that is filled or extended in place
 * has 100000 bytes, an entry of an array is as long as its text. At process start every pointer is
 * null and every count and flag 0, unless the line says otherwise.
 *
 * The trace log LOG_FILE_FD belongs to the state too; it is declared in jli/jli_util.h, because the
 * trace function below the core writes to it. Besides the state a process keeps: whether it traces
 * (jli/jli_util.h), the bookkeeping of arguments (jli/arg_bookkeeping.h), what command lines leave
 * behind (jli/kept.h), who is told of its end (jli/ending.h), which settings a native host has
 * loaded (core/native_invocation.cpp), and while a command line is rewritten what its path lists
 * have found on the disk (core/rewriting/shared_disk_queries.h). */

#include "jli/jli_util.h"
#include "platform/linkage.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Constants ---- */

/* Results of set_bin_dir, validate_directories and initialize_agentlib_env; main returns FAILURE
 * too. A host's macro of the same name is left alone. */
#ifndef SUCCESS
extern const int SUCCESS; /* 0 */
#endif
#ifndef FAILURE
extern const int FAILURE; /* -1 */
#endif

extern const char file_separator; /* the backslash */
extern const char path_separator; /* ';', between the elements of a path list */
extern const char *const file_separator_str;

/* Path fragments below a home. */
extern const char *const slash_exe_name;    /* \java.exe */
extern const char *const bin;               /* \bin */
extern const char *const jre_bin;           /* \jre\bin */
extern const char *const slash_quorvel_jar; /* \quorvel.jar, in the Quorvel home */
extern const char *const jni_lib_path;      /* \jni\qvljni.dll, in the launcher home */

/* ---- Platform and mode ---- */

extern const char *os_name;          /* "Windows"; set with the launcher's own path */
extern int is_native_invocation;     /* 1: a native host drives the core; never set back */
extern int native_jvm_bits;          /* initially -1; 32 selects the 32-bit native agent */
extern int is_host_java_9_plus;      /* 1: the JVM home holds Java 9 or later */
extern int is_guest_java_9_plus;     /* 1: the container home does */
extern int use_advanced_launch_mode; /* initially 1; follows launch_mode */
/* TRANSPARENT= and REWRITE_ARGUMENTS= of launcher.cfg; 0 for a native host. */
extern int is_transparent;
extern int rewrites_arguments;
extern int
    quotes_arguments_later; /* 1: processArg leaves a blank to whoever makes a command line */

/* ---- Directories: 100000 bytes each, without a trailing separator unless said otherwise ---- */

extern char *executable_dir;   /* of the launcher's file; set and released by main */
extern char *bin_dir;          /* \bin or \jre\bin: where the launcher sits below its home */
QVL_STATE char *launcher_home; /* holds launcher.cfg; by configuration or native_invocation */
/* Allocated empty by the configuration, filled by it or from the environment; validation takes off
 * one trailing separator. main releases the first two before the child starts. */
QVL_STATE char *container_home; /* Java runtime of the modes "advanced" and "legacy" */
QVL_STATE char *jvm_home;       /* the plain JVM, host of the other modes */
QVL_STATE char *quorvel_home;   /* quorvel.jar and the native agents */

/* ---- Settings of launcher.cfg, whose keys are in core/settings.h: allocated by the configuration,
 * 100000 bytes each, and empty unless set ---- */

extern char *rule_file;                  /* full path */
extern char *quorvel_properties_file;    /* full path */
extern char *quorvel_library_path;       /* full path of a native agent */
extern char *allow_vm_properties_option; /* -Dcom.quorvel.AllowVMProperties=... */
/* Released by cleanup, which leaves the last pointer. The launch mode begins with the name of
 * one; launch_mode.h has their table. */
extern char *launch_mode;
extern char *launcher_path_arg;      /* -Dcom.quorvel.LauncherPackPath=..., as for a command line */
extern char *rule_file_arg;          /* -Dcom.quorvel.rules.local=... */
extern char *quorvel_properties_arg; /* -Dcom.quorvel.QuorvelProperties=... */
enum { MEMORY_VALUE_SIZE = 50 };
extern char *new_mem_val_as_str; /* of that many bytes, for the text of an -Xmx value */

/* ---- Option lists of launcher.cfg ----
 * A repeated key appends. cleanup empties the non-path list; parse_arguments releases the entries
 * of the allow and ignore lists and leaves nulls behind below their counts. */

enum { OPTION_SLOTS = 10000 };

extern char *non_path_options_array[OPTION_SLOTS];
extern int non_path_options_count;
extern char *allow_vm_properties_array[OPTION_SLOTS];
extern int allow_vm_properties_count;
extern char *ignore_properties_array[OPTION_SLOTS];
extern int ignore_properties_count;
extern char *jvm_options_array[OPTION_SLOTS];
extern int jvm_options_count;
extern char *container_options_array[OPTION_SLOTS];
extern int container_options_count;

/* What stood in the allow and ignore lists when a native host's configuration had been loaded: the
 * entries for its further command lines. Null elsewhere. */
extern JLI_List allow_vm_properties_loaded;
extern JLI_List ignore_properties_loaded;

/* ---- Work arrays of a command line ---- */

enum { ARGUMENT_SLOTS = 10000, VARIABLE_SLOTS = 100000, COMPONENT_SLOTS = 100000 };

/* Every text that processArg returned; owns them. Emptied by cleanup, by main and by
 * reset_jlp_for_native_invocation. */
extern char *processedArg[ARGUMENT_SLOTS];
extern int processedArgCount;

/* The rewritten command line is lhs followed by rhs: host and guest in the mode "advanced", options
 * and the rest in the others. The lists own nothing. Counts are reset by
 * reset_jlp_for_native_invocation. */
QVL_STATE char *lhs[ARGUMENT_SLOTS];
QVL_STATE int lhs_count;
QVL_STATE char *rhs[ARGUMENT_SLOTS];
QVL_STATE int rhs_count;

/* One rewritten path list per call of the path rewriter; owns them. Emptied by cleanup and by
 * release_jlp_for_native_invocation. */
extern char *newPathList[ARGUMENT_SLOTS];
extern int newPathListCount;

/* Components of the path being resolved; own nothing. All null between calls. */
extern char *path_component[COMPONENT_SLOTS];

/* Host and guest options of the option variable in hand; own nothing. */
extern char *updated_options_for_var[VARIABLE_SLOTS];
extern int updated_options_for_var_count;
extern char *options_for_quorvel_guest_var[VARIABLE_SLOTS];
extern int options_for_quorvel_guest_var_count;

/* 1 while the mode "advanced" takes its container options: an option of "_JAVA_OPTIONS" that ends
 * the options would start the same again, without end. */
extern int is_taking_container_options;

#ifdef __cplusplus
}
#endif

#endif
