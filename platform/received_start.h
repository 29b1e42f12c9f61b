#ifndef PLATFORM_RECEIVED_START_H
#define PLATFORM_RECEIVED_START_H

#include "platform/windows_services.h"

// Starts a program in the way in which this process was started, so that it finds what it would
// have found in this process's place: the start-up information as it was received (window state,
// title, desktop, standard handles, what a runtime reserved), every handle that was there to be
// inherited (on the host every descriptor), the priority class, and no console where this process
// has none. What this process has opened itself is not handed on.
//
// The command line is `command`, a path in its command-line form, and `arguments` right behind it
// as they stand, the blank in front included; null stands for this process's own, the very
// characters that followed its name. `flags` may hold CREATE_SUSPENDED. FALSE, with the last error
// set, when the program cannot be started; a line of 32767 characters (of UTF-16) or more is
// refused with ERROR_FILENAME_EXCED_RANGE. The caller closes both handles. Where the standard
// handles came without being named in the start-up information they are made inheritable, for good.
extern "C" BOOL start_as_received(const char *command, const char *arguments, DWORD flags,
                                  PROCESS_INFORMATION *process);

#endif
