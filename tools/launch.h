#ifndef TOOLS_LAUNCH_H
#define TOOLS_LAUNCH_H

// The stages of a launch up to the start itself, by the launcher's own functions.

#include <iterator>

#include "core/child_run.h"
#include "core/home_faults.h"
#include "core/settings.h"
#include "tools/request.h"

struct launch {
    bool goes_through = false;
    int status = 0;                   // that the launcher ends with where the launch fails
    text_ptr message;                 // what it says then, in one line, without the line end
    const setting *failing = nullptr; // that the failing stage goes by, or null
    DWORD start_error = 0;            // the system's, of a target that is no program
    text_ptr target;                  // null where that stage was not reached
    const char *command = nullptr;    // the target as it stands in the command line
    child_arguments arguments;        // text null where there is no command line
    bool is_rewritten = false;        // lhs and rhs hold the arguments
    bool has_homes = false;           // they are settled
};
extern launch the_launch;

struct home {
    const setting *row;
    bool is_needed;
    bool is_configured; // by launcher.cfg
};
extern home homes[std::size(HOMES)]; // in the order of the checks; set with has_homes

// The launch mode that needs nothing but a Java home.
const char *plain_mode();

// Goes through the stages of the launch that find_installation() has found, or of a native host,
// and fills the_launch. Where the core ends the process, `at_end` is called instead: it reports,
// and returns the status to end with. What the core says is kept, or traced on standard error;
// the trace log is only tried.
void run_stages(const request &asked, int (*at_end)());

#endif
