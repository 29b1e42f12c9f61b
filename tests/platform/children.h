#ifndef TESTS_PLATFORM_CHILDREN_H
#define TESTS_PLATFORM_CHILDREN_H

// Children as the platform layer starts them. All tests run in C:\qvl_test\d, where the folder e
// and the file g.txt are; beside d is prog.exe, the stand-in for a Java runtime.

#include <gtest/gtest.h>

#include "platform/windows_services.h"
#include "tests/support/programs.h"

// Null handles when it cannot be started.
PROCESS_INFORMATION start_command(std::string command_line, DWORD flags = 0);

// Waits for the child's end, closes its handles and returns its exit code.
DWORD end_of(const PROCESS_INFORMATION &process);

// Runs a child to its end: the output, an argument that prog.exe reports as "[argument]", and
// "exit <code>", or "error <number>".
std::string run(const std::string &command_line, DWORD flags = 0);

// The same for a child of start_as_received().
std::string run_as_received(const char *command, const char *arguments);

// A table's rows "given -> expected" in their two halves; "~" in either stands for `tilde`.
using table = std::vector<std::pair<std::string, std::string>>;
table rows(std::initializer_list<std::string> texts, const std::string &tilde);

#endif
