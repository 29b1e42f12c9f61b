#ifndef TESTS_SUPPORT_TRACE_H
#define TESTS_SUPPORT_TRACE_H

// Tracing cannot be switched off again. What a test wants to see of it is caught at the trace
// function, to which the linker hands the product's calls.

#include <functional>
#include <string>

// What `body` traces. Neither the trace log nor standard output receives it.
std::string traced_by(const std::function<void()> &body);

#endif
