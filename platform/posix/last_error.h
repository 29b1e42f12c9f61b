#ifndef PLATFORM_POSIX_LAST_ERROR_H
#define PLATFORM_POSIX_LAST_ERROR_H

#include "platform/posix/windows_services.h"

// Sets the last error and returns FALSE, for the failing ways out of a service.
BOOL fail_with(DWORD error);

// The Windows error that says what this errno says.
DWORD windows_error(int error_number);

// The first errno that is told by this Windows error, or 0.
int errno_of(DWORD error);

#endif
