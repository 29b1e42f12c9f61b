#ifndef JLI_TRACE_H
#define JLI_TRACE_H

// The trace (jli_util.h has its C functions), the faults (what keeps a program from being started)
// and the ends of the process that have a message.

#include <cstdio>

#include "jli/jli_util.h"
#include "jli/text.h"

// Writes a message of the trace to the log and to the stream, as far as the trace goes there.
void write_trace(FILE *stream, const text_ptr &message);

// Writes the message to standard error as one line, whatever line ends it holds.
void say_fault(const char *message);

// Says the message where faults are said, unless a trace has shown it already.
void say_traced_fault(const char *message);

// Traces the message, and says it where faults are said.
void trace_fault(const char *message);

// Ends the process: after a fault, with a message that standard error always gets, and with one
// that has been said already.
[[noreturn]] void end_with_fault(int status, const text_ptr &message);
[[noreturn]] void end_with_error(int status, const text_ptr &message);
[[noreturn]] void end_after(int status, const text_ptr &message);

#endif
