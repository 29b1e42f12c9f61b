#ifndef PLATFORM_ENVIRONMENT_H
#define PLATFORM_ENVIRONMENT_H

#include <cstddef>

// GetEnvironmentVariableA, with its results, for values in any script and of any length: the length
// of the value of a variable of the environment that child processes receive; 0 when it is unset or
// empty; the size needed, with the terminator, when that is more than `size`; SIZE_MAX, which
// nobody has room for, when the value cannot be had, as memory is out.
extern "C" size_t get_environment_value(const char *name, char *buffer, size_t size);

#endif
