#ifndef PLATFORM_FORMAT_H
#define PLATFORM_FORMAT_H

#include <cstdarg>
#include <cstddef>

// vsnprintf by the system's own runtime: the compiler's Windows headers would link in a printf of
// their own, a third of the launcher's size. Returns the length of the whole text, negative on
// failure; `buffer` may be null with a size of 0, and is otherwise large enough for the text and
// its terminator.
extern "C" int format_by_runtime(char *buffer, size_t size, const char *format, va_list arguments);

#endif
