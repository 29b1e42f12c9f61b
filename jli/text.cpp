#include "jli/text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/console.h"
#include "platform/format.h"

text_ptr format_text_list(const char *format, va_list arguments) {
    va_list measured;
    va_copy(measured, arguments);
    const int length = format_by_runtime(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        perror("format");
        exit(1);
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

void print_text(FILE *stream, const text_ptr &text) {
    write_text(stream, text.get());
}

text_ptr copy_text(std::string_view text) {
    text_ptr copy(static_cast<char *>(JLI_MemAlloc(text.size() + 1)));
    memcpy(copy.get(), text.data(), text.size());
    copy.get()[text.size()] = '\0';
    return copy;
}

char *new_text_buffer() {
    char *buffer = static_cast<char *>(JLI_MemAlloc(TEXT_SIZE));
    buffer[0] = '\0';
    return buffer;
}

void assign_text(char **slot, std::string_view text) {
    const size_t size = text.size() + 1;
    if (*slot == nullptr || size > TEXT_SIZE) {
        free(*slot);
        *slot = static_cast<char *>(JLI_MemAlloc(std::max<size_t>(size, TEXT_SIZE)));
    }
    memcpy(*slot, text.data(), text.size());
    (*slot)[text.size()] = '\0';
}

void release_text(char **slot) {
    free(*slot);
    *slot = nullptr;
}

void append_to_text_buffer(char *buffer, std::string_view text) {
    const size_t length = strlen(buffer);
    if (length + text.size() >= TEXT_SIZE) {
        refuse_long_text(text);
    }
    memcpy(buffer + length, text.data(), text.size());
    buffer[length + text.size()] = '\0';
}

void refuse_long_text(std::string_view text) {
    const text_ptr shown = copy_text(text);
    print_text(stderr, format_text("Error: text too long (at most %d bytes): %.60s...\n",
                                   TEXT_SIZE - 1, shown.get()));
    exit(1);
}

void refuse_entry(const char *what, int capacity) {
    const text_ptr message = format_text("Error: too many %s (at most %d)\n", what, capacity);
    if (LOG_FILE_FD != nullptr) {
        print_text(LOG_FILE_FD, message);
    }
    print_text(stderr, message);
    exit(1);
}
