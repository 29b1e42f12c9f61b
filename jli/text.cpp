#include "jli/text.h"

#include <cstdio>

#include "jli/ending.h"
#include "platform/console.h"
#include "platform/format.h"

text_ptr format_text_list(const char *format, va_list arguments) {
    va_list measured;
    va_copy(measured, arguments);
    const int length = format_by_runtime(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        perror("format");
        end_process(1, "a text cannot be formatted");
    }
    const size_t size = static_cast<size_t>(length) + 1;
    text_ptr text(static_cast<char *>(JLI_MemAlloc(size)));
    format_by_runtime(text.get(), size, format, arguments);
    return text;
}

text_ptr format_text(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    text_ptr text = format_text_list(format, arguments);
    va_end(arguments);
    return text;
}

void (*text_writer)(FILE *stream, const char *text) = write_text;

void print_text(FILE *stream, const text_ptr &text) {
    text_writer(stream, text.get());
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_white_space(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_white_space(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

text_ptr copy_text(std::string_view text) {
    text_ptr copy(static_cast<char *>(JLI_MemAlloc(text.size() + 1)));
    *put_text(copy.get(), text) = '\0';
    return copy;
}

text_ptr copy_text(const char *text) {
    return copy_text(std::string_view(text));
}

text_ptr joined_text(const char *first, const char *second) {
    const size_t length = strlen(first);
    const size_t size = strlen(second) + 1;
    text_ptr joined(static_cast<char *>(JLI_MemAlloc(length + size)));
    memcpy(joined.get(), first, length);
    memcpy(joined.get() + length, second, size);
    return joined;
}
