#ifndef CORE_ENVIRONMENT_H
#define CORE_ENVIRONMENT_H

#include "jli/text.h"

// The value of a variable in the environment that child processes receive, however long; null when
// it is unset or empty.
text_ptr read_environment(const char *name);

#endif
