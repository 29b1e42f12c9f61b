#include "jli/trace.h"

#include <cstdio>

#include "jli/ending.h"

int _launcher_debug = 0;
int leaves_standard_output = 0;
int says_faults = 0;

namespace {

bool traces_to_log_alone() {
    return leaves_standard_output && LOG_FILE_FD != nullptr;
}

} // namespace

void write_trace(FILE *stream, const text_ptr &message) {
    if (LOG_FILE_FD != nullptr) {
        print_text(LOG_FILE_FD, message);
    }
    if (!traces_to_log_alone()) {
        print_text(stream, message);
    }
}

void JLI_SetTraceLauncher() {
    _launcher_debug = 1;
}

int JLI_IsTraceLauncher() {
    return _launcher_debug;
}

void JLI_TraceLauncher(const char *format, ...) {
    if (_launcher_debug != 1) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    const text_ptr message = format_text_list(format, arguments);
    va_end(arguments);
    write_trace(leaves_standard_output ? stderr : stdout, message);
}

void say_fault(const char *message) {
    const text_ptr line = format_text("%s\n", message);
    char *end = line.get();
    for (const char *from = line.get(); *from != '\0'; from++) {
        if (*from != '\n') {
            *end++ = *from;
        } else if (from[1] != '\n' && from[1] != '\0') {
            *end++ = ' ';
        }
    }
    *end++ = '\n';
    *end = '\0';
    print_text(stderr, line);
}

void say_traced_fault(const char *message) {
    if (says_faults && end_listener == nullptr &&
        (!JLI_IsTraceLauncher() || traces_to_log_alone())) {
        say_fault(message);
    }
}

void trace_fault(const char *message) {
    JLI_TraceLauncher("%s", message);
    say_traced_fault(message);
}

void end_with_fault(int status, const text_ptr &message) {
    trace_fault(message.get());
    end_after(status, message);
}

void end_with_error(int status, const text_ptr &message) {
    print_text(stderr, message);
    end_after(status, message);
}

void end_after(int status, const text_ptr &message) {
    const size_t length = strlen(message.get());
    if (length > 0 && message.get()[length - 1] == '\n') {
        message.get()[length - 1] = '\0';
    }
    end_process(status, message.get());
}
