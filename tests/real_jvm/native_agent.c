// A stand-in for the native agent: the entry that a Java runtime looks for, and no more.

#include <stdint.h>
#include <stdio.h>

int32_t Agent_OnLoad(void *vm, char *options, void *reserved);

int32_t Agent_OnLoad(void *vm, char *options, void *reserved) {
    (void)vm;
    (void)reserved;
    printf("native agent ran%s%s\n", options == NULL ? "" : ": ", options == NULL ? "" : options);
    fflush(stdout);
    return 0;
}
