// The tokenizer of argument files. The first byte of the input chooses the size of the blocks, the
// rest is the file: it has to have the same tokens in blocks of any size and in one block.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "jli/args.h"

namespace {

void require(bool holds) {
    if (!holds) {
        abort();
    }
}

void check_context(const ArgFileContext &context) {
    require(context.cursor == context.eob);
    require(context.state >= FIND_NEXT && context.state <= IN_TOKEN);
    require(context.quote_char == '"' || context.quote_char == '\'');
    require(context.pieces->size <= context.pieces->capacity);
    const bool between_tokens = context.state == FIND_NEXT || context.state == IN_COMMENT;
    require(!between_tokens || context.pieces->size == 0);
}

std::vector<std::string> tokens_in_blocks(const uint8_t *text, size_t length, size_t block_size) {
    ArgFileContext context = {FIND_NEXT, nullptr, nullptr, '"', JLI_List_new(4)};
    std::vector<std::string> tokens;
    const auto take = [&tokens](char *token) {
        tokens.emplace_back(token);
        JLI_MemFree(token);
    };
    for (size_t at = 0; at < length; at += block_size) {
        // A heap block of its size: a read beyond it is seen.
        const size_t size = std::min(block_size, length - at);
        const std::unique_ptr<char[]> block(new char[size]);
        memcpy(block.get(), text + at, size);
        context.cursor = block.get();
        context.eob = block.get() + size;
        while (char *token = nextToken(&context)) {
            require(context.state == FIND_NEXT && context.pieces->size == 0);
            require(context.pieces->capacity == 4);
            take(token);
        }
        check_context(context);
    }
    if ((context.state == IN_TOKEN || context.state == IN_QUOTE) && context.pieces->size > 0) {
        take(JLI_List_combine(context.pieces));
    }
    JLI_List_free(context.pieces);
    return tokens;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) {
        return 0;
    }
    const size_t block_size = data[0] < 16 ? data[0] + size_t{1} : data[0] * size_t{16};
    const uint8_t *text = data + 1;
    const size_t length = size - 1;
    const auto in_blocks = tokens_in_blocks(text, length, block_size);
    const auto in_one = tokens_in_blocks(text, length, length);
    // What a null byte cuts off depends on where the blocks meet.
    require(memchr(text, 0, length) != nullptr || in_blocks == in_one);

    size_t bytes = 0;
    for (const std::string &token : in_one) {
        bytes += token.size();
    }
    require(bytes + in_one.size() <= length + 1);
    return 0;
}
