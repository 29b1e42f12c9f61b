#include "platform/command_line.h"

#include <cstdlib>
#include <cstring>

namespace {

char *const *own_arguments = nullptr;

// The C library hands the arguments of main() to what runs before it.
[[gnu::constructor]] void keep_arguments(int, char **argv) {
    own_arguments = argv;
}

} // namespace

char *own_arguments_text() {
    char *const *first = own_arguments + (*own_arguments != nullptr);
    size_t size = 1;
    for (char *const *argument = first; *argument != nullptr; argument++) {
        size += 1 + 2 * strlen(*argument) + QUOTING_BYTES;
    }
    char *text = static_cast<char *>(malloc(size));
    if (text == nullptr) {
        return nullptr;
    }
    char *end = text;
    for (char *const *argument = first; *argument != nullptr; argument++) {
        *end++ = ' ';
        end = quote_argument(*argument, end);
    }
    *end = '\0';
    return text;
}
