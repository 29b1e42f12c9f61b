#ifndef CORE_STATE_TEXT_H
#define CORE_STATE_TEXT_H

// The texts of the launcher state, which are filled or extended in place. None is ever cut: what
// does not fit into the place that is given is refused.

#include <string_view>

#include "jli/text.h"

// The bytes of a text of the launcher state that is filled or extended in place, terminator
// included, and of every bare output buffer that an interface hands over.
constexpr int TEXT_SIZE = 100000;

// A new, empty text of TEXT_SIZE bytes.
char *new_state_text();

// Gives *slot, null or a heap text of at least TEXT_SIZE bytes, this content. The block is replaced
// by a larger one where the text asks for it. `text` may not lie in *slot.
void assign_text(char **slot, std::string_view text);
void assign_text(char **slot, const char *text);

// Appends to the text in a bare output buffer of TEXT_SIZE bytes. A text that does not fit is
// refused: "Error: text too long" on standard error, exit status 1, the buffer untouched.
void append_to_state_text(char *buffer, std::string_view text);
[[noreturn]] void refuse_long_text(std::string_view text);

// Frees the text and sets the pointer to null.
void release_text(char **slot);

// Refuses the entry that would not fit into a full array of the launcher state: "Error: too many"
// with `what` the array holds, on standard error and in the trace log when one is open; exit
// status 1.
[[noreturn]] void refuse_entry(const char *what, int capacity);

#endif
