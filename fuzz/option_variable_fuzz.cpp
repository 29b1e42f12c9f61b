// The expansion of option variables. The first byte of the input says how it is done; the text goes up to the first
// "|", what follows is the content of every file that an "@" option names.

#include <algorithm>
#include <cstring>

#include "fuzz/product_run.h"
#include "jli/args.h"

namespace {

enum way_bit { NO_NAME = 1, TRACES = 2, IS_LOGGED = 4, FROM_ENVIRONMENT = 8, IS_RELAUNCH = 16, SINGLE_ARGUMENT = 32 };

void expand_text(unsigned way, const std::string &text) {
    LOG_FILE_FD = (way & IS_LOGGED) != 0 ? opened(fopen("/dev/null", "w")) : nullptr;
    if ((way & TRACES) != 0) {
        JLI_SetTraceLauncher();
    }
    if ((way & SINGLE_ARGUMENT) != 0) {
        JLI_PreprocessArg(text.c_str(), 1);
        return;
    }
    if ((way & IS_RELAUNCH) != 0) {
        checkArg("-x");
        JLI_InitArgProcessing(0, 0);
    }
    JLI_List args = JLI_List_new(1);
    if ((way & FROM_ENVIRONMENT) != 0) {
        assert(JLI_AddArgsFromEnvVar(args, "OPTIONS") == ((way & IS_RELAUNCH) == 0));
    } else {
        assert(expand(args, text.c_str(), (way & NO_NAME) != 0 ? nullptr : "OPTIONS") == 1);
    }
    // Every option that came through is one that may stand there, and the bookkeeping agrees.
    assert(std::none_of(args->elements, args->elements + args->size, isTerminalOpt));
    assert(JLI_GetAppArgIndex() == -1);
}

// One message for the variable and one for what ends the process, in the log and on standard error alike.
void check_reports(unsigned way, const std::string &text) {
    assert(!product.by_exit || product.status == 1);
    std::string reports = product.complained;
    assert(product.shown.empty() && product.logged == ((way & IS_LOGGED) != 0 ? reports : ""));
    const bool traces = (way & TRACES) != 0;
    if (traces && (way & (FROM_ENVIRONMENT | IS_RELAUNCH | SINGLE_ARGUMENT)) == FROM_ENVIRONMENT) {
        const std::string note = "NOTE: Picked up OPTIONS: " + text;
        assert(reports.starts_with(note));
        reports.erase(0, note.size());
    }
    assert(reports.empty() == (!traces || !product.by_exit) && (reports.empty() || reports.starts_with("Error: ")));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const unsigned way = data[0];
    const std::vector<std::string> parts = split_input(data + 1, size - 1, 2);
    world = {};
    world.content = parts[1];
    world.variables = {{"OPTIONS", parts[0]}};
    run_product([&] { expand_text(way, parts[0]); }, [&] { check_reports(way, parts[0]); });
    return 0;
}
