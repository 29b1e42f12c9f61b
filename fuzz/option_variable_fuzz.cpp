// The expansion of option variables. The first byte of the input says whether there is a variable's
// name; the text goes up to the first null byte, and what follows is the content of every file that
// an "@" option names.
//
// expand() may end the process, and what it takes from the heap it keeps. So exit() comes back
// here, and whatever was allocated since is released.

#include <algorithm>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unordered_set>

#include "jli/args.h"
#include "platform/files.h"

namespace {

bool in_expand = false;
jmp_buf after_expand;
int exit_status;
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

void require(bool holds) {
    if (!holds) {
        abort();
    }
}

} // namespace

extern "C" {
[[noreturn]] void __real_exit(int status);
void *__real_malloc(size_t size);
void *__real_realloc(void *block, size_t size);
char *__real_strdup(const char *text);
void __real_free(void *block);

[[noreturn]] void __wrap_exit(int status);
void *__wrap_malloc(size_t size);
void *__wrap_realloc(void *block, size_t size);
char *__wrap_strdup(const char *text);
void __wrap_free(void *block);
entry_kind __wrap__Z7kind_ofPKc(const char *path);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);

void __wrap_exit(int status) {
    if (!in_expand) {
        __real_exit(status);
    }
    exit_status = status;
    longjmp(after_expand, 1);
}

void *__wrap_malloc(size_t size) {
    return note(__real_malloc(size));
}

void *__wrap_realloc(void *block, size_t size) {
    blocks.erase(block);
    return note(__real_realloc(block, size));
}

char *__wrap_strdup(const char *text) {
    return note(__real_strdup(text));
}

void __wrap_free(void *block) {
    if (in_expand) {
        require(block == nullptr || blocks.erase(block) == 1);
    }
    __real_free(block);
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    return path[0] == '?' ? entry_kind::missing : entry_kind::file;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *, const char *mode) {
    return fmemopen(file_content.data(), file_content.size(), mode);
}
}

namespace {

// Every option that came through is one that may stand there, and the bookkeeping agrees.
void check_options(JLI_List args) {
    for (size_t i = 0; i < args->size; i++) {
        require(isTerminalOpt(args->elements[i]) == 0);
    }
    require(JLI_GetAppArgIndex() == -1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const char *variable_name = data[0] % 2 == 0 ? "OPTIONS" : nullptr;
    const std::string input(reinterpret_cast<const char *>(data) + 1, size - 1);
    const std::string text = input.c_str();
    file_content = input.substr(std::min(input.size(), text.size() + 1)) + "\n";

    // A first call after arguments were checked marks a relaunch, the second starts anew.
    JLI_InitArgProcessing(0, 0);
    JLI_InitArgProcessing(0, 0);
    exit_status = -1;
    in_expand = true;
    if (setjmp(after_expand) == 0) {
        JLI_List args = JLI_List_new(1);
        require(expand(args, text.c_str(), variable_name) == 1);
        check_options(args);
    } else {
        require(exit_status == 1);
    }
    in_expand = false;
    for (void *block : blocks) {
        __real_free(block);
    }
    blocks.clear();
    return 0;
}
