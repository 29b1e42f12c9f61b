#ifndef CORE_CHILD_RUN_H
#define CORE_CHILD_RUN_H

// A run of the child with arguments that are a piece of a command line already.

#include "jli/text.h"
#include "platform/windows_services.h"

// A piece of a command line, with the blank in front that sets it off from the program.
struct child_arguments {
    text_ptr text;
    bool are_own_line = false; // the launcher's own, character by character
};

// The texts as they are, joined with blanks.
child_arguments joined_arguments(char *const *texts, int count);

// execute_command with arguments that are joined already. While is_transparent the child is started
// as the launcher was (start_in_job_as_received), and an error that keeps it from that is traced
// and said.
int run_child(const char *command, const child_arguments &arguments);

// What it says of `error`, the system's, that has kept `command` from being started.
text_ptr start_fault_text(const char *command, DWORD error);

#endif
