// The tokenizer of argument files and the lists and option classes that serve it. The first byte of the input
// chooses the size of the blocks, the rest is the file: it has to have the same tokens in blocks of any size, in one
// block and read from a stream.

#include <cstdint>
#include <cstdio>
#include <cstring>

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

// What is split can be joined again, and every class of options lies in the wider one.
void check_pieces(const std::string &text, char separator) {
    JLI_List pieces = JLI_List_split(text.c_str(), separator);
    char *joined = JLI_List_join(pieces, separator);
    assert(strcmp(joined, text.c_str()) == 0 && pieces->size <= pieces->capacity);
    for (size_t i = 0; i < pieces->size; i++) {
        const char *piece = pieces->elements[i];
        assert(strchr(piece, separator) == nullptr);
        assert(IsWhiteSpaceOption(piece) == (IsModuleOption(piece) || IsLauncherOption(piece)));
        assert(IsLauncherOption(piece) >= (IsClassPathOption(piece) || IsLauncherMainOption(piece)));
        assert(!IsLongFormModuleOption(piece) || strchr(piece, '=') != nullptr);
        const char *dot = strrchr(piece, '.');
        assert(JLI_HasSuffix(piece, dot == nullptr ? "" : dot) == (dot != nullptr));
    }
    JLI_MemFree(joined);
    JLI_List_free(pieces);
}

} // namespace

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
    assert(text.find('\0') != std::string::npos || tokens_of_file(text) == in_one);
    check_pieces(text.c_str(), data[0] == 0 ? ' ' : static_cast<char>(data[0]));
    assert(in_one.size() <= text.size() + 1);
    return 0;
}
