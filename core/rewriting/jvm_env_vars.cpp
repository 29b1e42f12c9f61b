#include "core/rewriting/jvm_env_vars.h"

#include <cstdlib>
#include <cstring>

#include "core/environment.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/processed_args.h"
#include "core/rewriting/java_options.h"
#include "core/rewriting/path_rewriting.h"
#include "core/rewriting/single_arg.h"
#include "jli/args.h"
#include "jli/kept.h"
#include "jli/text_buffer.h"
#include "jli/trace.h"
#include "platform/windows_services.h"

namespace {

constexpr size_t LIST_CAPACITY = 8;

constexpr char WARNING[] = R"(

****************************************************************
********* WARNING: A JVM ENV VAR, '%s', has been set.
%s****************************************************************

)";
constexpr char OVERRIDES[] =
    R"(*********          This var can override JVM arguments on the command line,
*********          and can change the runtime behaviour of the application.
)";
constexpr char ADDS[] =
    R"(*********          This var cannot override existing JVM arguments on the command line,
*********          but it can add arguments that can change the runtime behaviour of the application.
)";

void set_variable_or_exit(const char *name, const char *value) {
    if (!SetEnvironmentVariableA(name, value)) {
        end_with_fault(1, format_text("Error: Failed to set %%%s%%\n", name));
    }
}

// Whoever reads the variable splits it at blanks outside of quotes.
void set_to_joined(const char *name, char *const *options, int count) {
    text_buffer joined;
    for (int i = 0; i < count; i++) {
        if (i > 0) {
            append(joined, ' ');
        }
        const bool is_quoted = quotes_arguments_later && strchr(options[i], ' ') != nullptr;
        append(joined, is_quoted ? format_text("\"%s\"", options[i]).get() : options[i]);
    }
    set_jvm_env_var(name, joined.c_str());
}

void rewrite_options(const char *name, const char *guest_name, JLI_List options) {
    JLI_TraceLauncher(WARNING, name, strcmp(name, "_JAVA_OPTIONS") == 0 ? OVERRIDES : ADDS);
    updated_options_for_var_count = 0;
    options_for_quorvel_guest_var_count = 0;
    process_args(static_cast<int>(options->size), options->elements,
                 {updated_options_for_var, &updated_options_for_var_count},
                 {options_for_quorvel_guest_var, &options_for_quorvel_guest_var_count});
    set_to_joined(name, updated_options_for_var, updated_options_for_var_count);
    if (use_advanced_launch_mode) {
        set_to_joined(guest_name, options_for_quorvel_guest_var,
                      options_for_quorvel_guest_var_count);
    }
}

// The options of a variable, as they were at the start of the process. Their texts share a block,
// so that the list cannot be freed by itself (jli/args.h).
JLI_List options_of(const char *name) {
    JLI_List options = JLI_List_new(LIST_CAPACITY);
    JLI_AddArgsFromEnvVar(options, name);
    keep_until_release(options->elements);
    keep_until_release(options);
    return options;
}

// The user's own guest options.
void append_guest_options(const char *guest_name) {
    JLI_List options = options_of(guest_name);
    for (size_t i = 0; i < options->size; i++) {
        place({rhs, &rhs_count}, options->elements[i]);
    }
}

} // namespace

void process_jvm_env_var(const char *name) {
    if (strcmp(name, "CLASSPATH") == 0) {
        process_classpath_env_var(*current_launch_mode().paths_move_to);
        return;
    }
    const text_ptr guest_name = format_text("QUORVEL_GUEST_%s", name);
    JLI_List options = options_of(name);
    if (options->size > 0) {
        rewrite_options(name, guest_name.get(), options);
    }
    if (use_advanced_launch_mode) {
        append_guest_options(guest_name.get());
    }
}

void process_classpath_env_var(const char *new_home) {
    constexpr const char *name = "CLASSPATH";
    JLI_TraceLauncher("Get %s from environment\n"
                      "-----------------------------\n",
                      name);
    const text_ptr value = read_environment(name);
    if (value == nullptr) {
        JLI_TraceLauncher("    $%s not set in environment\n\n", name);
        return;
    }
    JLI_TraceLauncher("    $%s set in environment: %s\n\n", name, value.get());
    set_variable_or_exit(name, moved_value(value.get(), new_home));
}

void set_jvm_env_var(const char *name, const char *value) {
    set_variable_or_exit(name, value);
    JLI_TraceLauncher("JVM ENVIRONMENT SETTING:\n"
                      "------------------------\n"
                      "%%%s%%: %s\n\n",
                      name, value);
}
