#ifndef JLI_MEMORY_H
#define JLI_MEMORY_H

/* Heap memory. Each call succeeds or ends the process with status 1 after perror() has said why on
 * standard error ("malloc", "realloc", "strdup"). Blocks belong to the caller and are given back
 * with JLI_MemFree(), which is free(). */

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

void *JLI_MemAlloc(size_t size);
void *JLI_MemRealloc(void *block, size_t size);
char *JLI_StringDup(const char *text);
void JLI_MemFree(void *block);

#ifdef __cplusplus
}
#endif

#ifdef __cplusplus
// How they end the process: `function` is the one that had no memory.
[[noreturn]] void end_without_memory(const char *function);
#endif

/* Marks a function that formats as printf does, so that the compiler checks its calls. */
#ifdef __GNUC__
#define JLI_PRINTF_LIKE(text, first) __attribute__((format(__printf__, text, first)))
#else
#define JLI_PRINTF_LIKE(text, first)
#endif

#endif
