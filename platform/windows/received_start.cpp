#include "platform/received_start.h"

#include <cstdlib>
#include <cwchar>

#include "platform/command_line.h"
#include "platform/windows/wide_text.h"

namespace {

constexpr size_t COMMAND_LINE_SIZE = 32767; // terminator included

const wchar_t *own_arguments() {
    return end_of_program_name(GetCommandLineW());
}

// The two texts as one, in heap memory; null, with the last error set, when that cannot be.
wchar_t *join(const wchar_t *command, const wchar_t *arguments) {
    const size_t length = wcslen(command) + wcslen(arguments);
    if (length >= COMMAND_LINE_SIZE) {
        SetLastError(ERROR_FILENAME_EXCED_RANGE);
        return nullptr;
    }
    wchar_t *line = static_cast<wchar_t *>(malloc((length + 1) * sizeof(wchar_t)));
    if (line == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return wcscat(wcscpy(line, command), arguments);
}

wchar_t *new_command_line(const char *command, const char *arguments) {
    wchar_t *wide_command = wide_text(command);
    wchar_t *wide_arguments = arguments == nullptr ? nullptr : wide_text(arguments);
    const bool done =
        wide_command != nullptr && (arguments == nullptr || wide_arguments != nullptr);
    wchar_t *line =
        done ? join(wide_command, arguments == nullptr ? own_arguments() : wide_arguments)
             : nullptr;
    free(wide_command);
    free(wide_arguments);
    return line;
}

HANDLE inheritable_stream(DWORD stream) {
    HANDLE handle = GetStdHandle(stream);
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return handle;
}

// A process whose standard handles were not named has copies of its parent's. A child that inherits
// gets none, only their values: the handles behind them must be there. Without a console not even
// the values are handed on unless they are named.
void hand_on_streams(STARTUPINFOW *start_up, bool has_console) {
    if ((start_up->dwFlags & STARTF_USESTDHANDLES) != 0) {
        return;
    }
    HANDLE input = inheritable_stream(STD_INPUT_HANDLE);
    HANDLE output = inheritable_stream(STD_OUTPUT_HANDLE);
    HANDLE error = inheritable_stream(STD_ERROR_HANDLE);
    if (!has_console) {
        start_up->dwFlags |= STARTF_USESTDHANDLES;
        start_up->hStdInput = input;
        start_up->hStdOutput = output;
        start_up->hStdError = error;
    }
}

bool has_console() {
    DWORD first;
    return GetConsoleProcessList(&first, 1) != 0;
}

} // namespace

char *own_arguments_text() {
    const wchar_t *arguments = own_arguments();
    return narrow_text(arguments, static_cast<int>(wcslen(arguments)));
}

BOOL start_as_received(const char *command, const char *arguments, DWORD flags,
                       PROCESS_INFORMATION *process) {
    wchar_t *line = new_command_line(command, arguments);
    if (line == nullptr) {
        return FALSE;
    }
    // A program of the console subsystem gets a console of its own unless it is told otherwise; a
    // priority class that cannot be told is 0, no flag.
    const bool on_console = has_console();
    flags |= (on_console ? 0 : DETACHED_PROCESS) | GetPriorityClass(GetCurrentProcess());
    STARTUPINFOW start_up;
    GetStartupInfoW(&start_up);
    hand_on_streams(&start_up, on_console);
    const BOOL done = CreateProcessW(nullptr, line, nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                                     &start_up, process);
    const DWORD error = GetLastError();
    free(line);
    SetLastError(error);
    return done;
}
