#include "core/state_text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "jli/trace.h"

char *new_state_text() {
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

void assign_text(char **slot, const char *text) {
    assign_text(slot, std::string_view(text));
}

void release_text(char **slot) {
    free(*slot);
    *slot = nullptr;
}

void append_to_state_text(char *buffer, std::string_view text) {
    const size_t length = strlen(buffer);
    if (length + text.size() >= TEXT_SIZE) {
        refuse_long_text(text);
    }
    memcpy(buffer + length, text.data(), text.size());
    buffer[length + text.size()] = '\0';
}

void refuse_long_text(std::string_view text) {
    const text_ptr shown = copy_text(text);
    end_with_error(1, format_text("Error: text too long (at most %d bytes): %.60s...\n",
                                  TEXT_SIZE - 1, shown.get()));
}

void refuse_entry(const char *what, int capacity) {
    const text_ptr message = format_text("Error: too many %s (at most %d)\n", what, capacity);
    if (LOG_FILE_FD != nullptr) {
        print_text(LOG_FILE_FD, message);
    }
    end_with_error(1, message);
}
