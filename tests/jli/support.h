#ifndef TESTS_JLI_SUPPORT_H
#define TESTS_JLI_SUPPORT_H

#include <cstddef>
#include <string>
#include <vector>

#include "jli/jli_util.h"

using strings = std::vector<std::string>;

strings strings_of(JLI_List list);

// Files of the folder that the tests run in, byte for byte.
void write_file(const char *path, const std::string &content);
std::string content_of(const char *path);

constexpr char LOG_PATH[] = "jli_test.log";
// A file that can be opened but not read.
constexpr char UNREADABLE_PATH[] = "unreadable.args";

// Tracing on, with a fresh log at LOG_PATH. It cannot be switched off: for children of the test
// only.
void trace_to_log();

// Calls of malloc(), realloc() and strdup(), so far.
extern size_t allocations;
extern bool next_allocation_fails;

#endif
