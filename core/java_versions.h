#ifndef CORE_JAVA_VERSIONS_H
#define CORE_JAVA_VERSIONS_H

/* Which Java versions the homes hold. */

#ifdef __cplusplus
extern "C" {
#endif

/* Sets is_host_java_9_plus and is_guest_java_9_plus where jvm_home and container_home hold
 * lib\jrt-fs.jar and legal\java.base; never sets them back. A home that is no directory is passed
 * over. Traced. */
void init_host_and_guest_versions(void);

#ifdef __cplusplus
}
#endif

#endif
