#include "core/configuration.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sys/time.h>
#include <unistd.h>

#include "core/config_loading.h"
#include "core/config_text.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/processed_args.h"
#include "platform/files.h"

namespace {

constexpr int MEMORY_VALUE_SIZE = 50;

void preset_settings() {
    if (launcher_home == nullptr) {
        const size_t length = strlen(executable_dir) - strlen(bin_dir);
        assign_text(&launcher_home, {executable_dir, length});
    }
    new_mem_val_as_str = static_cast<char *>(JLI_MemAlloc(MEMORY_VALUE_SIZE));
    new_mem_val_as_str[0] = '\0';
    launcher_path_arg = nullptr;
    const text_ptr argument = format_text("-Dcom.quorvel.LauncherPackPath=%s", launcher_home);
    assign_text(&launcher_path_arg, processArg(argument.get()));
    launch_mode = nullptr;
    assign_text(&launch_mode, launch_modes[0].name);
    for (char **setting : {&container_home, &jvm_home, &quorvel_home, &rule_file, &rule_file_arg,
                           &quorvel_properties_file, &quorvel_properties_arg, &quorvel_library_path,
                           &allow_vm_properties_option}) {
        *setting = new_text_buffer();
    }
}

void show_start(config_loading &, const char *value) {
    if (std::string_view(value).starts_with("true")) {
        JLI_SetTraceLauncher();
    }
}

// Milliseconds since 1970, of which the name keeps the low 32 bits.
text_ptr log_file_name() {
    timeval now = {};
    gettimeofday(&now, nullptr);
    const double milliseconds =
        static_cast<double>(now.tv_sec) * 1000.0 + static_cast<double>(now.tv_usec) / 1000.0;
    const unsigned long stamp = static_cast<uint32_t>(static_cast<uint64_t>(milliseconds));
    return format_text("%cjlp_ts%lu_pid%d.log", file_separator, stamp, static_cast<int>(getpid()));
}

void open_log_file(config_loading &loading, const char *value) {
    char *path = loading.log_file_path.get();
    prepend_launcher_home_to_relative_path(value, path);
    if (is_directory(path)) {
        append_to_text_buffer(path, log_file_name().get());
    }
    if (LOG_FILE_FD != nullptr) {
        fclose(LOG_FILE_FD);
    }
    LOG_FILE_FD = open_text_file(path, "w+");
    if (LOG_FILE_FD == nullptr) {
        print_text(stderr, format_text("Error! Could not open log_file_path: %s\n", path));
        exit(-1);
    }
}

// A file setting together with the system property that names the file to Java.
void set_file_and_argument(const char *value, char *file, char **argument, const char *format) {
    if (*value != '\0') {
        prepend_launcher_home_to_relative_path(value, file);
        assign_text(argument, format_text(format, file).get());
    }
}

void add_options(config_loading &loading, option_list_index list, const char *value, char **array,
                 int *count) {
    loading.list_values[list] = copy_text(value);
    const bool quoted = list == JVM_LIST || list == CONTAINER_LIST;
    split(value, array, count, quoted ? "\"" : "", quoted ? "\"" : "", quoted ? "\" \"" : "=");
}

void allow_vm_options(config_loading &loading, const char *value) {
    add_options(loading, ALLOW_VM_LIST, value, allow_vm_properties_array,
                &allow_vm_properties_count);
    if (*value != '\0') {
        assign_text(&allow_vm_properties_option,
                    format_text("-Dcom.quorvel.AllowVMProperties=%s", value).get());
    }
}

void set_launch_mode(config_loading &loading, const char *value) {
    const launch_mode_row &mode = launch_mode_of(value);
    if (is_native_invocation || mode.name.empty()) {
        loading.launch_mode_rejected = true;
        assign_text(&launch_mode, launch_modes[0].name);
    } else {
        assign_text(&launch_mode, value);
    }
    use_advanced_launch_mode = current_launch_mode().rules == argument_rules::advanced ? 1 : 0;
}

void resolve(const char *value, char *setting) {
    prepend_launcher_home_to_relative_path(value, setting);
}

// What each key does with its trimmed value.
constexpr struct {
    std::string_view key;
    void (*apply)(config_loading &loading, const char *value);
} SETTINGS[] = {
    {"SHOW_START=", show_start},
    {"LOG_FILE_OR_DIR=", open_log_file},
    {"CONTAINER_HOME=", [](config_loading &, const char *v) { resolve(v, container_home); }},
    {"JVM_HOME=", [](config_loading &, const char *v) { resolve(v, jvm_home); }},
    {"QUORVEL_HOME=", [](config_loading &, const char *v) { resolve(v, quorvel_home); }},
    {"RULE_FILE=",
     [](config_loading &, const char *v) {
         set_file_and_argument(v, rule_file, &rule_file_arg, "-Dcom.quorvel.rules.local=%s");
     }},
    {"QUORVEL_PROPERTIES_FILE=",
     [](config_loading &, const char *v) {
         set_file_and_argument(v, quorvel_properties_file, &quorvel_properties_arg,
                               "-Dcom.quorvel.QuorvelProperties=%s");
     }},
    {"QUORVEL_NATIVE_AGENT=",
     [](config_loading &, const char *v) { resolve(v, quorvel_library_path); }},
    {"NON_PATH_OPTIONS=",
     [](config_loading &loading, const char *v) {
         add_options(loading, NON_PATH_LIST, v, non_path_options_array, &non_path_options_count);
     }},
    {"ALLOW_VM_OPTIONS=", allow_vm_options},
    {"IGNORE_OPTIONS=",
     [](config_loading &loading, const char *v) {
         add_options(loading, IGNORE_LIST, v, ignore_properties_array, &ignore_properties_count);
     }},
    {"JVM_OPTIONS=",
     [](config_loading &loading, const char *v) {
         add_options(loading, JVM_LIST, v, jvm_options_array, &jvm_options_count);
     }},
    {"CONTAINER_OPTIONS=",
     [](config_loading &loading, const char *v) {
         add_options(loading, CONTAINER_LIST, v, container_options_array, &container_options_count);
     }},
    {"LAUNCH_MODE=", set_launch_mode},
};

// A line is a setting when it begins with a key, "=" included; every other line is passed over.
void apply_line(config_loading &loading, std::string_view line) {
    for (const auto &setting : SETTINGS) {
        if (line.starts_with(setting.key)) {
            line.remove_prefix(setting.key.size());
            setting.apply(loading, copy_text(trimmed(line)).get());
            return;
        }
    }
}

// A line that is longer than the buffer arrives in pieces, each a line of its own.
void read_lines(config_loading &loading, FILE *file) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    const text_ptr buffer(new_text_buffer());
    bool is_first = true;
    while (fgets(buffer.get(), TEXT_SIZE, file) != nullptr) {
        std::string_view line(buffer.get());
        if (is_first && line.starts_with(byte_order_mark)) {
            line.remove_prefix(byte_order_mark.size());
        }
        is_first = false;
        if (!line.starts_with('#')) {
            apply_line(loading, line);
        }
    }
}

