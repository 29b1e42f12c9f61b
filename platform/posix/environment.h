#ifndef PLATFORM_POSIX_ENVIRONMENT_H
#define PLATFORM_POSIX_ENVIRONMENT_H

// The environment of SetEnvironmentVariableA as execve() takes it. It stays the environment's.
char *const *child_environment();

#endif
