#include "core/settings.h"

#include <cstdint>
#include <cstring>
#include <sys/time.h>
#include <unistd.h>

#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/state_text.h"
#include "jli/trace.h"
#include "platform/files.h"

namespace {

// Milliseconds since 1970, of which the name keeps the low 32 bits.
text_ptr log_file_name() {
    timeval now = {};
    gettimeofday(&now, nullptr);
    const uint64_t milliseconds =
        static_cast<uint64_t>(now.tv_sec) * 1000 + static_cast<uint64_t>(now.tv_usec) / 1000;
    const unsigned long stamp = static_cast<uint32_t>(milliseconds);
    return format_text("%cjlp_ts%lu_pid%d.log", file_separator, stamp, static_cast<int>(getpid()));
}

bool show_start(const setting &, char *) {
    JLI_SetTraceLauncher();
    return true;
}

bool open_log(const char *path) {
    if (LOG_FILE_FD != nullptr) {
        fclose(LOG_FILE_FD);
    }
    LOG_FILE_FD = open_text_file(path, "w+");
    return LOG_FILE_FD != nullptr;
}

bool open_log_file(const setting &, char *path) {
    if (is_directory(path)) {
        append_to_state_text(path, log_file_name().get());
    }
    if (!open_trace_log(path)) {
        end_with_error(-1, format_text("Error! Could not open log_file_path: %s\n", path));
    }
    return true;
}

bool set_launch_mode(const setting &, char *value) {
    const bool is_taken = !is_native_invocation && is_set(launch_mode_of(value).name);
    assign_text(&launch_mode, is_taken ? value : DEFAULT_LAUNCH_MODE);
    use_advanced_launch_mode = current_launch_mode().rules == argument_rules::advanced ? 1 : 0;
    return is_taken;
}

// In the advanced mode no argument is made of it.
void dump_allow_vm_option() {
    if (!use_advanced_launch_mode) {
        JLI_TraceLauncher("        allow_vm_properties_option(LLM): %s\n",
                          allow_vm_properties_option);
    }
}

// The limit of a list is what its array holds.
template <int slot_count>
constexpr option_list list_of(char *(&slots)[slot_count], int &count, const char *entry_label,
                              int entry_gap, void (*dump_more)() = nullptr) {
    return {slots, &count, slot_count, entry_gap, entry_label, dump_more};
}

constexpr option_list NON_PATH_OPTIONS =
    list_of(non_path_options_array, non_path_options_count, "non_path_options_array", 2);
constexpr option_list ALLOW_VM_OPTIONS =
    list_of(allow_vm_properties_array, allow_vm_properties_count, "allow_vm_properties_array", 2,
            dump_allow_vm_option);
constexpr option_list IGNORE_OPTIONS =
    list_of(ignore_properties_array, ignore_properties_count, "ignore_properties_array", 2);
constexpr option_list JVM_OPTIONS =
    list_of(jvm_options_array, jvm_options_count, "jvm_options_array", 10);
constexpr option_list CONTAINER_OPTIONS =
    list_of(container_options_array, container_options_count, "container_options_array", 4);

constexpr java_property RULES = {&rule_file_arg, "-Dcom.quorvel.rules.local=%s"};
constexpr java_property PROPERTIES = {&quorvel_properties_arg,
                                      "-Dcom.quorvel.QuorvelProperties=%s"};
constexpr java_property ALLOWED = {&allow_vm_properties_option,
                                   "-Dcom.quorvel.AllowVMProperties=%s"};

} // namespace

bool (*open_trace_log)(const char *path) = open_log;

using enum value_kind;

constexpr setting SETTINGS[] = {
    {.key = "LAUNCH_MODE", .kind = mode, .text = &launch_mode, .apply = set_launch_mode},
    {.key = "SHOW_START", .kind = toggle, .apply = show_start},
    {.key = "TRANSPARENT", .kind = toggle, .label = "transparent:", .flag = &is_transparent},
    {.key = "REWRITE_ARGUMENTS",
     .kind = toggle,
     .label = "rewrite_arguments:",
     .flag = &rewrites_arguments},
    {.key = "LOG_FILE_OR_DIR", .kind = log, .label = "log_file_path:", .apply = open_log_file},
    {"CONTAINER_HOME", path, 38, "container_home:", &container_home},
    {"JVM_HOME", path, 38, "jvm_home:", &jvm_home},
    {"QUORVEL_HOME", path, 38, "quorvel_home:", &quorvel_home},
    {"RULE_FILE", path, 38, "rule_file_arg:", &rule_file, &RULES},
    {"QUORVEL_PROPERTIES_FILE", path, 38, "quorvel_properties_arg:", &quorvel_properties_file,
     &PROPERTIES},
    {"QUORVEL_NATIVE_AGENT", path, 38, "quorvel_library_path:", &quorvel_library_path},
    {.key = "NON_PATH_OPTIONS",
     .kind = list,
     .label_width = 35,
     .label = "non_path_options_value:",
     .list = &NON_PATH_OPTIONS},
    {.key = "ALLOW_VM_OPTIONS",
     .kind = list,
     .label = "allow_vm_properties_value:",
     .property = &ALLOWED,
     .list = &ALLOW_VM_OPTIONS},
    {.key = "IGNORE_OPTIONS",
     .kind = list,
     .label_width = 36,
     .label = "ignore_properties_value:",
     .list = &IGNORE_OPTIONS},
    {.key = "JVM_OPTIONS",
     .kind = quoted_list,
     .label = "jvm_options_value:",
     .list = &JVM_OPTIONS},
    {.key = "CONTAINER_OPTIONS",
     .kind = quoted_list,
     .label = "container_options_value:",
     .list = &CONTAINER_OPTIONS},
};
static_assert(SETTINGS[SETTING_COUNT - 1].key != nullptr, "SETTING_COUNT exceeds the rows");

const setting *setting_of(const char *line) {
    for (const setting &row : SETTINGS) {
        if (begins_with(line, row.key) && line[strlen(row.key)] == '=') {
            return &row;
        }
    }
    return nullptr;
}

const setting *setting_kept_in(const void *place) {
    for (const setting &row : SETTINGS) {
        if (row.text == place || row.flag == place) {
            return &row;
        }
    }
    return nullptr;
}
