#ifndef JLI_ENDING_H
#define JLI_ENDING_H

// The one place where the process is ended.

// Who is told of it first; null: nobody (set_jlp_end_listener of core/native_invocation.h).
extern void (*end_listener)(const char *message, int status);

// Tells the listener, once, and ends the process. The message has no line end and has been said as
// far as its own rule goes.
[[noreturn]] void end_process(int status, const char *message);

#endif
