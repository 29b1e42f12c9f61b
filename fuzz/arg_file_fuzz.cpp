// The tokenizer of argument files. The first byte of the input chooses the size of the blocks, the rest is the file: it
// has to have the same tokens in blocks of any size, in one block and read from a stream.

#include <cstdint>
#include <cstdio>

#include "tests/jli/tokens.h"

namespace {

std::string tokens_of_file(std::string text) {
    FILE *file = fmemopen(text.data(), text.size(), "r");
    JLI_List tokens = readArgFile(file);
    fclose(file);
    const std::string in_file = shown(tokens);
    JLI_List_free(tokens);
    return in_file;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 1) {
        const std::string text(data + 1, data + size);
        const std::string in_one = tokens_in_blocks(text, text.size());
        const std::string in_blocks = tokens_in_blocks(text, data[0] < 16 ? data[0] + size_t{1} : data[0] * size_t{16});
        // What a null byte cuts off depends on where the blocks meet.
        const bool is_cut = text.find('\0') != std::string::npos;
        assert(is_cut || (in_blocks == in_one && tokens_of_file(text) == in_one));
        assert(in_one.size() <= text.size() + 1);
    }
    return 0;
}
