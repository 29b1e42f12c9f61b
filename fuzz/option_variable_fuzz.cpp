// The expansion of option variables. The first byte of the input says whether there is a variable's
// name; the text goes up to the first null byte, and what follows is the content of every file that
// an "@" option names.
//
// expand() may end the process, and what it takes from the heap it keeps. So exit() comes back
// here, and whatever was allocated since is released.

#include <algorithm>
#include <cassert>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <string>
#include <unordered_set>

#include "jli/args.h"
#include "platform/files.h"

namespace {

bool in_expand = false;
jmp_buf after_expand;
std::string file_content;

// What expand() has allocated and not given back.
std::unordered_set<void *> blocks;

template <typename Block>
Block *note(Block *block) {
    if (in_expand) {
        blocks.insert(block);
    }
    return block;
}

} // namespace

#define WRAP(type, name, parameters, ...)                                                                              \
    type __real_##name parameters;                                                                                     \
    type __wrap_##name parameters {                                                                                    \
        return __VA_ARGS__;                                                                                            \
    }

extern "C" {
WRAP(void *, malloc, (size_t size), note(__real_malloc(size)))
WRAP(char *, strdup, (const char *text), note(__real_strdup(text)))
WRAP(void *, realloc, (void *block, size_t size), (blocks.erase(block), note(__real_realloc(block, size))))
WRAP(void, free, (void *block), (assert(!in_expand || block == nullptr || blocks.erase(block)), __real_free(block)))

[[noreturn]] void __real_exit(int status);
[[noreturn]] void __wrap_exit(int status) {
    if (!in_expand) {
        __real_exit(status);
    }
    assert(status == 1);
    longjmp(after_expand, 1);
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    return path[0] == '?' ? entry_kind::missing : entry_kind::file;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *, const char *mode) {
    return fmemopen(file_content.data(), file_content.size(), mode);
}
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const char *variable_name = data[0] % 2 == 0 ? "OPTIONS" : nullptr;
    const std::string input(data + 1, data + size);
    const std::string text = input.c_str();
    file_content = input.substr(std::min(input.size(), text.size() + 1)) + "\n";

    // A first call after arguments were checked marks a relaunch, the second starts anew.
    JLI_InitArgProcessing(0, 0);
    JLI_InitArgProcessing(0, 0);
    in_expand = true;
    if (setjmp(after_expand) == 0) {
        JLI_List args = JLI_List_new(1);
        const int result = expand(args, text.c_str(), variable_name);
        assert(result == 1);
        // Every option that came through is one that may stand there, and the bookkeeping agrees.
        assert(std::none_of(args->elements, args->elements + args->size, isTerminalOpt));
        assert(JLI_GetAppArgIndex() == -1);
    }
    in_expand = false;
    for (void *block : blocks) {
        __real_free(block);
    }
    blocks.clear();
    return 0;
}
