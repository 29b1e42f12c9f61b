/* A host's own names, which are names inside the core too. */

#include <stdlib.h>

int bin = 42, jvm_options_count = 42, processedArgCount = 42, label, version;

void split(void) {
    abort();
}
void process_single_arg(void) {
    abort();
}
void JLI_TraceLauncher(void) {
    abort();
}
