#include "core/rewriting/arg_files.h"

#include "jli/args.h"

int is_arg_file(const char *arg) {
    if (*arg != '@') {
        return 0;
    }
    JLI_TraceLauncher("@<file> arg encountered: %s\n", arg);
    return 1;
}

JLI_List get_arg_list_from_arg_file(const char *arg) {
    JLI_List args = JLI_PreprocessArg(arg, 0);
    if (args == nullptr) {
        JLI_TraceLauncher(
            "    @<file> arg , %s, doesn't contain any relevant arguments, so skipping\n\n", arg);
        return nullptr;
    }
    for (size_t i = 0; i < args->size; i++) {
        JLI_TraceLauncher("    %s[%d]: %s\n", arg, static_cast<int>(i), args->elements[i]);
    }
    JLI_TraceLauncher("\n");
    return args;
}
