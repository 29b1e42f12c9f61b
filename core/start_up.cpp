#include "core/start_up.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/jlp_vars.h"
#include "core/state_text.h"
#include "platform/files.h"
#include "platform/windows_services.h"

char *get_executable_file_path() {
    char *path = new_state_text();
    os_name = "Windows";
    GetModuleFileNameA(nullptr, path, TEXT_SIZE);
    if (!is_valid_exe_path(path)) {
        print_text(stdout, format_text("Error: java executable path either doesn't exist or is "
                                       "invalid: \"%s\"\n",
                                       path));
        exit(1);
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

int is_launcher_itself(const char *path) {
    const text_ptr own_path(new_state_text());
    const text_ptr full_path(new_state_text());
    GetModuleFileNameA(nullptr, own_path.get(), TEXT_SIZE);
    GetFullPathNameA(path, TEXT_SIZE, full_path.get(), nullptr);
    return strcasecmp(own_path.get(), full_path.get()) == 0 ? 1 : 0;
}
