#ifndef CORE_HOME_FAULTS_H
#define CORE_HOME_FAULTS_H

// What validate_directories asks of each home, and what is started below them.

#include "jli/text.h"

// The tests of validate_directories, home by home: the message of the one that fails, or null, with
// the trailing separator taken off, when the home passes.
text_ptr container_home_fault();
text_ptr jvm_home_fault();
text_ptr quorvel_home_fault();

// The file that the launcher starts: `executable_name` in bin_dir below the home of the launch
// mode.
text_ptr target_path(const char *executable_name);

// What the front end says of a target that it may not start, and of one that did not end with 0.
text_ptr invalid_command_text(const char *target);

#endif
