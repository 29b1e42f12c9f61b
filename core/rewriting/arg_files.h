#ifndef CORE_REWRITING_ARG_FILES_H
#define CORE_REWRITING_ARG_FILES_H

#include "jli/jli_util.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 1 when the argument begins with "@" (traced), else 0. */
int is_arg_file(const char *arg);

/* The arguments of the argument file that `arg`, "@" included, names; a new list of the caller's,
 * possibly empty. Null, traced, for a lone "@" and where "@" arguments are no longer expanded. A
 * file that cannot be read ends the process with status 1. */
JLI_List get_arg_list_from_arg_file(const char *arg);

#ifdef __cplusplus
}
#endif

#endif
