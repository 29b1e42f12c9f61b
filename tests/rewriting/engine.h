#ifndef TESTS_REWRITING_ENGINE_H
#define TESTS_REWRITING_ENGINE_H

// The engine as a process meets it that has just loaded its configuration. The homes are C:\L of
// the launcher, C:\C of the container, C:\J of the JVM and C:\Q of Quorvel.

#include <functional>
#include <string>
#include <vector>

#include "tests/support/disk.h"

using texts = std::vector<std::string>;

texts split_at(const std::string &text, const std::string &separator);

// The rows of a table, a line each: columns with "->" between them, "//" before a remark.
std::vector<texts> rows_of(const std::string &table);

// The arguments of a list, which is written with "|" between them.
texts entries_of(const std::string &list);

// The state of a process that has loaded no configuration yet.
void forget_configuration();

// Loads launcher.cfg with these lines besides the launch mode and the homes. `how` is the mode and
// the Java versions of host and guest, as in "legacy 9 8"; the mode "native" is that of a native
// host.
void start(const std::string &how, const std::string &config = "");

// Rewrites a list of arguments.
void rewrite(const std::string &args);

// The rewritten lists, with the test's disk as drive C:.
std::string host_list();
std::string guest_list();

// Sets a variable as the process received it; an empty value removes it.
void set_variable(const std::string &name, const std::string &value);

// The variable as a child receives it; "(unset)" when it does not.
std::string child_variable(const std::string &name);

// What `body` says, which nobody else receives.
std::string traced_by(const std::function<void()> &body);

#endif
