// A stand-in for the native agent: the entry that a Java runtime looks for, and no more.

#include <stdint.h>
#include <stdio.h>

int32_t Agent_OnLoad(void *vm, char *options, void *reserved);

int32_t Agent_OnLoad(void *vm, char *options, void *reserved) {
    printf("native agent ran%s\n", vm == NULL || options != NULL || reserved != NULL ? " with options" : "");
    return fflush(stdout);
}
