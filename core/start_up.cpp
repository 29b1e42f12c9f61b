#include "core/start_up.h"

#include <cstdio>
#include <cstring>

#include "core/jlp_vars.h"
#include "core/state_text.h"
#include "jli/trace.h"
#include "platform/files.h"
#include "platform/windows_services.h"

// The launcher's own path. The result of the service needs no check: no path is longer than the
// buffer, and on a failure the buffer stays empty, which is no valid place. Who was started by a
// \\?\ path is told that one, and the runtime's stat() refuses every path with a "?".
char *new_own_path() {
    constexpr std::string_view PLAIN = "\\\\?\\";
    constexpr std::string_view SHARE = "\\\\?\\UNC\\";
    char *path = new_state_text();
    GetModuleFileNameA(nullptr, path, TEXT_SIZE);
    size_t prefix = 0;
    if (strncasecmp(path, SHARE.data(), SHARE.size()) == 0) {
        prefix = SHARE.size() - 2;
        path[prefix] = path[prefix + 1] = '\\';
    } else if (std::string_view(path).starts_with(PLAIN) &&
               strchr(path, ':') == path + PLAIN.size() + 1) {
        prefix = PLAIN.size();
    }
    memmove(path, path + prefix, strlen(path + prefix) + 1);
    return path;
}

char *get_executable_file_path() {
    char *path = new_own_path();
    os_name = "Windows";
    if (!is_valid_exe_path(path)) {
        const text_ptr message =
            format_text("Error: java executable path either doesn't exist or is "
                        "invalid: \"%s\"\n",
                        path);
        print_text(stdout, message);
        end_after(1, message);
    }
    return path;
}

int is_valid_exe_path(const char *path) {
    if (path == nullptr || *path == '\0' || kind_of(path) == entry_kind::missing) {
        return 0;
    }
    const std::string_view text(path);
    const size_t last_separator = text.rfind(file_separator);
    if (last_separator == std::string_view::npos || last_separator == 0) {
        return 0;
    }
    const std::string_view directory(path, last_separator);
    return directory.ends_with(jre_bin) || directory.ends_with(bin);
}

int set_bin_dir() {
    bin_dir = new_state_text();
    const std::string_view directory(executable_dir);
    // \jre\bin ends with \bin too, so it goes first.
    for (const char *folder : {jre_bin, bin}) {
        if (directory.ends_with(folder)) {
            append_to_state_text(bin_dir, folder);
            return SUCCESS;
        }
    }
    JLI_TraceLauncher("Error: java executable is expected to be in either the %s or %s folder\n",
                      jre_bin, bin);
    return FAILURE;
}

int is_startable(const char *target, const char *launcher) {
    if (!is_file(target)) {
        return 0;
    }
    const text_ptr own_path(launcher == nullptr ? new_own_path() : nullptr);
    const text_ptr full_path(new_state_text());
    GetFullPathNameA(target, TEXT_SIZE, full_path.get(), nullptr);
    const char *itself = launcher == nullptr ? own_path.get() : launcher;
    return strcasecmp(itself, full_path.get()) == 0 ? 0 : 1;
}
