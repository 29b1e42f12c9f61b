// The expansion of option variables. The first byte of the input says whether there is a variable's name, tracing, a
// trace log, whether the variable is taken from the environment, in a relaunch or not, and whether the text is a
// single argument instead; the text goes up to the first null byte, and what follows is the content of every file
// that an "@" option names. A file whose name begins with "?" is missing, with "!" it cannot be read.
//
// The bookkeeping of the arguments seen is reset for each run, and to this end its source is compiled in.
#include "jli/args.cpp"

#include <algorithm>
#include <cstdio>
#include <string>

#include "fuzz/product_run.h"
#include "platform/files.h"

namespace {

std::string file_content;
std::string text;

// A first call after arguments were checked marks a relaunch, and for good: it is set back.
void start_bookkeeping(bool is_relaunch) {
    argsCount = is_relaunch ? 2 : 1;
    relaunch = false;
    JLI_InitArgProcessing(0, 0);
}

// One message for the variable and one for what ends the process, in the log and on standard error alike.
void check_reports(const product_end &end, bool traces, bool is_logged, bool takes_variable) {
    assert(!end.by_exit || end.status == 1);
    std::string reports = printed.complained;
    assert(printed.shown.empty() && printed.logged == (is_logged ? reports : ""));
    const std::string note = "NOTE: Picked up OPTIONS: " + text;
    if (traces && takes_variable) {
        assert(reports.starts_with(note));
        reports.erase(0, note.size());
    }
    assert(reports.empty() == (!traces || !end.by_exit) && (reports.empty() || reports.starts_with("Error: ")));
}

} // namespace

extern "C" {
char *__real_getenv(const char *name);
char *__wrap_getenv(const char *name);
entry_kind __wrap__Z7kind_ofPKc(const char *path);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);

char *__wrap_getenv(const char *name) {
    return in_product() && strcmp(name, "OPTIONS") == 0 ? text.data() : __real_getenv(name);
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    return path[0] == '?' ? entry_kind::missing : entry_kind::file;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode) {
    if (path[0] == '!') {
        return opened(fopen("/dev/null", "w"));
    }
    return opened(fmemopen(file_content.data(), file_content.size(), mode));
}
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const char *variable_name = data[0] % 2 == 0 ? "OPTIONS" : nullptr;
    const bool traces = (data[0] & 2) != 0;
    const bool is_logged = (data[0] & 4) != 0;
    const bool from_environment = (data[0] & 8) != 0;
    const bool is_relaunch = from_environment && (data[0] & 16) != 0;
    const std::string input(data + 1, data + size);
    text = input.c_str();
    file_content = input.substr(std::min(input.size(), text.size() + 1)) + "\n";

    start_bookkeeping(is_relaunch);
    start_product();
    const product_end end = run_product([&] {
        LOG_FILE_FD = is_logged ? opened(fopen("/dev/null", "w")) : nullptr;
        if (traces) {
            JLI_SetTraceLauncher();
        }
        if ((data[0] & 32) != 0) {
            JLI_PreprocessArg(text.c_str(), 1);
            return;
        }
        JLI_List args = JLI_List_new(1);
        const int result =
            from_environment ? JLI_AddArgsFromEnvVar(args, "OPTIONS") : expand(args, text.c_str(), variable_name);
        assert(result == !is_relaunch);
        // Every option that came through is one that may stand there, and the bookkeeping agrees.
        assert(std::none_of(args->elements, args->elements + args->size, isTerminalOpt));
        assert(JLI_GetAppArgIndex() == -1);
    });
    check_reports(end, traces, is_logged, from_environment && !is_relaunch && (data[0] & 32) == 0);
    release_product();
    return 0;
}
