#include "platform/console.h"

#include <csignal>

#include "platform/posix/last_error.h"

namespace {

PHANDLER_ROUTINE console_handler = nullptr;

// Left to its default, the event strikes when the signal is unblocked at the end of the handler.
void on_signal(int signal_number) {
    DWORD event = signal_number == SIGINT ? CTRL_C_EVENT : CTRL_BREAK_EVENT;
    if (!console_handler(event)) {
        signal(signal_number, SIG_DFL);
        raise(signal_number);
    }
}

void handle_signal(int signal_number) {
    struct sigaction old_action;
    if (sigaction(signal_number, nullptr, &old_action) == 0 && old_action.sa_handler != SIG_IGN) {
        struct sigaction action = {};
        action.sa_handler = on_signal;
        action.sa_flags = SA_RESTART;
        sigaction(signal_number, &action, nullptr);
    }
}

// Writing into a pipe without a reader only fails on Windows. A handler, unlike SIG_IGN, is not
// handed on to children.
[[gnu::constructor]] void outlive_closed_pipes() {
    struct sigaction action;
    if (sigaction(SIGPIPE, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
        action.sa_handler = [](int) {};
        action.sa_flags = SA_RESTART;
        sigaction(SIGPIPE, &action, nullptr);
    }
}

} // namespace

BOOL SetConsoleCtrlHandler(PHANDLER_ROUTINE handler, BOOL add) {
    if (handler == nullptr || !add || console_handler != nullptr) {
        return fail_with(ERROR_INVALID_PARAMETER);
    }
    console_handler = handler;
    handle_signal(SIGINT);
    handle_signal(SIGQUIT);
    return TRUE;
}

void write_text(FILE *stream, const char *text) {
    fputs(text, stream);
    fflush(stream);
}

BOOL gets_interrupts(HANDLE child) {
    return child != nullptr;
}
