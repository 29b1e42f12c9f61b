#include "jli/memory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "jli/ending.h"

namespace {

// A block that could not be had ends the process; the wrapped function's name says which.
template <typename Block>
Block *or_exit(Block *block, const char *function) {
    if (block == nullptr) {
        end_without_memory(function);
    }
    return block;
}

} // namespace

void end_without_memory(const char *function) {
    perror(function);
    end_process(1, "out of memory");
}

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
