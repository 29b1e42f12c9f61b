#ifndef PLATFORM_WINDOWS_SERVICES_H
#define PLATFORM_WINDOWS_SERVICES_H

/* The Windows services that the product calls, under their own names. On Windows they are the
 * system's; elsewhere posix/windows_services.h declares the same names and says what they do there.
 */

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include "platform/posix/windows_services.h"
#endif

#endif
