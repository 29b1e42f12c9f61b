#ifndef CORE_HOME_DIRECTORIES_H
#define CORE_HOME_DIRECTORIES_H

/* The three homes: where they come from when launcher.cfg does not name them, and whether they hold
 * what the launch mode needs. All three read launch_mode and need the homes allocated
 * (load_config_file). */

#ifdef __cplusplus
extern "C" {
#endif

/* Fills each empty home that the launch mode needs from the environment variable of its name, as it
 * stands there; traced. */
void fall_back_on_env_vars(void);

/* Tests the homes that the launch mode needs, reading bin_dir, and takes one trailing separator off
 * each that is a directory. SUCCESS, or FAILURE after the message of the first failing test has
 * been traced. */
int validate_directories(void);

/* Fills the empty homes of a launcher that ships inside a bundle: the container home is the one
 * that the launcher lies in, the JVM home stands three levels above, with quorvel_home inside.
 * Reads executable_dir. A directory that does not exist ends the process with status 0, after a
 * trace message or, for the Quorvel home, one on standard error. */
void fall_back_on_bundle(void);

#ifdef __cplusplus
}
#endif

#endif
