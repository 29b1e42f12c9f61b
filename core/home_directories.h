#ifndef CORE_HOME_DIRECTORIES_H
#define CORE_HOME_DIRECTORIES_H

/* The three homes: where they come from when launcher.cfg does not name them, and whether they hold
 * what the launch mode needs. All need the homes, which load_config_file allocates: only
 * validate_directories says of a null one that it is not set, the others read it. */

#ifdef __cplusplus
extern "C" {
#endif

/* Fills each empty home that the launch mode needs from the environment variable of its name, as it
 * stands there; traced. */
void fall_back_on_env_vars(void);

/* Tests the homes that the launch mode needs, and takes one trailing separator off
 * each that is a directory. SUCCESS, or FAILURE after the message of the first failing test has
 * been traced. Needs bin_dir (set_bin_dir), which a native invocation does not set. */
int validate_directories(void);

/* Fills the empty homes of a launcher that ships inside a bundle: the container home is the one
 * that the launcher lies in, the JVM home stands three levels above, with quorvel_home inside.
 * An empty container home needs executable_dir; one that ends with neither \jre\bin nor \bin, and
 * a directory that does not exist, end the process with status 0, after a trace message or, for the
 * Quorvel home, one on standard error. */
void fall_back_on_bundle(void);

#ifdef __cplusplus
}
#endif

#endif
