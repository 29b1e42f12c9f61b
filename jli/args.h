#ifndef JLI_ARGS_H
#define JLI_ARGS_H

/* Argument files ("@" and a path) and option environment variables, by the rules of the Java
 * launcher.
 *
 * Expansion keeps a bookkeeping of the arguments that it has seen, for the whole process: it tells
 * option values from the main class. Every failure is fatal: its message goes through
 * JLI_ReportMessage() and the process ends with status 1. */

#include <stddef.h>
#include <stdio.h>

#include "jli/jli_util.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Bookkeeping ---- */

/* Resets the bookkeeping. After arguments have been checked this marks a relaunch: "@" arguments
 * and option variables are not expanded any more. Else `disable_arg_files` says whether "@"
 * arguments stay as they are. With `has_java_args` the caller has arguments of its own, and option
 * variables are left alone. */
void JLI_InitArgProcessing(int has_java_args, int disable_arg_files);

/* Where the application's arguments begin (main class, jar file or module), in arguments checked,
 * counted from 2; -1 before that; 0 when the caller declared arguments of its own. */
int JLI_GetAppArgIndex(void);

/* Enters one argument into the bookkeeping. */
void checkArg(const char *arg);

/* 1 for an option that ends argument processing, else 0. */
int isTerminalOpt(const char *arg);

/* ---- One argument ---- */

/* The expansion of one command-line argument as a new list, or null when the argument is used as it
 * is: the tokens of the file for "@path", "@x" for "@@x". With `expand_source_opt`, an argument
 * that begins with "--source" and holds a space is split at whitespace. An "@" argument itself is
 * not checked, its tokens are; once the application's arguments have begun nothing is.
 *
 * A list of a split "--source" argument is never freed (see expand()), any other belongs to the
 * caller and is given back with JLI_List_free(). */
JLI_List JLI_PreprocessArg(const char *arg, int expand_source_opt);

/* Splits an argument at whitespace; the list is filled, and therefore lives, as expand() says. */
JLI_List expandArg(const char *arg);

/* ---- Argument files ---- */

/* The tokens of the argument file at `path`, each checked, in a new list of the caller's. A file
 * that cannot be opened or read, and a directory, end the process. */
JLI_List expandArgFile(const char *path);

/* The tokens of an open file from where it stands to its end, each checked, in a new list of the
 * caller's; null when reading fails. The stream stays open. */
JLI_List readArgFile(FILE *file);

/* Where the tokenizer stands. */
enum ArgFileState {
    FIND_NEXT,    /* between tokens */
    IN_COMMENT,   /* after "#", up to the line end */
    IN_QUOTE,     /* in a quoted section of a token */
    IN_ESCAPE,    /* after a backslash in a quoted section */
    SKIP_LEAD_WS, /* in the whitespace after an escaped line end in a quoted section */
    IN_TOKEN      /* in a token, outside quotes */
};

/* A file on its way through the tokenizer, which sees it block by block. The caller starts with
 * FIND_NEXT, a double quote and an empty list of capacity 4, sets `cursor` and `eob` for each
 * block, and frees `pieces` at the end. */
typedef struct ArgFileContext {
    enum ArgFileState state;
    const char *cursor; /* where the next call goes on */
    const char *eob;    /* one past the block's last byte */
    char quote_char;    /* what opened the quoted section */
    JLI_List pieces;    /* the token under construction, as far as earlier blocks held it */
} ArgFileContext;

/* The next token that ends in the block, as a new heap string of the caller's, or null when the
 * block is used up. The cursor is then at its end, and what there is of an unfinished token in
 * `pieces`. After the last block such a token is complete when the state is IN_TOKEN or IN_QUOTE
 * and `pieces` is not empty: JLI_List_combine() gives it.
 *
 *   -cp lib      two tokens: whitespace separates them outside quotes
 *   "a b"'c'     one token, a bc: quotes join and are dropped; an open one ends with its line
 *   "c:\\a\tb"   backslash escapes only inside quotes: c:\a, a tab, b
 *   "ab\         a backslash at the end of a line joins it with the next one, whose leading
 *     cd"        whitespace is dropped: abcd
 *   # note       a comment up to the line end; an unquoted "#" in a token drops the whole token
 *
 * The file gives the same tokens whatever the size of its blocks, null bytes aside: a token with
 * quotes, or one that lies in several blocks, loses what follows a null byte in each of its pieces.
 */
char *nextToken(ArgFileContext *context);

/* A new heap string of the caller's: the `length` bytes at `start`. */
char *clone_substring(const char *start, size_t length);

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
 * The options that stand in the text itself lie in one block that is never freed: `args` must not
 * be given to JLI_List_free() and lives until the process ends. */
int expand(JLI_List args, const char *text, const char *variable_name);

/* ---- Messages ---- */

/* While tracing is on, writes the formatted text, whole, to the trace log when one is open and then
 * to standard error, flushing each. No line end is added. */
void JLI_ReportMessage(const char *format, ...) JLI_PRINTF_LIKE(1, 2);

#ifdef __cplusplus
}
#endif

#endif
