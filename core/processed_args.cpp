#include "core/processed_args.h"

#include <cstring>

#include "core/jlp_vars.h"
#include "core/state_arrays.h"
#include "jli/text.h"

char *processArg(const char *arg) {
    const bool quoted = !are_arguments_whole() && strchr(arg, ' ') != nullptr;
    char *processed = (quoted ? format_text("\"%s\"", arg) : copy_text(arg)).release();
    append_entry(processedArg, &processedArgCount, processed);
    if (quoted) {
        JLI_TraceLauncher("QUOTING WINDOWS ARG DUE TO SPACES:\n"
                          "    Before: %s\n"
                          "    After:  %s\n\n",
                          arg, processed);
    }
    return processed;
}
