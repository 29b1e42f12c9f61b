#ifndef JLI_KEPT_H
#define JLI_KEPT_H

// Blocks that a command line leaves behind and that nobody gives back one by one: they live until a
// native host releases them all, or the process ends.

#include "jli/jli_util.h"

// They, or null while there are none.
extern JLI_List kept_blocks;

void keep_until_release(void *block);
void release_kept_blocks();

#endif
