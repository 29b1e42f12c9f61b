#ifndef JLI_TEXT_H
#define JLI_TEXT_H

// Heap texts: malloc'ed, and released with free(). While a text is a working value, a text_ptr
// holds it. No text is ever cut: it is formatted into memory of its size.

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

#include "jli/memory.h"

struct free_text {
    void operator()(char *text) const { free(text); }
};
using text_ptr = std::unique_ptr<char, free_text>;

// The text that printf would write. Ends the process like JLI_MemAlloc when memory is out.
text_ptr format_text(const char *format, ...) JLI_PRINTF_LIKE(1, 2);
text_ptr format_text_list(const char *format, va_list arguments) JLI_PRINTF_LIKE(1, 0);

// Writes the text by text_writer, which is write_text(). Everything that the core says comes this
// way: who puts another function there takes it.
void print_text(FILE *stream, const text_ptr &text);
extern void (*text_writer)(FILE *stream, const char *text);

// Whether there is a text and it is not empty.
inline bool is_set(const char *text) {
    return text != nullptr && *text != '\0';
}

// `text` without the white space around it.
std::string_view trimmed(std::string_view text);

// Whether `text` begins with `prefix`. Most differ in the first bytes: no length is asked for.
inline bool begins_with(const char *text, const char *prefix) {
    while (*prefix != '\0' && *text == *prefix) {
        text++;
        prefix++;
    }
    return *prefix == '\0';
}

// Whether it begins with one of them; null ones are passed over.
inline bool begins_with_any(const char *text, std::span<const char *const> prefixes) {
    for (const char *prefix : prefixes) {
        if (prefix != nullptr && begins_with(text, prefix)) {
            return true;
        }
    }
    return false;
}

text_ptr copy_text(std::string_view text);
text_ptr copy_text(const char *text);
text_ptr joined_text(const char *first, const char *second);

// Copies `text` to `to`, without a terminator; returned is what follows the copy.
inline char *put_text(char *to, std::string_view text) {
    memcpy(to, text.data(), text.size());
    return to + text.size();
}

// Blank, tab, line feed, vertical tab, form feed and carriage return.
inline bool is_white_space(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

#endif
