#include "jli/kept.h"

JLI_List kept_blocks = nullptr;

void keep_until_release(void *block) {
    if (kept_blocks == nullptr) {
        constexpr size_t usual_command_line = 16;
        kept_blocks = JLI_List_new(usual_command_line);
    }
    JLI_List_add(kept_blocks, static_cast<char *>(block));
}

void release_kept_blocks() {
    JLI_List_free(kept_blocks);
    kept_blocks = nullptr;
}
