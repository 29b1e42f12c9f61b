#include "jli/text.h"

#include <cstdio>
#include <cstring>

text_ptr format_text_list(const char *format, va_list arguments) {
    va_list measured;
    va_copy(measured, arguments);
    const int length = vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        perror("vsnprintf");
        exit(1);
    }
    const size_t size = static_cast<size_t>(length) + 1;
    text_ptr text(static_cast<char *>(JLI_MemAlloc(size)));
    vsnprintf(text.get(), size, format, arguments);
    return text;
}

text_ptr format_text(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    text_ptr text = format_text_list(format, arguments);
    va_end(arguments);
    return text;
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

void fill_text_buffer(char *buffer, std::string_view text) {
    if (text.size() >= TEXT_SIZE) {
        refuse_long_text(text);
    }
    memmove(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
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
    fprintf(stderr, "Error: text too long (at most %d bytes): %.60s...\n", TEXT_SIZE - 1,
            shown.get());
    exit(1);
}

void refuse_entry(const char *what, int capacity) {
    const text_ptr message =
        format_text("Error: too many %s (at most %d)\n", what, capacity);
    if (LOG_FILE_FD != nullptr) {
        fputs(message.get(), LOG_FILE_FD);
        fflush(LOG_FILE_FD);
    }
    fputs(message.get(), stderr);
    exit(1);
}
