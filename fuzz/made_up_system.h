#ifndef FUZZ_MADE_UP_SYSTEM_H
#define FUZZ_MADE_UP_SYSTEM_H

// The module and the child of a launcher that is started in the fuzzer: what the input says of them, and what the
// launcher has asked of them.

#include <set>
#include <string>

#include "platform/windows_services.h"

enum child_bit {
    NO_JOB = 1,
    NOT_CREATED = 2,
    NOT_ASSIGNED = 4,
    ACCESS_DENIED = 8,
    NOT_RESUMED = 16,
    NO_EXIT_CODE = 32
};

enum child_state { NO_CHILD, SUSPENDED, RUNNING, ENDED };

struct made_up_system {
    std::string own_path;
    unsigned child_bits;
    DWORD exit_code;

    // What the launcher has asked for so far.
    std::string command_line;
    child_state state;
    bool may_run;
    std::set<HANDLE> open_handles;
    DWORD last_error;
    DWORD status; // that the launcher has to end with, as far as the child goes
};
extern made_up_system made_up;

#endif
