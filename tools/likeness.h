#ifndef TOOLS_LIKENESS_H
#define TOOLS_LIKENESS_H

#include <string_view>

// How many letters have to be put in, taken out, changed, or exchanged with their neighbour to make
// the one text of the other, letter case aside; more than LIKE when it is more or a text is long.
constexpr int LIKE = 2;
int unlikeness(std::string_view one, std::string_view other);

#endif
