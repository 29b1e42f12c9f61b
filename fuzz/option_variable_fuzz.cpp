// The expansion of option variables. The first byte of the input says how it is done; the text goes up to the first
// "|", what follows is the content of every file that an "@" option names.

#include <algorithm>

#include "fuzz/made_up_world.h"
#include "jli/args.h"

namespace {

enum way_bit { NO_NAME = 1, TRACES = 2, IS_LOGGED = 4, FROM_ENVIRONMENT = 8, IS_RELAUNCH = 16, SINGLE_ARGUMENT = 32 };

void expand_text(unsigned way, const std::string &text) {
    LOG_FILE_FD = (way & IS_LOGGED) != 0 ? fopen("/dev/null", "w") : nullptr;
    if ((way & TRACES) != 0) {
        JLI_SetTraceLauncher();
    }
    if ((way & IS_RELAUNCH) != 0) {
        checkArg("-x");
        JLI_InitArgProcessing(0, 0);
    }
    if ((way & SINGLE_ARGUMENT) != 0) {
        JLI_PreprocessArg(text.c_str(), 1);
        return;
    }
    static JLI_List args = JLI_List_new(1);
    args->size = 0;
    if ((way & FROM_ENVIRONMENT) != 0) {
        assert(JLI_AddArgsFromEnvVar(args, "OPTIONS") == ((way & IS_RELAUNCH) == 0));
    } else {
        assert(expand(args, text.c_str(), (way & NO_NAME) != 0 ? nullptr : "OPTIONS") == 1);
    }
    // Every option that came through is one that may stand there, and the bookkeeping agrees.
    assert(std::none_of(args->elements, args->elements + args->size, isTerminalOpt));
    assert(JLI_GetAppArgIndex() == -1);
}

// Where it is traced, what ends the process is said, in the log and on standard error alike.
void check_reports(unsigned way) {
    const bool is_said = (way & TRACES) != 0 && world.status.has_value();
    assert(world.status.value_or(1) == 1 && world.shown.empty());
    assert(world.logged == ((way & IS_LOGGED) != 0 ? world.complained : ""));
    assert((world.complained.find("Error: ") != std::string::npos) >= is_said);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 0) {
        const std::vector<std::string> parts = split_input(data + 1, size - 1, 2);
        world = {.content = parts[1], .variables = {{"OPTIONS", parts[0]}}};
        run_product([&] { expand_text(data[0], parts[0]); });
        check_reports(data[0]);
    }
    return 0;
}
