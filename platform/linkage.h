#ifndef PLATFORM_LINKAGE_H
#define PLATFORM_LINKAGE_H

/* How the state that a host reads is declared. A host of the shared library defines QVL_SHARED (the
 * CMake target does): on Windows a variable of another file must be imported; elsewhere "weak" has
 * compilers read it where it stands, where some would have the program hold a copy of its own. */

#ifndef QVL_SHARED
#define QVL_STATE extern
#elif defined(_WIN32)
#define QVL_STATE extern __declspec(dllimport)
#else
#define QVL_STATE extern __attribute__((weak))
#endif

#endif
