// The expansion of option variables. The first byte of the input says whether there is a variable's
// name; the text goes up to the first null byte, and what follows is the content of every file that
// an "@" option names.

#include <algorithm>
#include <cstdio>
#include <string>

#include "fuzz/product_run.h"
#include "jli/args.h"
#include "platform/files.h"

namespace {

std::string file_content;

} // namespace

extern "C" {
entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    return path[0] == '?' ? entry_kind::missing : entry_kind::file;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *, const char *mode) {
    return opened(fmemopen(file_content.data(), file_content.size(), mode));
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
    start_product();
    const product_end end = run_product([&] {
        JLI_List args = JLI_List_new(1);
        const int result = expand(args, text.c_str(), variable_name);
        assert(result == 1);
        // Every option that came through is one that may stand there, and the bookkeeping agrees.
        assert(std::none_of(args->elements, args->elements + args->size, isTerminalOpt));
        assert(JLI_GetAppArgIndex() == -1);
    });
    assert(!end.by_exit || end.status == 1);
    release_product();
    return 0;
}
