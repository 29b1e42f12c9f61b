#ifndef TOOLS_LINE_REVIEW_H
#define TOOLS_LINE_REVIEW_H

#include <string_view>

// Adds what is wrong with a line of launcher.cfg to the findings; the lines are reviewed in their
// order, each without its line end. Returns whether it is a setting.
bool review_line(int number, std::string_view line);

#endif
