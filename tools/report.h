#ifndef TOOLS_REPORT_H
#define TOOLS_REPORT_H

#include "tools/request.h"

// Keeps the variables that a launch may change, as they are before it.
void keep_variables();

// Writes what came of the launch to standard output: the verdict, what is wrong, what would be
// started.
void write_report(const request &asked);

#endif
