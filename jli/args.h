#ifndef JLI_ARGS_H
#define JLI_ARGS_H

/* Argument files ("@" and a path) and option environment variables, by the rules of the Java
 * launcher.
 *
 * Every failure is fatal: its message goes through JLI_ReportMessage() and the process ends with
 * status 1.
 *
 * The bookkeeping (jli/arg_bookkeeping.h) is one for the process and goes on from one command line
 * to the next. A main class in a file ends expansion for good, and "--disable-@files" in one stays
 * in force: "@" arguments of later command lines are then no longer expanded, and the rewriting
 * drops them (core/rewriting/arg_files.h), until release_jlp_for_native_invocation() or
 * JLI_ResetArgProcessing(). */

#include "jli/arg_bookkeeping.h"
#include "jli/arg_file_tokenizer.h"
#include "jli/jli_util.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- One argument ---- */

/* The expansion of one command-line argument as a new list, or null when the argument is used as it
 * is: the tokens of the file for "@path", "@x" for "@@x". With `expand_source_opt`, an argument
 * that begins with "--source" and holds a space is split at whitespace. An "@" argument itself is
 * not checked, its tokens are; once the application's arguments have begun nothing is.
 *
 * A list of a split "--source" argument is not freed as such (see expand()), any other belongs to
 * the caller and is given back with JLI_List_free(). */
JLI_List JLI_PreprocessArg(const char *arg, int expand_source_opt);

/* Splits an argument at whitespace; the list is filled, and therefore lives, as expand() says. */
JLI_List expandArg(const char *arg);

/* ---- Argument files ---- */

/* The tokens of the argument file at `path`, each checked, in a new list of the caller's. A file
 * that cannot be opened or read, and a directory, end the process. */
JLI_List expandArgFile(const char *path);

/* ---- Option environment variables ---- */

/* Expands the option variable `name`, as the process received it, into `args`: 1 when it was, 0
 * when it is not set or expansion is off (JLI_InitArgProcessing). Reports that the variable was
 * picked up. */
int JLI_AddArgsFromEnvVar(JLI_List args, const char *name);

/* Appends the options in `text` to `args`: whitespace separates them; an "@" option is replaced by
 * the tokens of its file. With a variable's name, quotes group and are dropped (an open one is
 * fatal); with null, quotes are ordinary. A terminal option and a main class end the process.
 * Returns 1.
 *
 * The texts that it appends are kept for the caller, most of them in one block, until the process
 * ends or a native host calls release_jlp_for_native_invocation(): `args` must not be given to
 * JLI_List_free(), though its array and its record may be freed. */
int expand(JLI_List args, const char *text, const char *variable_name);

/* ---- Messages ---- */

/* While tracing is on, writes the formatted text, whole, to the trace log when one is open and then
 * to standard error, flushing each. No line end is added. */
void JLI_ReportMessage(const char *format, ...) JLI_PRINTF_LIKE(1, 2);

#ifdef __cplusplus
}
#endif

#endif
