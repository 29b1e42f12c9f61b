#ifndef CORE_HOME_FAULTS_H
#define CORE_HOME_FAULTS_H

// What validate_directories asks of each home, and what is started below them.

#include "core/jlp_vars.h"
#include "jli/text.h"

// The homes, in the order in which they are settled and tested.
inline constexpr char **HOMES[] = {&container_home, &jvm_home, &quorvel_home};

// The tests of validate_directories of one of them: the message of the one that fails, or null,
// with the trailing separator taken off, when the home passes.
text_ptr home_fault(char **home);

// The file that the launcher starts: `executable_name` in bin_dir below the home of the launch
// mode.
text_ptr target_path(const char *executable_name);

// What the front end says of a target that it may not start, and of one that did not end with 0.
text_ptr invalid_command_text(const char *target);

#endif
