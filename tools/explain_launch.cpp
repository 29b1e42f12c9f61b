// explain_launch: what would the launcher do? Reads the configuration, settles and checks the
// homes, rewrites a command line, and prints what came of it. Starts nothing.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "core/environment.h"
#include "core/home_faults.h"
#include "core/jlp_utils.h"
#include "core/launch_mode.h"
#include "core/state_text.h"
#include "platform/files.h"

namespace {

constexpr char USAGE[] =
    "usage: explain_launch [--launcher-home DIR | --library PATH] [--trace] [--one-per-line]\n"
    "                      -- ARGUMENTS\n"
    "  --launcher-home DIR  the folder with launcher.cfg; without it, the one that explain_launch\n"
    "                       itself lies in the bin or jre\\bin folder of\n"
    "  --library PATH       a native host's start, with the path of its qvljni.dll\n"
    "  --trace              trace every step, as SHOW_START=true does\n"
    "  --one-per-line       print each rewritten argument on a line of its own\n"
    "Exit status: 0 when the launch would go through, 1 when not, 2 for a wrong usage.\n";

constexpr int USAGE_STATUS = 2;

struct request {
    const char *launcher_home = nullptr;
    const char *library = nullptr;
    bool one_per_line = false;
    int argc = 0;
    char *const *argv = nullptr;
};

struct home {
    const char *name;
    char **path;
    bool is_needed;
    text_ptr (*fault)();
};

// What the rewriting may change in the environment.
constexpr const char *VARIABLES[] = {
    "JDK_JAVA_OPTIONS",
    "JAVA_TOOL_OPTIONS",
    "_JAVA_OPTIONS",
    "QUORVEL_GUEST_JDK_JAVA_OPTIONS",
    "QUORVEL_GUEST_JAVA_TOOL_OPTIONS",
    "QUORVEL_GUEST__JAVA_OPTIONS",
    "CLASSPATH",
    "Path",
    "QUORVEL_ORIGINAL_LIBRARY_PATH",
};
constexpr size_t VARIABLE_COUNT = std::size(VARIABLES);

struct variable {
    const char *name;
    text_ptr old_value;
};

JLI_PRINTF_LIKE(1, 2) void print(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    fputs(format_text_list(format, arguments).get(), stdout);
    va_end(arguments);
}

[[noreturn]] void refuse_usage() {
    fputs(USAGE, stderr);
    exit(USAGE_STATUS);
}

request read_request(int argc, char **argv) {
    request asked;
    int i = 1;
    for (; i < argc && strcmp(argv[i], "--") != 0; i++) {
        const std::string_view option(argv[i]);
        const char *value = i + 1 < argc ? argv[i + 1] : nullptr;
        if (option == "--trace") {
            JLI_SetTraceLauncher();
        } else if (option == "--one-per-line") {
            asked.one_per_line = true;
        } else if (option == "--launcher-home" && value != nullptr) {
            asked.launcher_home = argv[++i];
        } else if (option == "--library" && value != nullptr) {
            asked.library = argv[++i];
        } else {
            refuse_usage();
        }
    }
    if (i == argc || (asked.launcher_home != nullptr && asked.library != nullptr)) {
        refuse_usage();
    }
    asked.argc = argc - i - 1;
    asked.argv = argv + i + 1;
    return asked;
}

text_ptr full_path_of(const char *path) {
    text_ptr full_path(new_state_text());
    if (GetFullPathNameA(path, TEXT_SIZE, full_path.get(), nullptr) >= TEXT_SIZE) {
        refuse_long_text(path);
    }
    return full_path;
}

// The launcher of a home is the java.exe in its bin folder, or else the one in jre\bin.
void take_launcher_home(const char *directory) {
    text_ptr home = full_path_of(directory);
    const size_t length = strlen(home.get());
    if (length > 0 && home.get()[length - 1] == file_separator) {
        home.get()[length - 1] = '\0';
    }
    launcher_home = home.release();
    const bool uses_jre =
        !is_file(format_text("%s%s%s", launcher_home, bin, slash_exe_name).get()) &&
        is_file(format_text("%s%s%s", launcher_home, jre_bin, slash_exe_name).get());
    assign_text(&bin_dir, uses_jre ? jre_bin : bin);
}

void take_own_home() {
    const text_ptr own_path(get_executable_file_path());
    const std::string_view path(own_path.get());
    assign_text(&executable_dir, {path.data(), path.rfind(file_separator)});
    set_bin_dir();
}

void load(const request &asked) {
    os_name = "Windows";
    if (asked.library != nullptr) {
        // A native host has no folder of its own; its Java runs from the homes' bin folders.
        assign_text(&bin_dir, bin);
        init_launcher_home_from_library_path(asked.library);
        native_jvm_bits = 64;
    } else if (asked.launcher_home != nullptr) {
        take_launcher_home(asked.launcher_home);
    } else {
        take_own_home();
    }
    load_config_file();
}

const char *origin_of(const home &each, bool is_configured) {
    if (**each.path == '\0') {
        return "set nowhere";
    }
    return is_configured ? "from launcher.cfg" : "from the environment";
}

// Prints where each home came from and whether it passes; returns whether all that are needed do.
bool explain_homes() {
    const launch_mode_row &mode = current_launch_mode();
    const home homes[] = {
        {"CONTAINER_HOME", &container_home, mode.runs_container(), container_home_fault},
        {"JVM_HOME", &jvm_home, true, jvm_home_fault},
        {"QUORVEL_HOME", &quorvel_home, mode.has_agents, quorvel_home_fault},
    };
    bool is_configured[std::size(homes)];
    for (size_t i = 0; i < std::size(homes); i++) {
        is_configured[i] = **homes[i].path != '\0';
    }
    // A native host goes by its configuration alone.
    if (!is_native_invocation) {
        fall_back_on_env_vars();
    }
    bool all_pass = true;
    print("\nHomes\n");
    for (size_t i = 0; i < std::size(homes); i++) {
        const home &each = homes[i];
        print("  %-15s %s (%s): ", each.name, *each.path, origin_of(each, is_configured[i]));
        if (!each.is_needed) {
            print("not needed\n");
            continue;
        }
        const text_ptr fault = each.fault();
        print("%s", fault == nullptr ? "passes\n" : fault.get());
        all_pass = all_pass && fault == nullptr;
    }
    return all_pass;
}

// A native host starts Java itself.
bool explain_executable() {
    if (is_native_invocation) {
        return true;
    }
    const text_ptr target = target_path("java.exe");
    const text_ptr launcher = format_text("%s%s%s", launcher_home, bin_dir, slash_exe_name);
    const char *fault = "";
    if (!is_file(target.get())) {
        fault = " (missing)";
    } else if (strcasecmp(full_path_of(target.get()).get(), launcher.get()) == 0) {
        fault = " (the launcher itself)";
    }
    print("\nExecutable\n  %s%s\n", target.get(), fault);
    return *fault == '\0';
}

void explain_list(const char *title, char *const *entries, int count, bool one_per_line) {
    print("\n%s\n", title);
    for (int i = 0; i < count; i++) {
        print("%s%s", i == 0 || one_per_line ? "  " : " ", entries[i]);
        if (one_per_line || i == count - 1) {
            print("\n");
        }
    }
}

// The rewriting ends the process where a launch would end with status 1, and only a trace says why.
bool is_rewriting = false;

void explain_end() {
    if (is_rewriting) {
        print("\nThe rewriting ended the launch with status 1; --trace shows why.\n");
        fflush(stdout);
    }
}

void rewrite(const request &asked) {
    atexit(explain_end);
    is_rewriting = true;
    init_host_and_guest_versions();
    parse_arguments(asked.argc, asked.argv);
    is_rewriting = false;
    const bool is_advanced = use_advanced_launch_mode != 0;
    explain_list(is_advanced ? "Host arguments" : "Leading arguments", lhs, lhs_count,
                 asked.one_per_line);
    explain_list(is_advanced ? "Guest arguments" : "Trailing arguments", rhs, rhs_count,
                 asked.one_per_line);
}

void explain_variables(variable (&variables)[VARIABLE_COUNT]) {
    print("\nVariables\n");
    for (const variable &each : variables) {
        const text_ptr value = read_environment(each.name);
        const char *now = value == nullptr ? "" : value.get();
        const char *before = each.old_value == nullptr ? "" : each.old_value.get();
        if (strcmp(before, now) != 0) {
            print("  %s\n    old: %s\n    new: %s\n", each.name, before, now);
        }
    }
}

} // namespace

int main(int argc, char **argv) {
    const request asked = read_request(argc, argv);
    variable variables[VARIABLE_COUNT];
    for (size_t i = 0; i < VARIABLE_COUNT; i++) {
        variables[i] = {VARIABLES[i], read_environment(VARIABLES[i])};
    }
    load(asked);
    print("Launcher home\n  %s\n\nLaunch mode\n  %s%s\n", launcher_home, launch_mode,
          is_native_invocation ? ", for a native host" : "");
    const bool homes_pass = explain_homes();
    const bool executable_exists = explain_executable();
    rewrite(asked);
    explain_variables(variables);
    const bool goes_through = homes_pass && executable_exists;
    print("\n%s\n", goes_through ? "The launch would go through." : "The launch would fail.");
    return goes_through ? 0 : 1;
}
