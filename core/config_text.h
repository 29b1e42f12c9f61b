#ifndef CORE_CONFIG_TEXT_H
#define CORE_CONFIG_TEXT_H

/* The text helpers of the configuration reader. */

#ifdef __cplusplus
extern "C" {
#endif

/* 1 for blank, tab, line feed, vertical tab, form feed and carriage return, else 0. */
int is_space(char c);

/* Appends `text` without the is_space characters around it to `output`, a buffer of 100000 bytes
 * that holds a text; a result that does not fit ends the process with status 1. */
void trim(const char *text, char *output);

/* Cuts `text` into entries at each `delimiter` and appends a heap copy of each to `array`, raising
 * *count. As many characters as `lead` has are passed over in front, and as many as `tail` has at
 * the end, without a look at them; empty entries are left out. An empty delimiter cuts nowhere. A
 * full array ends the process with status 1.
 *     a=b==c           lead "", tail "", delimiter "="            a, b, c
 *     "-Xa" "-Db=c d"  lead and tail a quote, delimiter '" "'     -Xa, -Db=c d */
void split(const char *text, char **array, int *count, const char *lead, const char *tail,
           const char *delimiter);

/* 1 when `path` is not empty and its second character is not ":", else 0: without a drive, \x and
 * \\server\share are relative too. */
int is_path_relative(const char *path);

/* Writes the full path of `path`, taken relative to launcher_home (which must be set), into
 * `output`, a buffer of 100000 bytes; a longer one ends the process with status 1. Where the system
 * has no full path, as for an empty path, the output keeps its content. */
void prepend_launcher_home_to_relative_path(const char *path, char *output);

#ifdef __cplusplus
}
#endif

#endif
