#ifndef CORE_PROCESSED_ARGS_H
#define CORE_PROCESSED_ARGS_H

#ifdef __cplusplus
extern "C" {
#endif

/* The command-line form of an argument: a copy, in double quotes when it holds a blank (traced
 * then), unless the invocation is native or the arguments are quoted later. The copy belongs to the
 * pool processedArg, in whose next slot it stands; a full pool ends the process with status 1. */
char *processArg(const char *arg);

#ifdef __cplusplus
}

#include "core/jlp_vars.h"

// Whether arguments stay as they are: a native host gets each by itself, and what quotes each later
// must not find quotes that are none of the argument's own.
inline bool are_arguments_whole() {
    return is_native_invocation || quotes_arguments_later;
}
#endif

#endif
