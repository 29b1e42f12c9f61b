#ifndef TESTS_PLATFORM_CHILD_PROGRAM_H
#define TESTS_PLATFORM_CHILD_PROGRAM_H

#include <string>

#include "platform/windows_services.h"

// The test program is its own child: started with QVL_CHILD in its environment it does what that
// says instead of running tests. See child_program.cpp for the roles.
int play_role(const char *role, int argc, char **argv);

// This program in double quotes.
std::string own_program();

// A child in a role, with the handles of CreateProcessA; `started` is false and `error` set
// otherwise.
struct child {
    bool started;
    DWORD error;
    PROCESS_INFORMATION process;
};
child start_child_as(const char *role, const std::string &command_line, DWORD flags = 0);

// Waits for the child's end, closes its handles and returns its exit code.
DWORD end_of(const child &started);

// Runs a child to its end; what it wrote to standard output, and "exit <code>" or "error <number>".
std::string run_as(const char *role, const std::string &command_line);

HANDLE job_with_limits(DWORD flags);

void pause_for(int milliseconds);

#endif
