#ifndef CORE_REWRITING_PATH_REWRITING_H
#define CORE_REWRITING_PATH_REWRITING_H

/* Moving the paths of an argument from one home to another. Everything is traced. */

#ifdef __cplusplus
extern "C" {
#endif

/* Rewrites the list of paths in `arg`, separated by ";" or, in a list without ";", by ",": an
 * element whose absolute form is `old_home` or lies below it is replaced by that form with
 * `new_home` in front; every other element stays as it is written. With has_name 1 the list begins
 * after the first `name_delimiter`, and what stands before is kept; an `arg` without it is
 * undefined behaviour. With any other value the whole argument is the list. The result belongs to
 * newPathList; a full newPathList ends the process with status 1. Reads the current directory and
 * the file system. */
char *replaceLauncherHomeWithRIHome(const char *arg, const char *old_home, const char *new_home,
                                    int has_name, char name_delimiter);

/* Writes the absolute form of `old_path` into `result`, a buffer of 100000 bytes (a longer form
 * ends the process with status 1). Each prefix of the path that exists is replaced by its full path
 * name; what follows a prefix that does not exist is kept as written. A path on the current drive
 * is walked from its first separator on, so while no prefix of it exists its drive is left out. */
void resolve_path(const char *old_path, char *result);

/* Replaces each `from` in `text` by `to`, in place; returns `text`. */
char *replace_char(char *text, char from, char to);

#ifdef __cplusplus
}
#endif

#endif
