#ifndef TESTS_PLATFORM_SANDBOX_H
#define TESTS_PLATFORM_SANDBOX_H

#include <string>
#include <string_view>

// Enters the new, empty folder C:\qvl_test; leave_sandbox() removes it.
void enter_sandbox();
void leave_sandbox();

// This program's file as the C++ library takes it.
const char *own_file();

// Starts this program by other means than the platform layer, so that it can outlive its parent.
void start_apart(const char *argument);

void write_file(const char *path, std::string_view bytes);

#endif
