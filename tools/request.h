#ifndef TOOLS_REQUEST_H
#define TOOLS_REQUEST_H

// What explain_launch is asked to explain. Its texts last as long as the process.

#include "jli/text.h"

struct request {
    const char *launcher_home = nullptr; // null: that of explain_launch itself
    const char *library = nullptr;       // a native host's start
    const char *name = nullptr;          // of the launcher's file; null: java.exe
    bool shows_rewriting = false, traces = false, one_per_line = false;
    // What stands behind "--": as the runtime has split it, and as it stood.
    int count = 0;
    char *const *texts = nullptr;
    const char *line = "";
};

// Reads the arguments of main() and the process's own command line. --help and --version end the
// process with status 0, a wrong usage ends it with 2 and names what is wrong on standard error.
request read_request(int argc, char *const *argv);
[[noreturn]] void refuse_usage(const text_ptr &what);

#endif
