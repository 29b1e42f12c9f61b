#ifndef JLI_JLI_UTIL_H
#define JLI_JLI_UTIL_H

/* The argument toolkit's base: memory, string lists, option classes and the trace. */

#include <stddef.h>
#include <stdio.h>

#include "jli/memory.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- String lists ----
 * A growable array of heap strings. A list owns its strings. `capacity` is at least 1 and only
 * ever doubles; the slots from `size` on hold nothing. */

struct JLI_List_ {
    char **elements;
    size_t size;
    size_t capacity;
};
typedef struct JLI_List_ *JLI_List;

/* A new list of exactly `capacity` slots, owned by the caller. At least 1: capacities
 * double, and 0 never becomes more, so that JLI_List_add() on such a list does not return. */
JLI_List JLI_List_new(size_t capacity);

/* Frees the strings, the array and the record; a null list is left alone. */
void JLI_List_free(JLI_List list);

/* Makes room for `needed` slots in all. */
void JLI_List_ensureCapacity(JLI_List list, size_t needed);

/* Appends `text` itself: a heap string that the list owns from here on. */
void JLI_List_add(JLI_List list, char *text);

/* Appends a copy of the `length` bytes at `start`; null bytes among them are copied too. */
void JLI_List_addSubstring(JLI_List list, const char *start, size_t length);

/* All strings in order, with nothing between them; a new heap string of the caller's. */
char *JLI_List_combine(JLI_List list);

/* The same with `separator` between neighbours. */
char *JLI_List_join(JLI_List list, char separator);

/* The pieces of `text` between separators, empty ones included, as a new list of the caller's. */
JLI_List JLI_List_split(const char *text, char separator);

/* ---- Comparisons ---- */

/* 0 when `text` begins with `prefix`; else the sign of the first difference in bytes. */
int JLI_StrCCmp(const char *text, const char *prefix);

/* 1 when the text from its last "." on equals `suffix` (which has its dot), letter case aside. */
int JLI_HasSuffix(const char *text, const char *suffix);

/* ---- Option classes ----
 * 1 when the argument is of the class, else 0. Whole arguments are compared, case-sensitively,
 * except by IsLongFormModuleOption, which looks at how the argument begins. */

int IsClassPathOption(const char *arg);
int IsLauncherMainOption(const char *arg);
int IsLauncherOption(const char *arg);
int IsModuleOption(const char *arg);
int IsLongFormModuleOption(const char *arg);
/* The options whose value is the next argument. */
int IsWhiteSpaceOption(const char *arg);

/* ---- Trace ---- */

/* The open trace log, or null. It is part of the launcher state (core/jlp_vars.h): opened by the
 * configuration, closed once the child has ended. */
extern FILE *LOG_FILE_FD;

/* 1 while tracing is on; initially 0, and written by JLI_SetTraceLauncher() alone. */
extern int _launcher_debug;

/* 1: the trace goes to the log alone or, while none is open, to standard error, and standard output
 * is the program's. Initially 0. */
extern int leaves_standard_output;

/* 1: what keeps a program from being started is said on standard error, traced or not
 * (jli/trace.h); so it is for a native host without a listener. Initially 0: it is traced, and
 * shown where nothing but its own rule says so. */
extern int says_faults;

/* Switches tracing on, for good. */
void JLI_SetTraceLauncher(void);

/* 1 while tracing is on, else 0. */
int JLI_IsTraceLauncher(void);

/* Formats as printf does and writes the text, whole and however long, to the trace log when one is
 * open and then to standard output (see leaves_standard_output), flushing each. With tracing off
 * nothing is formatted. */
void JLI_TraceLauncher(const char *format, ...) JLI_PRINTF_LIKE(1, 2);

#ifdef __cplusplus
}
#endif

#endif
