#ifndef JLI_ARG_FILE_TOKENIZER_H
#define JLI_ARG_FILE_TOKENIZER_H

/* The text of an argument file, and its tokens. */

#include <stddef.h>
#include <stdio.h>

#include "jli/jli_util.h"

#ifdef __cplusplus
extern "C" {
#endif

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

#ifdef __cplusplus
}
#endif

#endif
