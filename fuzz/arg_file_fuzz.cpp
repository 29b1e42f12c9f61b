// The tokenizer of argument files. The first byte of the input chooses the size of the blocks, the
// rest is the file: it has to have the same tokens in blocks of any size and in one block.

#include <cstdint>

#include "tests/jli/tokens.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) {
        return 0;
    }
    const size_t block_size = data[0] < 16 ? data[0] + size_t{1} : data[0] * size_t{16};
    const std::string text(data + 1, data + size);
    const std::string in_one = tokens_in_blocks(text, text.size());
    const std::string in_blocks = tokens_in_blocks(text, block_size);
    // What a null byte cuts off depends on where the blocks meet.
    assert(text.find('\0') != std::string::npos || in_blocks == in_one);
    assert(in_one.size() <= text.size() + 1);
    return 0;
}
