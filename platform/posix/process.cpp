#include "platform/received_start.h"

#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/command_line.h"
#include "platform/posix/command_line.h"
#include "platform/posix/environment.h"
#include "platform/posix/last_error.h"
#include "platform/posix/objects.h"

namespace {

constexpr size_t COMMAND_LINE_SIZE = 32767; // terminator included

// What is asked for beside the command line.
struct start_manner {
    bool suspended;
    bool hands_on_descriptors;
};

// A process that is started with SIGCHLD ignored would never learn its children's exit codes.
void keep_exit_codes() {
    struct sigaction action;
    if (sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        signal(SIGCHLD, SIG_DFL);
    }
}

bool start_command(const char *command_line, start_manner manner, started_child *child) {
    char program[PATH_MAX];
    size_t program_length = find_program(command_line, program);
    if (program_length == 0) {
        return false;
    }
    char **arguments = split_command_line(command_line, program_length);
    if (arguments == nullptr) {
        return fail_with(ERROR_NOT_ENOUGH_MEMORY);
    }
    keep_exit_codes();
    int error = start_child(
        {program, arguments, child_environment(), manner.suspended, manner.hands_on_descriptors},
        child);
    free(arguments);
    return error == 0 || fail_with(windows_error(error));
}

bool fill_information(child_process *child, LPPROCESS_INFORMATION process) {
    process->hProcess = new_object(object_kind::process, child);
    process->hThread =
        process->hProcess == nullptr ? nullptr : new_object(object_kind::thread, child);
    process->dwProcessId = static_cast<DWORD>(child->start.pid);
    process->dwThreadId = process->dwProcessId;
    if (process->hThread == nullptr && process->hProcess != nullptr) {
        CloseHandle(process->hProcess);
    }
    return process->hThread != nullptr;
}

BOOL create_child(const char *command_line, start_manner manner, LPPROCESS_INFORMATION process) {
    child_process *child = static_cast<child_process *>(calloc(1, sizeof(child_process)));
    if (child == nullptr) {
        return fail_with(ERROR_NOT_ENOUGH_MEMORY);
    }
    child->references = 1;
    BOOL done = start_command(command_line, manner, &child->start);
    child->has_ended = !done;
    if (done && !fill_information(child, process)) {
        terminate_child(child, 0);
        watch_child(child, true);
        done = FALSE;
    }
    release_child(child);
    return done;
}

// Characters as Windows counts them: those of four bytes are two.
size_t utf16_length(std::string_view text) {
    size_t length = 0;
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        length += (byte & 0xC0) != 0x80;
        length += byte >= 0xF0;
    }
    return length;
}

char *join(const char *command, const char *arguments) {
    char *line = nullptr;
    return asprintf(&line, "%s%s", command, arguments) < 0 ? nullptr : line;
}

} // namespace

BOOL CreateProcessA(LPCSTR application, LPSTR command_line,
                    LPSECURITY_ATTRIBUTES process_attributes,
                    LPSECURITY_ATTRIBUTES thread_attributes, BOOL inherit_handles, DWORD flags,
                    LPVOID environment, LPCSTR directory, LPSTARTUPINFOA start_up,
                    LPPROCESS_INFORMATION process) {
    if (application != nullptr || command_line == nullptr || process_attributes != nullptr ||
        thread_attributes != nullptr || inherit_handles || (flags & ~CREATE_SUSPENDED) != 0 ||
        environment != nullptr || directory != nullptr || start_up == nullptr ||
        process == nullptr) {
        return fail_with(ERROR_INVALID_PARAMETER);
    }
    if (strlen(command_line) >= COMMAND_LINE_SIZE) {
        return fail_with(ERROR_FILENAME_EXCED_RANGE);
    }
    return create_child(command_line, {(flags & CREATE_SUSPENDED) != 0, false}, process);
}

BOOL start_as_received(const char *command, const char *arguments, DWORD flags,
                       PROCESS_INFORMATION *process) {
    char *own = arguments == nullptr ? own_arguments_text() : nullptr;
    const char *tail = arguments == nullptr ? own : arguments;
    char *line = tail == nullptr ? nullptr : join(command, tail);
    free(own);
    BOOL done = FALSE;
    if (line == nullptr) {
        fail_with(ERROR_NOT_ENOUGH_MEMORY);
    } else if (utf16_length(line) >= COMMAND_LINE_SIZE) {
        fail_with(ERROR_FILENAME_EXCED_RANGE);
    } else {
        done = create_child(line, {(flags & CREATE_SUSPENDED) != 0, true}, process);
    }
    free(line);
    return done;
}

DWORD ResumeThread(HANDLE thread) {
    constexpr DWORD FAILED = static_cast<DWORD>(-1);
    kernel_object *object = find_object(thread, object_kind::thread);
    if (object == nullptr) {
        return FAILED;
    }
    child_process *child = object->child;
    if (child->start.held == hold::none) {
        return 0;
    }
    // A child that was killed meanwhile is not to be resumed: waiting for it tells its end.
    watch_child(child, false);
    if (!child->has_ended && !let_run(child->start)) {
        fail_with(ERROR_ACCESS_DENIED);
        return FAILED;
    }
    child->start.held = hold::none;
    return 1;
}

DWORD WaitForSingleObject(HANDLE process, DWORD milliseconds) {
    kernel_object *object = find_object(process, object_kind::process);
    if (object == nullptr) {
        return WAIT_FAILED;
    }
    if (milliseconds != INFINITE) {
        fail_with(ERROR_INVALID_PARAMETER);
        return WAIT_FAILED;
    }
    watch_child(object->child, true);
    return WAIT_OBJECT_0;
}

BOOL GetExitCodeProcess(HANDLE process, DWORD *code) {
    kernel_object *object = find_object(process, object_kind::process);
    if (object == nullptr) {
        return FALSE;
    }
    watch_child(object->child, false);
    *code = object->child->has_ended ? object->child->exit_code : STILL_ACTIVE;
    return TRUE;
}

BOOL TerminateProcess(HANDLE process, UINT code) {
    kernel_object *object = find_object(process, object_kind::process);
    if (object == nullptr) {
        return FALSE;
    }
    return terminate_child(object->child, code) || fail_with(ERROR_ACCESS_DENIED);
}
