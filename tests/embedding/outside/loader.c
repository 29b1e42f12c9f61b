/* Does what README's program does with a library that it loads while it runs. Its own functions and
 * variables of the same names are left alone. */

#include <stdio.h>
#include <stdlib.h>

#include "loading.h"

int lhs_count = 42, rhs_count = 42;
char *lhs[1], *rhs[1], *jvm_home;
void parse_arguments(void) {
    abort();
}

static void print(char **list, const int *count) {
    for (int i = 0; i < *count; i++) {
        puts(list[i]);
    }
}

int main(int argc, char **argv) {
    void *core = LOAD(LIBRARY);
    if (core == NULL || argc < 2) {
        return 1;
    }
    void (*initialize)(const char *, int) = FIND(core, "initialize_jlp_for_native_invocation");
    void (*parse)(int, char **) = FIND(core, "parse_arguments");
    initialize(argv[1], 0);
    parse(argc - 2, argv + 2);
    print(FIND(core, "lhs"), FIND(core, "lhs_count"));
    print(FIND(core, "rhs"), FIND(core, "rhs_count"));
    return lhs_count != 42 || rhs_count != 42 || lhs[0] != NULL || jvm_home != NULL;
}
