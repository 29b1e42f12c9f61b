#ifndef JLI_TEXT_H
#define JLI_TEXT_H

// Heap texts. What the launcher state keeps is malloc'ed and released with free(); while a text is
// a working value, a text_ptr holds it. No text is ever cut: it is formatted into memory of its
// size, or, where the place for it is given, refused.

#include <cstdarg>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "jli/jli_util.h"

struct free_text {
    void operator()(char *text) const { free(text); }
};
using text_ptr = std::unique_ptr<char, free_text>;

// The bytes of a text of the launcher state that is filled or extended in place, terminator
// included, and of every bare output buffer that an interface hands over.
constexpr int TEXT_SIZE = 100000;

// The text that printf would write. Ends the process like JLI_MemAlloc when memory is out.
text_ptr format_text(const char *format, ...) JLI_PRINTF_LIKE(1, 2);
text_ptr format_text_list(const char *format, va_list arguments) JLI_PRINTF_LIKE(1, 0);

// Writes the text as write_text() does.
void print_text(FILE *stream, const text_ptr &text);

text_ptr copy_text(std::string_view text);

// A new, empty text of TEXT_SIZE bytes.
char *new_text_buffer();

// Gives *slot, null or a heap text of at least TEXT_SIZE bytes, this content. The block is replaced
// by a larger one where the text asks for it. `text` may not lie in *slot.
void assign_text(char **slot, std::string_view text);

// Appends to the text in a bare output buffer of TEXT_SIZE bytes. A text that does not fit is
// refused: "Error: text too long" on standard error, exit status 1, the buffer untouched.
void append_to_text_buffer(char *buffer, std::string_view text);
[[noreturn]] void refuse_long_text(std::string_view text);

// Frees the text and sets the pointer to null.
void release_text(char **slot);

// Refuses the entry that would not fit into a full array of the launcher state: "Error: too many"
// with `what` the array holds, on standard error and in the trace log when one is open; exit
// status 1.
[[noreturn]] void refuse_entry(const char *what, int capacity);

#endif
