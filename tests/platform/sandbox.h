#ifndef TESTS_PLATFORM_SANDBOX_H
#define TESTS_PLATFORM_SANDBOX_H

#include <string>
#include <string_view>

// Makes the empty folder C:\qvl_test\d, with a file and a folder of which the tests know, and
// enters it. leave_sandbox() removes it.
void enter_sandbox();
void leave_sandbox();

// The same for the folder C:\qvl_test itself; returns false when the system refuses.
bool enter_empty_folder();
void remove_folder();

// This program's file as the C++ library takes it.
const char *own_file();

// Starts this program by other means than the platform layer, so that it can outlive its parent.
void start_apart(const char *argument);

void write_file(const char *path, std::string_view bytes);

#endif
