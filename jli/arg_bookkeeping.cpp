#include "jli/arg_bookkeeping.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "jli/jli_util.h"
#include "jli/option_names.h"

namespace {

struct {
    // Position of the first application argument in the numbering of argsCount; -1: none yet, 0:
    // the caller has Java arguments of its own.
    int32_t firstAppArgIndex = -1;
    // One more than the number of arguments checked.
    size_t argsCount = 1;
    // The argument checked last is an option whose value is the next argument.
    bool expectingNoDashArg = false;
    // "@" arguments are not expanded any more.
    bool stopExpansion = false;
    // The bookkeeping was reset after arguments had been checked.
    bool relaunch = false;
} seen;

// Whether an option that takes a value or is looked for below goes on like this after its dash.
// Nearly all options go on with another byte: "-D", "-X".
constexpr bool may_be_known(char after_dash) {
    return after_dash == '-' || after_dash == 'c' || after_dash == 'd' || after_dash == 'm' ||
           after_dash == 'p';
}

static_assert(std::ranges::all_of(OPTIONS, [](const classed_option &option) {
    return (option.classes & WHITE_SPACE_OPTION) == 0 || may_be_known(option.name[1]);
}));

} // namespace

void JLI_InitArgProcessing(int has_java_args, int disable_arg_files) {
    if (seen.argsCount != 1) {
        seen.relaunch = true;
        seen.stopExpansion = true;
        seen.argsCount = 1;
    } else {
        seen.stopExpansion = disable_arg_files != 0;
    }
    seen.expectingNoDashArg = false;
    seen.firstAppArgIndex = has_java_args != 0 ? 0 : -1;
}

void JLI_ResetArgProcessing() {
    seen = {};
}

int JLI_GetAppArgIndex() {
    return seen.firstAppArgIndex;
}

void checkArg(const char *arg) {
    seen.argsCount++;
    bool is_app_arg = false;
    if (*arg != '-') {
        is_app_arg = !seen.expectingNoDashArg;
        seen.expectingNoDashArg = false;
    } else if (!may_be_known(arg[1])) {
        seen.expectingNoDashArg = false;
    } else if (const int classes = classes_of(arg); (classes & WHITE_SPACE_OPTION) != 0) {
        // The name after --module or -m is no option value: it begins the application's arguments.
        seen.expectingNoDashArg = (classes & LAUNCHER_MAIN_OPTION) == 0;
    } else {
        seen.expectingNoDashArg = false;
        seen.stopExpansion = seen.stopExpansion || strcmp(arg, DISABLE_ARG_FILES_OPTION) == 0;
        is_app_arg = JLI_StrCCmp(arg, MODULE_PREFIX) == 0;
    }
    if (seen.firstAppArgIndex == -1 && is_app_arg) {
        seen.firstAppArgIndex = static_cast<int32_t>(seen.argsCount);
    }
}

int isTerminalOpt(const char *arg) {
    return (classes_of(arg) & TERMINAL_OPTION) != 0 || JLI_StrCCmp(arg, MODULE_PREFIX) == 0;
}

bool expands_arg_files() {
    return !seen.stopExpansion;
}

bool expands_variables() {
    return seen.firstAppArgIndex != 0 && !seen.relaunch;
}
