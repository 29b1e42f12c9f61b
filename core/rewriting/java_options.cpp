#include "core/rewriting/java_options.h"

#include <climits>
#include <cstring>

#include "core/config_text.h"
#include "core/jlp_vars.h"
#include "core/processed_args.h"
#include "core/rewriting/option_filters.h"
#include "core/rewriting/path_rewriting.h"
#include "core/state_arrays.h"
#include "jli/option_names.h"
#include "jli/text.h"

namespace {

constexpr int SMALLEST_HEAP_MEGABYTES = 256;

// atoi, but a number that is too large for an int stays too large.
int number_at_start(const char *text) {
    while (is_space(*text)) {
        text++;
    }
    const bool is_negative = *text == '-';
    if (*text == '-' || *text == '+') {
        text++;
    }
    int number = 0;
    for (; *text >= '0' && *text <= '9'; text++) {
        const int digit = *text - '0';
        number = number > (INT_MAX - digit) / 10 ? INT_MAX : 10 * number + digit;
    }
    return is_negative ? -number : number;
}

} // namespace

void place(const argument_list &list, const char *arg) {
    append_entry(list.entries, list.count, processArg(arg));
}

void place_constant(const argument_list &list, const char *text) {
    append_entry(list.entries, list.count, const_cast<char *>(text));
}

bool is_class_path_option(std::string_view arg) {
    return arg.starts_with("-cp") || arg.starts_with("-classpath") ||
           (is_host_java_9_plus && arg == "--class-path");
}

bool is_class_path_assignment(std::string_view arg) {
    return is_host_java_9_plus && arg.starts_with("--class-path=");
}

bool is_module_value_option(std::string_view arg) {
    return is_host_java_9_plus &&
           (is_one_of(MODULE_OPTIONS, arg) || is_one_of(DESCRIBE_MODULE_OPTIONS, arg));
}

bool ends_options(std::string_view arg) {
    return arg.starts_with("-jar") || !arg.starts_with("-") ||
           (is_host_java_9_plus && (arg == "--module" || arg.starts_with("--module=")));
}

bool is_heap_size_in_megabytes(const char *arg) {
    const std::string_view text(arg);
    return text.starts_with("-Xmx") && (text.ends_with('m') || text.ends_with('M'));
}

void place_heap_size(const argument_list &list, const char *arg) {
    const char *value = arg + strlen("-Xmx");
    const size_t size = strlen(value) + 1;
    if (new_mem_val_as_str != nullptr && size <= MEMORY_VALUE_SIZE) {
        memcpy(new_mem_val_as_str, value, size);
    }
    if (number_at_start(value) < SMALLEST_HEAP_MEGABYTES) {
        place_constant(list, "-Xmx256m");
    } else {
        place(list, arg);
    }
}

void place_agent_library(const argument_list &list, const char *xrun_arg) {
    const text_ptr converted(convertXrunToAgentLib(xrun_arg));
    place(list, converted.get());
}

void place_rules_property(const argument_list &list, const char *arg, int *added) {
    const bool is_configured = rule_file != nullptr && *rule_file != '\0';
    place(list, is_configured ? rule_file_arg : arg);
    if (is_configured) {
        *added = 1;
    }
}

const char *moved_value(const char *arg, const char *home) {
    return replaceLauncherHomeWithRIHome(arg, launcher_home, home, 0, '=');
}

const char *moved_assignment(const char *arg, const char *home) {
    return replaceLauncherHomeWithRIHome(arg, launcher_home, home, 1, '=');
}

const char *moved_property(const char *arg, const char *home) {
    return strchr(arg, '=') != nullptr ? moved_assignment(arg, home) : moved_value(arg, home);
}

const char *moved_boot_class_path(const char *arg, const char *home) {
    return replaceLauncherHomeWithRIHome(arg, launcher_home, home, 1, ':');
}

void place_class_path_assignment(const argument_list &list, const char *arg, const char *home,
                                 bool as_cp) {
    const char *moved = moved_assignment(arg, home);
    if (as_cp) {
        place(list, "-cp");
        moved += strlen("--class-path=");
    }
    place(list, moved);
}
