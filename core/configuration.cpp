#include "core/configuration.h"

#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "core/banner.h"
#include "core/config_text.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/processed_args.h"
#include "core/settings.h"
#include "core/state_text.h"
#include "platform/files.h"

namespace {

// One call of load_config_file, beside the launcher state that it sets.
struct config_loading {
    text_ptr config_path;
    // Where a setting has no text, the path, or of a list the value of its last line; null before.
    text_ptr values[SETTING_COUNT];
    const setting *refused = nullptr; // whose value was refused
};

void preset_settings() {
    if (launcher_home == nullptr) {
        const size_t length = strlen(executable_dir) - strlen(bin_dir);
        assign_text(&launcher_home, {executable_dir, length});
    }
    new_mem_val_as_str = static_cast<char *>(JLI_MemAlloc(MEMORY_VALUE_SIZE));
    new_mem_val_as_str[0] = '\0';
    launcher_path_arg = nullptr;
    set_launcher_path_arg();
    for (const setting &row : SETTINGS) {
        if (row.flag != nullptr) {
            *row.flag = 0;
        }
        if (row.text != nullptr) {
            *row.text = new_state_text();
            append_to_state_text(*row.text,
                                 row.kind == value_kind::mode ? DEFAULT_LAUNCH_MODE : "");
        }
        if (row.property != nullptr) {
            *row.property->argument = new_state_text();
        }
    }
}

void load_value(config_loading &loading, const setting &row, text_ptr value) {
    text_ptr &value_of_load = loading.values[&row - SETTINGS];
    char *loaded = value.get();
    const bool is_empty = *loaded == '\0';
    const bool is_off = row.kind == value_kind::toggle && strncmp(loaded, "true", 4) != 0;
    if (row.flag != nullptr) {
        *row.flag = is_off || is_native_invocation ? 0 : 1;
    } else if (row.kind == value_kind::path || row.kind == value_kind::log) {
        if (row.text == nullptr && value_of_load == nullptr) {
            value_of_load.reset(new_state_text());
        }
        loaded = row.text == nullptr ? value_of_load.get() : *row.text;
        prepend_launcher_home_to_relative_path(value.get(), loaded);
    } else if (row.list != nullptr) {
        const bool is_quoted = row.kind == value_kind::quoted_list;
        const char *quote = is_quoted ? "\"" : "";
        split(loaded, row.list->slots, row.list->count, quote, quote, is_quoted ? "\" \"" : "=");
        value_of_load = std::move(value);
    }
    if (row.property != nullptr && !is_empty) {
        assign_text(row.property->argument, format_text(row.property->format, loaded).get());
    }
    if (row.apply != nullptr && !is_off && !row.apply(row, loaded)) {
        loading.refused = &row;
    }
}

void load_line(config_loading &loading, const char *line) {
    if (const setting *row = setting_of(line); row != nullptr) {
        load_value(loading, *row, copy_text(trimmed(line + strlen(row->key) + 1)));
    }
}

// A line that is longer than the buffer arrives in pieces, each a line of its own.
void read_lines(config_loading &loading, FILE *file) {
    constexpr char byte_order_mark[] = "\xEF\xBB\xBF";
    const text_ptr buffer(new_state_text());
    bool is_first = true;
    while (fgets(buffer.get(), TEXT_SIZE, file) != nullptr) {
        const char *line = buffer.get();
        if (is_first && begins_with(line, byte_order_mark)) {
            line += strlen(byte_order_mark);
        }
        is_first = false;
        if (*line != '#') {
            load_line(loading, line);
        }
    }
}

void warn_of_unreadable_file(const char *config_path) {
    JLI_TraceLauncher("WARNING: Problem loading configuration file: %s\n\n", config_path);
}

void warn_of_refused_mode(const setting &row) {
    if (is_native_invocation) {
        JLI_TraceLauncher("WARNING: Forcing %s=%s, as this is a native java invocation\n", row.key,
                          launch_mode);
    } else {
        JLI_TraceLauncher("WARNING: %s must be one of the following "
                          "[%s], defaulting to '%s'\n",
                          row.key, launch_mode_names, launch_mode);
    }
}

void dump_value(const char *label, const char *value, int label_width = 38) {
    JLI_TraceLauncher("   %-*s%s\n", label_width, label, value);
}

const char *shown_value(const config_loading &loading, const setting &row) {
    if (row.flag != nullptr) {
        return *row.flag ? "yes" : "";
    }
    if (row.text == nullptr) {
        return loading.values[&row - SETTINGS].get();
    }
    return row.property == nullptr ? *row.text : *row.property->argument;
}

// False when there is nothing to show.
bool dump_setting(const config_loading &loading, const setting &row) {
    const char *value = shown_value(loading, row);
    if (row.label == nullptr || !is_set(value)) {
        return false;
    }
    dump_value(row.label, value, row.label_width);
    const option_list *list = row.list;
    if (list != nullptr && list->dump_more != nullptr) {
        list->dump_more();
    }
    for (int i = 0; list != nullptr && i < *list->count; i++) {
        JLI_TraceLauncher("        %s[ %d ]:%*s%s\n", list->entry_label, i, list->entry_gap, "",
                          list->slots[i]);
    }
    return true;
}

void dump_configuration(const config_loading &loading) {
    if (!JLI_IsTraceLauncher()) {
        return; // the time alone, with its zone, would be dearer than the rest of a silent start
    }
    display_banner();
    JLI_TraceLauncher("%s\n"
                      "Launcher PID = %d\n\n"
                      "LAUNCHER CONFIGURATION LOADED\n"
                      "-----------------------------\n",
                      get_current_time_str(), static_cast<int>(getpid()));
    dump_value("config_path:", loading.config_path.get());
    dump_value("os_name:", os_name);
    dump_value("launch_mode:", launch_mode);
    dump_value("is_native_invocation:", is_native_invocation ? "yes" : "no");
    bool is_any_set = false;
    for (const setting &row : SETTINGS) {
        is_any_set |= dump_setting(loading, row);
    }
    if (!is_any_set) {
        JLI_TraceLauncher("   WARNING: No properties set in config file.\n");
    }
    JLI_TraceLauncher("\n");
}

} // namespace

void set_launcher_path_arg() {
    const text_ptr argument = format_text("-Dcom.quorvel.LauncherPackPath=%s", launcher_home);
    assign_text(&launcher_path_arg, processArg(argument.get()));
}

void load_config_file() {
    preset_settings();
    config_loading loading;
    loading.config_path = format_text("%s%clauncher.cfg", launcher_home, file_separator);
    FILE *file = open_text_file(loading.config_path.get(), "r");
    if (file == nullptr) {
        warn_of_unreadable_file(loading.config_path.get());
        return;
    }
    read_lines(loading, file);
    if (ferror(file) != 0) {
        warn_of_unreadable_file(loading.config_path.get());
    }
    if (is_transparent) {
        leaves_standard_output = 1;
        says_faults = 1;
    }
    if (loading.refused != nullptr) {
        warn_of_refused_mode(*loading.refused);
    }
    fclose(file);
    dump_configuration(loading);
}
