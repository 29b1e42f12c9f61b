#include "core/home_directories.h"

#include <cstdio>
#include <cstring>

#include "core/environment.h"
#include "core/home_faults.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/settings.h"
#include "core/state_text.h"
#include "jli/trace.h"
#include "platform/files.h"

namespace {

bool is_empty(const char *text) {
    return *text == '\0';
}

void fall_back_on_env_var(char **home) {
    const char *name = key_of(home);
    const text_ptr title = format_text("Get %s from environment", name);
    text_ptr underline = copy_text(title.get());
    memset(underline.get(), '-', strlen(title.get()));
    JLI_TraceLauncher("%s\n"
                      "%s\n",
                      title.get(), underline.get());
    const text_ptr value = read_environment(name);
    if (value == nullptr) {
        JLI_TraceLauncher("    $%s not set in environment\n", name);
    } else {
        assign_text(home, value.get());
        JLI_TraceLauncher("    $%s set in environment: %s\n", name, *home);
    }
    JLI_TraceLauncher("\n");
}

// What is wrong with a home as a folder; one that is right loses one trailing separator.
text_ptr folder_fault(const char *name, char *home) {
    if (home == nullptr) {
        return format_text("Error: %s is not set\n", name);
    }
    if (!is_directory(home)) {
        return format_text("Error: %s directory '%s' doesn't exist\n", name, home);
    }
    const size_t length = strlen(home);
    if (home[length - 1] == file_separator) {
        home[length - 1] = '\0';
    }
    return nullptr;
}

// java.exe is asked for whatever the launcher's own file is called.
bool holds_java(const char *home) {
    return is_file(format_text("%s%s%s", home, bin_dir, slash_exe_name).get());
}

// What is wrong with what a home holds. A launcher in a jre\bin folder takes a JVM home without
// one, as those of Java 9 and later are.
text_ptr content_fault(const char *name, char *const *home) {
    if (home == &quorvel_home) {
        const text_ptr jar = joined_text(*home, slash_quorvel_jar);
        return is_file(jar.get())
                   ? nullptr
                   : format_text("Error: Quorvel agent jar file '%s' doesn't exist\n", jar.get());
    }
    if (holds_java(*home)) {
        return nullptr;
    }
    if (home == &container_home) {
        return format_text("Error: neither bin/java nor jre/bin/java exist in %s '%s'\n"
                           "Error: %s/java doesn't exist in %s '%s'\n",
                           name, *home, bin_dir, name, *home);
    }
    return std::string_view(jre_bin).starts_with(bin_dir)
               ? nullptr
               : format_text("Error: %s/java doesn't exist in %s '%s'\n", bin_dir, name, *home);
}

void trace_bundled(char *const *home) {
    JLI_TraceLauncher("%s set using bundle config: %s\n", key_of(home), *home);
}

[[noreturn]] void end_without_bundle(const char *directory) {
    end_with_fault(0, format_text("Error: %s doesn't exist\n", directory));
}

void set_container_home_from_bundle() {
    const std::string_view directory(executable_dir);
    const bool in_jre_bin = directory.ends_with(jre_bin);
    if (!in_jre_bin && !directory.ends_with(bin)) {
        end_with_fault(0, format_text("Error: java executable is expected to be in either the %s "
                                      "or %s folder\n",
                                      jre_bin, bin));
    }
    const text_ptr home = format_text("%s\\..%s", executable_dir, in_jre_bin ? "\\.." : "");
    assign_text(&container_home, home.get());
    if (!is_directory(container_home)) {
        end_without_bundle(container_home);
    }
    trace_bundled(&container_home);
}

} // namespace

void fall_back_on_env_vars() {
    const launch_mode_row &mode = current_launch_mode();
    for (char **home : HOMES) {
        if (is_empty(*home) && mode.needs(home)) {
            fall_back_on_env_var(home);
        }
    }
}

text_ptr home_fault(char **home) {
    const char *name = key_of(home);
    text_ptr fault = folder_fault(name, *home);
    return fault == nullptr ? content_fault(name, home) : std::move(fault);
}

int validate_directories() {
    const launch_mode_row &mode = current_launch_mode();
    for (char **home : HOMES) {
        const text_ptr fault = mode.needs(home) ? home_fault(home) : nullptr;
        if (fault != nullptr) {
            trace_fault(fault.get());
            return FAILURE;
        }
    }
    return SUCCESS;
}

text_ptr target_path(const char *executable_name) {
    const char *home = *current_launch_mode().java_home;
    return format_text("%s%s%c%s", home, bin_dir, file_separator, executable_name);
}

text_ptr invalid_command_text(const char *target) {
    return format_text("Error: invalid command: %s\n", target);
}

void fall_back_on_bundle() {
    if (is_empty(container_home)) {
        set_container_home_from_bundle();
    }
    if (is_empty(jvm_home)) {
        assign_text(&jvm_home, format_text("%s\\..\\..\\..", container_home).get());
        if (!is_directory(jvm_home)) {
            end_without_bundle(jvm_home);
        }
        trace_bundled(&jvm_home);
    }
    if (is_empty(quorvel_home)) {
        assign_text(&quorvel_home, format_text("%s\\quorvel_home", jvm_home).get());
        if (!is_directory(quorvel_home)) {
            end_with_error(0, format_text("Error: %s doesn't exist\n", quorvel_home));
        }
        trace_bundled(&quorvel_home);
    }
}