void warn_of_unreadable_file(const char *config_path) {
    JLI_TraceLauncher("WARNING: Problem loading configuration file: %s\n", config_path);
    JLI_TraceLauncher("\n");
}

void warn_of_rejected_launch_mode() {
    if (is_native_invocation) {
        JLI_TraceLauncher("WARNING: Forcing LAUNCH_MODE=%s, as this is a native java invocation\n",
                          launch_mode);
    } else {
        JLI_TraceLauncher("WARNING: LAUNCH_MODE must be one of the following "
                          "[%s], defaulting to '%s'\n",
                          launch_mode_names, launch_mode);
    }
}

} // namespace

void load_config_file() {
    preset_settings();
    text_ptr config_path = format_text("%s%clauncher.cfg", launcher_home, file_separator);
    FILE *file = open_text_file(config_path.get(), "r");
    if (file == nullptr) {
        warn_of_unreadable_file(config_path.get());
        return;
    }
    config_loading loading;
    loading.config_path = std::move(config_path);
    read_lines(loading, file);
    if (ferror(file) != 0) {
        warn_of_unreadable_file(loading.config_path.get());
    }
    if (loading.launch_mode_rejected) {
        warn_of_rejected_launch_mode();
    }
    fclose(file);
    dump_configuration(loading);
}
