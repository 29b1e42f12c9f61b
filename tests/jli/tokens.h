#ifndef TESTS_JLI_TOKENS_H
#define TESTS_JLI_TOKENS_H

// The tokenizer of argument files as its callers drive it, for a test and a fuzz target.

#include <cassert>
#include <string>
#include <vector>

#include "jli/args.h"

// "a|b|" for the strings a and b.
inline std::string shown(JLI_List list) {
    std::string text;
    for (size_t i = 0; i < list->size; i++) {
        text += list->elements[i] + std::string("|");
    }
    return text;
}

// What nextToken() and the end of the file give, block by block. Each block has a heap block of its
// size, so that a sanitizer sees a read beyond it.
inline std::string tokens_in_blocks(const std::string &file, size_t block_size) {
    ArgFileContext context = {FIND_NEXT, nullptr, nullptr, '"', JLI_List_new(4)};
    JLI_List tokens = JLI_List_new(8);
    for (size_t at = 0; at < file.size(); at += block_size) {
        const std::string part = file.substr(at, block_size);
        const std::vector<char> block(part.begin(), part.end());
        context.cursor = block.data();
        context.eob = block.data() + block.size();
        while (char *token = nextToken(&context)) {
            assert(context.state == FIND_NEXT && context.pieces->size == 0 && context.pieces->capacity == 4);
            JLI_List_add(tokens, token);
        }
        assert(context.cursor == context.eob && (context.pieces->size == 0 || context.state > IN_COMMENT));
    }
    if ((context.state == IN_TOKEN || context.state == IN_QUOTE) && context.pieces->size > 0) {
        JLI_List_add(tokens, JLI_List_combine(context.pieces));
    }
    const std::string text = shown(tokens);
    JLI_List_free(context.pieces);
    JLI_List_free(tokens);
    return text;
}

#endif
