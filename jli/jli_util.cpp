#include "jli/jli_util.h"

#include <cstdlib>
#include <cstring>

#include "jli/text.h"

namespace {

int _launcher_debug = 0;

// A block that could not be had ends the process; the wrapped function's name says which.
template <typename Block>
Block *or_exit(Block *block, const char *function) {
    if (block == nullptr) {
        perror(function);
        exit(1);
    }
    return block;
}

} // namespace

void *JLI_MemAlloc(size_t size) {
    return or_exit(malloc(size), "malloc");
}

void *JLI_MemRealloc(void *block, size_t size) {
    return or_exit(realloc(block, size), "realloc");
}

char *JLI_StringDup(const char *text) {
    return or_exit(strdup(text), "strdup");
}

void JLI_MemFree(void *block) {
    free(block);
}

void JLI_SetTraceLauncher() {
    _launcher_debug = 1;
}

int JLI_IsTraceLauncher() {
    return _launcher_debug;
}

void JLI_TraceLauncher(const char *format, ...) {
    if (_launcher_debug != 1) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    const text_ptr message = format_text_list(format, arguments);
    va_end(arguments);
    if (LOG_FILE_FD != nullptr) {
        print_text(LOG_FILE_FD, message);
    }
    print_text(stdout, message);
}
