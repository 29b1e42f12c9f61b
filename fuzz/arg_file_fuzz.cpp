// The tokenizer of argument files, and the classes of options. The first byte of the input chooses the size of the
// blocks, the rest is the file: it has to have the same tokens in blocks of any size, in one block and read from a
// stream.

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

// What is split can be joined again, and every class of options lies in the wider one.
void check_words(const std::string &text) {
    JLI_List words = JLI_List_split(text.c_str(), ' ');
    char *joined = JLI_List_join(words, ' ');
    assert(joined == text);
    for (size_t i = 0; i < words->size; i++) {
        const char *word = words->elements[i];
        assert(IsWhiteSpaceOption(word) == (IsModuleOption(word) || IsLauncherOption(word)));
        assert(IsLauncherOption(word) >= (IsClassPathOption(word) || IsLauncherMainOption(word)));
        assert(!IsLongFormModuleOption(word) || std::string(word).find('=') != std::string::npos);
    }
    JLI_MemFree(joined);
    JLI_List_free(words);
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
        check_words(text.c_str());
    }
    return 0;
}
