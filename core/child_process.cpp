#include "core/child_process.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

#include "core/child_run.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "jli/trace.h"
#include "platform/console.h"
#include "platform/received_start.h"
#include "platform/system_error.h"

namespace {

// A job that ends its processes with its last handle, the launcher's, but lets go of theirs.
// Null, and the system's error, when there is none.
HANDLE create_job(DWORD *error) {
    const text_ptr name = format_text("pid_%d", static_cast<int>(getpid()));
    HANDLE job = CreateJobObjectA(nullptr, name.get());
    *error = job == nullptr ? GetLastError() : DWORD{ERROR_SUCCESS};
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE |
                                              JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK |
                                              JOB_OBJECT_LIMIT_BREAKAWAY_OK;
    // Without its limits the job holds the child none the less: better than no start.
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

// A wait that failed leaves no exit code to be read, but one that says that the child still runs.
DWORD wait_for_exit_code(HANDLE process) {
    DWORD code = 0;
    const bool has_ended = WaitForSingleObject(process, INFINITE) != WAIT_FAILED;
    return has_ended && GetExitCodeProcess(process, &code) ? code : GetLastError();
}

void close_handles(PROCESS_INFORMATION *process) {
    CloseHandle(process->hProcess);
    CloseHandle(process->hThread);
    process->hProcess = nullptr;
    process->hThread = nullptr;
}

// The child that Ctrl-C and Ctrl-Break are left to: on Windows the handler has a thread of its own.
std::atomic<HANDLE> interrupted_child = nullptr;

BOOL WINAPI take_interrupt(DWORD event) {
    return (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) &&
           gets_interrupts(interrupted_child);
}

DWORD give_up_child(PROCESS_INFORMATION *process, DWORD *error) {
    *error = GetLastError();
    TerminateProcess(process->hProcess, 0);
    close_handles(process);
    return 1;
}

// From the child's creation, suspended, on. `flags` are the caller's own.
DWORD run_in_job(HANDLE job, DWORD flags, PROCESS_INFORMATION *process, DWORD *error) {
    if (!AssignProcessToJobObject(job, process->hProcess) &&
        GetLastError() != ERROR_ACCESS_DENIED) {
        return give_up_child(process, error);
    }
    if ((flags & CREATE_SUSPENDED) != 0) {
        return 0;
    }
    interrupted_child = process->hProcess;
    if (ResumeThread(process->hThread) == static_cast<DWORD>(-1)) {
        return give_up_child(process, error);
    }
    JLI_TraceLauncher("Windows Java PID = %d\n", static_cast<int>(process->dwProcessId));
    const DWORD status = wait_for_exit_code(process->hProcess);
    close_handles(process);
    return status;
}

DWORD run_plainly(HANDLE job, char *command_line) {
    STARTUPINFOA start_up = {};
    start_up.cb = sizeof start_up;
    PROCESS_INFORMATION process = {};
    return CreateProcessInJob(job, nullptr, command_line, nullptr, nullptr, FALSE, 0, nullptr,
                              nullptr, &start_up, &process);
}

// A path that holds a blank is quoted in its command-line form.
text_ptr without_quotes(std::string_view command) {
    const bool is_quoted = command.starts_with('"');
    if (is_quoted) {
        command.remove_prefix(1);
        command.remove_suffix(1);
    }
    return copy_text(command);
}

// Nothing is started without a job: `error` is why there is none.
DWORD run_as_received(HANDLE job, DWORD error, const char *command,
                      const child_arguments &arguments) {
    const text_ptr program = without_quotes(command); // the pool's text ends with cleanup()
    const char *line = arguments.are_own_line ? nullptr : arguments.text.get();
    PROCESS_INFORMATION process = {};
    DWORD status = 1;
    if (job != nullptr) {
        status = start_in_job_as_received(job, command, line, 0, &process, &error);
    }
    if (error != 0) {
        trace_fault(start_fault_text(program.get(), error).get());
    }
    return status;
}

} // namespace

text_ptr start_fault_text(const char *command, DWORD error) {
    const text_ptr words(system_error_text(error, command));
    return format_text("Error: could not start %s: %s\n", command,
                       words == nullptr ? "?" : words.get());
}

int execute_command(const char *command, char *const *argv, int argc) {
    return run_child(command, joined_arguments(argv + 1, argc - 1));
}

child_arguments joined_arguments(char *const *texts, int count) {
    size_t size = 1;
    for (int i = 0; i < count; i++) {
        size += strlen(texts[i]) + 1;
    }
    text_ptr line(static_cast<char *>(JLI_MemAlloc(size)));
    char *end = line.get();
    for (int i = 0; i < count; i++) {
        *end++ = ' ';
        end = put_text(end, texts[i]);
    }
    *end = '\0';
    return {std::move(line)};
}

int run_child(const char *command, const child_arguments &arguments) {
    const text_ptr command_line = joined_text(command, arguments.text.get());
    JLI_TraceLauncher("OUTPUT COMMAND:\n"
                      "---------------\n"
                      "%s\n\n"
                      "\n\n"
                      "EXECUTING %s PROCESS ......\n\n",
                      command_line.get(), current_launch_mode().process);

    DWORD error;
    HANDLE job = create_job(&error);
    const DWORD status = is_transparent ? run_as_received(job, error, command, arguments)
                                        : run_plainly(job, command_line.get());
    CloseHandle(job);
    if (LOG_FILE_FD != nullptr) {
        fclose(LOG_FILE_FD);
    }
    return static_cast<int>(status);
}

DWORD CreateProcessInJob(HANDLE job, LPCSTR application, LPSTR command_line,
                         LPSECURITY_ATTRIBUTES process_attributes,
                         LPSECURITY_ATTRIBUTES thread_attributes, BOOL inherit_handles, DWORD flags,
                         LPVOID environment, LPCSTR directory, LPSTARTUPINFOA start_up,
                         LPPROCESS_INFORMATION process) {
    const BOOL created = CreateProcessA(
        application, command_line, process_attributes, thread_attributes, inherit_handles,
        flags | CREATE_SUSPENDED, environment, directory, start_up, process);
    cleanup();
    DWORD error;
    return created ? run_in_job(job, flags, process, &error) : 1;
}

DWORD start_in_job_as_received(HANDLE job, const char *command, const char *arguments, DWORD flags,
                               LPPROCESS_INFORMATION process, DWORD *error) {
    const BOOL created = start_as_received(command, arguments, flags | CREATE_SUSPENDED, process);
    *error = created ? DWORD{ERROR_SUCCESS} : GetLastError(); // what follows may leave another
    cleanup();
    return created ? run_in_job(job, flags, process, error) : 1;
}

void cleanup() {
    release_text(&launch_mode);
    release_entries(non_path_options_array, &non_path_options_count);
    release_entries(processedArg, &processedArgCount);
    release_entries(newPathList, &newPathListCount);
    release_text(&quorvel_properties_arg);
    release_text(&launcher_path_arg);
    release_text(&rule_file_arg);
    // Only its pointer stays: the next configuration to be loaded replaces it.
    free(new_mem_val_as_str);
}

void leave_interrupts_to_child() {
    interrupted_child = nullptr;
    SetConsoleCtrlHandler(take_interrupt, TRUE);
}
