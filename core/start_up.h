#ifndef CORE_START_UP_H
#define CORE_START_UP_H

/* Where the launcher lies. */

#ifdef __cplusplus
extern "C" {
#endif

/* The launcher's own full path, a heap string of the caller's; sets os_name. A launcher that does
 * not lie in a \bin or \jre\bin folder ends with status 1 and "Error: java executable path either
 * doesn't exist or is invalid" on standard output. */
char *get_executable_file_path(void);

/* The same as the system tells it, whatever it is. */
char *new_own_path(void);

/* 1 when `path` (null is allowed) names something that exists in a \bin or \jre\bin folder, letter
 * case regarded; else 0. */
int is_valid_exe_path(const char *path);

/* Sets bin_dir, a new heap string (an earlier one is not released), to the ending of
 * executable_dir, which must be set: \jre\bin if it can be, else \bin. Any other ending is traced
 * and gives FAILURE, with bin_dir empty. */
int set_bin_dir(void);

/* Whether a launcher may start `target`, 1 or 0: it is a file, and not the launcher's own by the
 * text of its full path, letter case aside, which would start itself without end. `launcher` is the
 * launcher's full path; null stands for the file of this process. */
int is_startable(const char *target, const char *launcher);

#ifdef __cplusplus
}
#endif

#endif
