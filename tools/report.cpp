#include "tools/report.h"

#include <cstdio>
#include <cstring>
#include <iterator>

#include "core/environment.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "jli/text_buffer.h"
#include "platform/command_line.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/inspection.h"
#include "tools/configuration_review.h"
#include "tools/findings.h"
#include "tools/installation.h"
#include "tools/launch.h"

namespace {

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
text_ptr old_values[std::size(VARIABLES)];

text_buffer report;

JLI_PRINTF_LIKE(1, 2) void print(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    append(report, format_text_list(format, arguments).get());
    va_end(arguments);
}

// Where the launcher's message is to be found.
text_ptr place_of_message() {
    if (the_launch.failing != nullptr && the_launch.failing->kind == value_kind::log) {
        return copy_text("on standard error");
    }
    if (is_transparent || is_native_invocation) {
        return copy_text("on standard error");
    }
    const bool is_printed = the_launch.target != nullptr && the_launch.failing != nullptr;
    return is_printed || the_launch.start_error != 0
               ? copy_text("on standard output")
               : format_text("in its trace alone; with %s=true on standard error",
                             key_of(&is_transparent));
}

void write_verdict() {
    const setting *failing = the_launch.failing;
    if (the_launch.goes_through) {
        print("The launch would go through.\n");
    } else {
        print("The launch would fail: ");
        append_first_finding(report, failing);
        print("\n");
    }
    text_buffer more;
    append_findings(more, failing, !the_launch.goes_through);
    if (more.length > 0) {
        print(the_launch.goes_through ? "\nWorth a look\n%s" : "\nWrong as well\n%s", more.c_str());
    }
    const bool is_launched = the_installation.home == nullptr || the_installation.is_launcher;
    if (the_launch.message != nullptr && !the_launch.goes_through && is_launched) {
        print("\nThe launcher would say, with status %d, %s\n  %s\n", the_launch.status,
              place_of_message().get(), the_launch.message.get());
    }
}

void write_configuration() {
    print("\nConfiguration\n  %s\\launcher.cfg: ", launcher_home);
    const int count = setting_lines();
    if (count < 0) {
        print("not there\n");
    } else {
        print(count == 1 ? "%d setting\n" : "%d settings\n", count);
    }
    const char *reason =
        is_native_invocation ? ", as always for a native host, whatever launcher.cfg says" : "";
    if (launch_mode != nullptr) {
        print("\nLaunch mode\n  %s%s\n", launch_mode, reason);
    }
}

text_ptr path_and_origin(const home &each) {
    const char *path = *each.row->text;
    return is_set(path) ? format_text("%s (from %s)", path,
                                      each.is_configured ? "launcher.cfg" : "the environment")
                        : copy_text("set nowhere");
}

void write_homes() {
    print("\nHomes\n");
    for (const home &each : homes) {
        const text_ptr fault = each.is_needed ? home_fault(each.row->text) : nullptr;
        print("  %-15s %s: %s\n", each.row->key, path_and_origin(each).get(),
              !each.is_needed    ? "not needed"
              : fault == nullptr ? "passes"
                                 : "does not pass");
    }
}

// On a terminal what is longer than a line has one argument on each.
bool is_folded(size_t length, const request &asked) {
    const int columns = columns_of(stdout);
    return asked.one_per_line || (columns > 0 && length + 2 > static_cast<size_t>(columns));
}

void write_list(const char *title, char *const *entries, int count, const request &asked) {
    size_t length = 1;
    for (int i = 0; i < count; i++) {
        length += strlen(entries[i]) + 1;
    }
    const bool folds = is_folded(length, asked);
    print("\n%s\n", title);
    for (int i = 0; i < count; i++) {
        print("%s%s", i == 0 || folds ? "  " : " ", entries[i]);
        print(folds || i == count - 1 ? "\n" : "");
    }
}

// Each as it stands in the line.
void write_arguments(const char *at, bool is_folded) {
    const text_ptr scratch = copy_text(at);
    while (is_folded && *(at += strspn(at, " \t")) != '\0') {
        char *room = scratch.get();
        const char *end = take_argument(at, &room);
        print("\n  %s", copy_text({at, static_cast<size_t>(end - at)}).get());
        at = end;
    }
    print("%s", at);
}

void write_start(const request &asked) {
    const text_ptr folder(current_directory());
    const char *arguments = the_launch.arguments.text.get();
    print("\nWould be started in %s\n  %s", folder == nullptr ? "?" : folder.get(),
          the_launch.command);
    write_arguments(arguments, is_folded(strlen(the_launch.command) + strlen(arguments), asked));
    print("\n");
}

void write_variables() {
    bool is_first = true;
    for (size_t i = 0; i < std::size(VARIABLES); i++) {
        const text_ptr value = read_environment(VARIABLES[i]);
        const char *now = value == nullptr ? "" : value.get();
        const char *before = old_values[i] == nullptr ? "" : old_values[i].get();
        if (strcmp(before, now) != 0) {
            print(is_first ? "\nVariables\n" : "");
            print("  %s\n    old: %s\n    new: %s\n", VARIABLES[i], before, now);
            is_first = false;
        }
    }
}

} // namespace

void keep_variables() {
    for (size_t i = 0; i < std::size(VARIABLES); i++) {
        old_values[i] = read_environment(VARIABLES[i]);
    }
}

void write_report(const request &asked) {
    write_verdict();
    if (asked.library == nullptr) {
        append_installation(report);
    }
    if (launcher_home != nullptr) {
        write_configuration();
    }
    if (the_launch.has_homes) {
        write_homes();
    }
    if (the_launch.goes_through && !is_native_invocation) {
        write_start(asked);
    }
    if (the_launch.is_rewritten && (asked.shows_rewriting || is_native_invocation)) {
        const bool is_advanced = use_advanced_launch_mode != 0;
        write_list(is_advanced ? "Host arguments" : "Leading arguments", lhs, lhs_count, asked);
        write_list(is_advanced ? "Guest arguments" : "Trailing arguments", rhs, rhs_count, asked);
    }
    write_variables();
    write_text(stdout, report.c_str());
}
