#ifndef TOOLS_VALUE_REVIEW_H
#define TOOLS_VALUE_REVIEW_H

#include "core/settings.h"
#include "jli/text.h"

// Adds what is wrong with the value of a setting, the trimmed text behind its "=", to the findings.
// The lines are reviewed in their order: a value that an earlier line has set is lost.
void review_value(int number, const setting &row, text_ptr value);

// What a path of launcher.cfg or of the environment cannot hold, with its mend; null when nothing
// speaks against it. `place` begins the sentence.
text_ptr path_fault(const char *place, std::string_view path);

#endif
