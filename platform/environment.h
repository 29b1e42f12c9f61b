#ifndef PLATFORM_ENVIRONMENT_H
#define PLATFORM_ENVIRONMENT_H

// The value of a variable of the environment that child processes receive, in any script and of any
// length: a heap text of the caller's in *value, null when it is unset or empty. False when memory
// is out.
extern "C" bool get_environment_value(const char *name, char **value);

#endif
