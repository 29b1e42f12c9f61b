#ifndef JLI_TEXT_BUFFER_H
#define JLI_TEXT_BUFFER_H

// A working text that grows.

#include <string_view>

#include "jli/text.h"

struct text_buffer {
    text_ptr text; // null while nothing has been put in
    size_t length = 0;
    size_t capacity = 0;

    std::string_view view() const { return {text.get(), length}; }
    const char *c_str() const { return text == nullptr ? "" : text.get(); }
};

// Appends; what is appended may not lie in the buffer itself.
void append(text_buffer &buffer, std::string_view text);
void append(text_buffer &buffer, const char *text);
void append(text_buffer &buffer, char byte);

// Empties the buffer and keeps its memory.
void clear(text_buffer &buffer);

#endif
