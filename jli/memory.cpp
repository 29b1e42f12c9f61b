#include "jli/memory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

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
