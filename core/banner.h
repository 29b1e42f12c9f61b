#ifndef CORE_BANNER_H
#define CORE_BANNER_H

/* How a trace begins: the banner, the time and the version label. */

#ifdef __cplusplus
extern "C" {
#endif

extern const char *const label;   /* "QUORVEL_VERSION=" */
extern const char *const version; /* of this build */

/* Joins label and version in a heap buffer and releases it: called by nobody, it keeps both texts
 * in the executable, where they can be searched for. */
void just_to_add_version_to_binary(void);

/* Traces the banner: four lines of a logo and an empty one. */
void display_banner(void);

/* The local time in ctime's form without its line end, or "[FAILED TO GET TIMESTAMP]"; never null.
 * The text is static and holds until the next call of ctime. */
const char *get_current_time_str(void);

#ifdef __cplusplus
}
#endif

#endif
