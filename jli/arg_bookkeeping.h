#ifndef JLI_ARG_BOOKKEEPING_H
#define JLI_ARG_BOOKKEEPING_H

/* The bookkeeping of the arguments that expansion has seen, for the whole process: it tells option
 * values from the main class, and where expansion ends. */

#ifdef __cplusplus
extern "C" {
#endif

/* Resets the bookkeeping. After arguments have been checked this marks a relaunch: "@" arguments
 * and option variables are not expanded any more. Else `disable_arg_files` says whether "@"
 * arguments stay as they are. With `has_java_args` the caller has arguments of its own, and option
 * variables are left alone. */
void JLI_InitArgProcessing(int has_java_args, int disable_arg_files);

/* Puts the bookkeeping back to where it is at the start of a process, a relaunch forgotten too. For
 * a process that expands the arguments of several command lines, between two of them. */
void JLI_ResetArgProcessing(void);

/* Where the application's arguments begin (main class, jar file or module), in arguments checked,
 * counted from 2; -1 before that; 0 when the caller declared arguments of its own. */
int JLI_GetAppArgIndex(void);

/* Enters one argument into the bookkeeping. */
void checkArg(const char *arg);

/* 1 for an option that ends argument processing, else 0. */
int isTerminalOpt(const char *arg);

#ifdef __cplusplus
}

// Whether "@" arguments are replaced by the tokens of their files, and option variables by theirs.
bool expands_arg_files();
bool expands_variables();
#endif

#endif
