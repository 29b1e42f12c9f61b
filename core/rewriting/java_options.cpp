#include "core/rewriting/java_options.h"

#include <cstdlib>
#include <cstring>

#include "core/jlp_vars.h"
#include "core/processed_args.h"
#include "core/rewriting/option_filters.h"
#include "core/rewriting/path_rewriting.h"
#include "core/state_arrays.h"
#include "jli/option_names.h"
#include "jli/text.h"

namespace {

constexpr long SMALLEST_HEAP_MEGABYTES = 256;

} // namespace

void place(const argument_list &list, const char *arg) {
    append_entry(list.entries, list.count, processArg(arg));
}

void place_constant(const argument_list &list, const char *text) {
    append_entry(list.entries, list.count, const_cast<char *>(text));
}

bool is_class_path_option(const char *arg) {
    return begins_with(arg, "-cp") || begins_with(arg, "-classpath") ||
           (is_host_java_9_plus && strcmp(arg, "--class-path") == 0);
}

bool is_class_path_assignment(const char *arg) {
    return is_host_java_9_plus && begins_with(arg, "--class-path=");
}

bool is_module_value_option(const char *arg) {
    return is_host_java_9_plus && (classes_of(arg) & (MODULE_OPTION | DESCRIBE_MODULE_OPTION)) != 0;
}

bool ends_options(const char *arg) {
    return begins_with(arg, "-jar") || *arg != '-' ||
           (is_host_java_9_plus && (strcmp(arg, "--module") == 0 || begins_with(arg, "--module=")));
}

bool is_heap_size_in_megabytes(const char *arg) {
    if (!begins_with(arg, "-Xmx")) {
        return false;
    }
    const char unit = arg[strlen(arg) - 1];
    return unit == 'm' || unit == 'M';
}

void place_heap_size(const argument_list &list, const char *arg) {
    const char *value = arg + strlen("-Xmx");
    const size_t size = strlen(value) + 1;
    if (new_mem_val_as_str != nullptr && size <= MEMORY_VALUE_SIZE) {
        memcpy(new_mem_val_as_str, value, size);
    }
    if (strtol(value, nullptr, 10) < SMALLEST_HEAP_MEGABYTES) {
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
