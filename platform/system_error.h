#ifndef PLATFORM_SYSTEM_ERROR_H
#define PLATFORM_SYSTEM_ERROR_H

#include "platform/windows_services.h"

// The system's own words for an error of GetLastError() and its number, in one line without a line
// end: "Access is denied (error 5)", or "error 5" where the system has no words. `name` is what the
// error is about: it takes the place that some texts have for it. A heap text of the caller's; null
// when memory is out.
extern "C" char *system_error_text(DWORD error, const char *name);

#endif
