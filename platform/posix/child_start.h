#ifndef PLATFORM_POSIX_CHILD_START_H
#define PLATFORM_POSIX_CHILD_START_H

#include <sys/types.h>

// How a child is held back: not at all, at its first instruction by tracing it, or (where tracing
// is refused, as under a debugger) a little later by SIGSTOP.
enum class hold { none, traced, stopped };

struct started_child {
    pid_t pid;
    hold held;
};

struct program_start {
    const char *program;
    char *const *arguments;
    char *const *environment;
    bool suspended;
    bool hands_on_descriptors;
};

// Starts a program without copying this process's memory. It has the standard streams, no other
// descriptor unless all that are not close-on-exec are handed on, the signal mask of this process,
// and it is killed when this process dies. Returns 0, or the errno of what failed, up to and
// including execve().
int start_child(const program_start &start, started_child *child);

// Lets a held child run.
bool let_run(const started_child &child);

#endif
