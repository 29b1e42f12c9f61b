#include "tools/launch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/child_arguments.h"
#include "core/jlp_utils.h"
#include "core/launch_mode.h"
#include "core/state_text.h"
#include "jli/trace.h"
#include "platform/console.h"
#include "platform/inspection.h"
#include "tools/installation.h"

launch the_launch;

home homes[std::size(HOMES)];

namespace {

// Windows refuses a command line of this many characters.
constexpr size_t LONGEST_LINE = 32767;

bool traces = false;
bool is_running = false;
int (*report_end)() = nullptr;

text_ptr in_one_line(const char *text) {
    text_ptr line = copy_text(trimmed(text));
    std::replace(line.get(), line.get() + strlen(line.get()), '\n', ' ');
    return line;
}

// The core's last error is why it has ended.
void keep_text(FILE *, const char *text) {
    if (strncmp(text, "Error", strlen("Error")) == 0) {
        the_launch.message = in_one_line(text);
    }
    if (traces) {
        write_text(stderr, text);
    }
}

bool try_trace_log(const char *path) {
    const bool could_be = could_be_written(path);
    if (!could_be) {
        the_launch.failing = std::ranges::find(SETTINGS, value_kind::log, &setting::kind);
        the_launch.status = FAILURE;
    }
    return could_be;
}

// The core ends with 1 what it cannot hold or rewrite, and with the launcher's -1, which is not the
// tool's, where there is no log.
void end_early() {
    if (is_running) {
        is_running = false;
        the_launch.goes_through = false;
        the_launch.status = the_launch.status == 0 ? 1 : the_launch.status;
        const int status = report_end();
        if (the_launch.status != status) {
            fflush(nullptr);
            _Exit(status);
        }
    }
}

void fail(int status, const char *message, const setting *failing) {
    the_launch.status = status;
    the_launch.message = in_one_line(message);
    the_launch.failing = failing;
}

void load(const request &asked) {
    os_name = "Windows";
    if (asked.library != nullptr) {
        // A native host has no folder of its own; its Java runs from the homes' bin folders.
        assign_text(&bin_dir, bin);
        init_launcher_home_from_library_path(asked.library);
        native_jvm_bits = 64;
    } else {
        const installation &here = the_installation;
        assign_text(&executable_dir, joined_text(here.home.get(), here.folder).get());
        set_bin_dir();
    }
    load_config_file();
    // From here on every fault is said, and what is said is said once.
    leaves_standard_output = 0;
    says_faults = 1;
}

// A native host goes by its configuration alone.
bool settle_homes() {
    const launch_mode_row &mode = current_launch_mode();
    for (size_t i = 0; i < std::size(HOMES); i++) {
        homes[i] = {setting_kept_in(HOMES[i]), mode.needs(HOMES[i]), is_set(*HOMES[i])};
    }
    if (!is_native_invocation) {
        fall_back_on_env_vars();
    }
    the_launch.has_homes = true;
    if (validate_directories() == SUCCESS) {
        return true;
    }
    const home *failing = std::ranges::find_if(homes, [](const home &each) {
        return each.is_needed && home_fault(each.row->text) != nullptr;
    });
    the_launch.status = FAILURE;
    the_launch.failing = failing->row;
    return false;
}

// A program that cannot be started is told of by its error only where the start is transparent.
void fail_to_start(DWORD error) {
    the_launch.start_error = error;
    const text_ptr message = is_transparent ? start_fault_text(the_launch.command, error)
                                            : invalid_command_text(the_launch.target.get());
    fail(1, message.get(), nullptr);
}

bool settle_target() {
    the_launch.target = target_path(the_installation.name.get());
    const char *target = the_launch.target.get();
    if (!is_startable(target, the_installation.file.get())) {
        fail(FAILURE, invalid_command_text(target).get(),
             setting_kept_in(current_launch_mode().java_home));
        return false;
    }
    the_launch.command = processArg(target);
    return true;
}

// In characters of UTF-16, as the system counts.
size_t characters_in(const char *text) {
    size_t count = 0;
    for (; *text != '\0'; text++) {
        const unsigned char byte = static_cast<unsigned char>(*text);
        count += (byte & 0xC0) != 0x80 ? 1 : 0;
        count += byte >= 0xF0 ? 1 : 0;
    }
    return count;
}

void make_command_line(const request &asked) {
    the_launch.arguments = arguments_for_child({asked.count, asked.texts, asked.line});
    the_launch.is_rewritten = rewrites_arguments != 0;
    DWORD error = error_of_program(the_launch.target.get());
    const size_t length =
        characters_in(the_launch.command) + characters_in(the_launch.arguments.text.get());
    if (error == 0 && length >= LONGEST_LINE) {
        error = ERROR_FILENAME_EXCED_RANGE;
    }
    the_launch.goes_through = error == 0;
    if (error != 0) {
        fail_to_start(error);
    }
}

void rewrite(const request &asked) {
    init_host_and_guest_versions();
    parse_arguments(asked.count, asked.texts);
    the_launch.is_rewritten = true;
}

} // namespace

const char *plain_mode() {
    const launch_mode_row *row = launch_modes;
    while (row->has_agents) {
        row++;
    }
    return row->name;
}

void run_stages(const request &asked, int (*at_end)()) {
    report_end = at_end;
    traces = asked.traces;
    text_writer = keep_text;
    open_trace_log = try_trace_log;
    atexit(end_early);
    is_running = true;
    if (traces) {
        JLI_SetTraceLauncher();
    }
    load(asked);
    const bool homes_pass = settle_homes();
    if (is_native_invocation) {
        the_launch.goes_through = homes_pass;
        rewrite(asked);
    } else {
        if (homes_pass && settle_target()) {
            make_command_line(asked);
        }
        if (asked.shows_rewriting && !the_launch.is_rewritten) {
            rewrite(asked);
        }
    }
    is_running = false;
    text_writer = write_text;
    the_launch.goes_through =
        the_launch.goes_through && (is_native_invocation || the_installation.is_launcher);
}
