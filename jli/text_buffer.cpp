#include "jli/text_buffer.h"

#include <algorithm>
#include <cstring>

void append(text_buffer &buffer, std::string_view text) {
    constexpr size_t smallest_capacity = 256;
    const size_t needed = buffer.length + text.size() + 1;
    if (needed > buffer.capacity) {
        buffer.capacity = std::max({needed, 2 * buffer.capacity, smallest_capacity});
        buffer.text.reset(
            static_cast<char *>(JLI_MemRealloc(buffer.text.release(), buffer.capacity)));
    }
    if (!text.empty()) {
        memcpy(buffer.text.get() + buffer.length, text.data(), text.size());
    }
    buffer.length += text.size();
    buffer.text.get()[buffer.length] = '\0';
}

void append(text_buffer &buffer, const char *text) {
    append(buffer, std::string_view(text));
}

void append(text_buffer &buffer, char byte) {
    append(buffer, std::string_view(&byte, 1));
}

void clear(text_buffer &buffer) {
    buffer.length = 0;
    if (buffer.text != nullptr) {
        buffer.text.get()[0] = '\0';
    }
}
