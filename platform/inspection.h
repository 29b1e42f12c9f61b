#ifndef PLATFORM_INSPECTION_H
#define PLATFORM_INSPECTION_H

// Looks at files that leave them as they are: for a tool that says what a start would do.

#include <cstddef>
#include <cstdio>

#include "platform/windows_services.h"

// Whether open_text_file() would open the path for writing, as far as the file, or where there is
// none its folder, tells.
extern "C" bool could_be_written(const char *path);

// The system's error when the file cannot be started as a program, as far as its beginning tells; 0
// when nothing speaks against it.
extern "C" DWORD error_of_program(const char *path);

// What the file holds, in heap memory of the caller's with a zero byte behind it; null when it
// cannot be read or memory is out.
extern "C" char *bytes_of_file(const char *path, size_t *size);

// Calls `take` with each name in the folder, in no order; not at all where it cannot be listed.
extern "C" void list_folder(const char *folder, void (*take)(void *context, const char *name),
                            void *context);

// The columns of the terminal that the stream is, 0 where it is none.
extern "C" int columns_of(FILE *stream);

#endif
