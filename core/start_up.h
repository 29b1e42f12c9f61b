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

/* 1 when `path` (null is allowed) names something that exists in a \bin or \jre\bin folder, letter
 * case regarded; else 0. */
int is_valid_exe_path(const char *path);

/* Sets bin_dir, a new heap string (an earlier one is not released), to the ending of
 * executable_dir, which must be set: \jre\bin if it can be, else \bin. Any other ending is traced
 * and gives FAILURE, with bin_dir empty. */
int set_bin_dir(void);

/* 1 when `path` is the launcher's own file, by the text of its full path, letter case aside. */
int is_launcher_itself(const char *path);

#ifdef __cplusplus
}
#endif

#endif
