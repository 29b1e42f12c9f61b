#ifndef PLATFORM_CONSOLE_H
#define PLATFORM_CONSOLE_H

#include <cstdio>

#include "platform/windows_services.h"

// Writes the text in one piece and flushes the stream; failures are passed over. A console of
// Windows gets it as wide text, as its code page is not the process's; every other stream gets its
// bytes.
extern "C" void write_text(FILE *stream, const char *text);

// Whether a Ctrl-C or Ctrl-Break that has come to this process is also the child's: on Windows
// while the child is on this process's console, which a program of the Windows subsystem is not,
// and once it has ended; on the host, where the child is in the process group, always. `child` is a
// process handle, or null, for which it is FALSE. May be called in a console handler.
extern "C" BOOL gets_interrupts(HANDLE child);

#endif
