#ifndef CORE_PROCESSED_ARGS_H
#define CORE_PROCESSED_ARGS_H

#ifdef __cplusplus
extern "C" {
#endif

/* The command-line form of an argument: a copy, in double quotes when it holds a blank and the
 * invocation is not native (traced then). The copy belongs to the pool processedArg, in whose next
 * slot it stands; a full pool ends the process with status 1. */
char *processArg(const char *arg);

#ifdef __cplusplus
}
#endif

#endif
