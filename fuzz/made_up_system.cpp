#include "fuzz/made_up_system.h"

#include <cstring>
#include <ctime>

#include "core/jlp_vars.h"
#include "fuzz/product_run.h"
#include "platform/environment.h"
#include "platform/files.h"

std::vector<std::string> parts;
system_calls seen;
char job;

namespace {

char process, thread; // their addresses are the handles

DWORD fail(DWORD error) {
    seen.last_error = error;
    return FALSE;
}

} // namespace

extern "C" {
time_t __real_time(time_t *now);
char *__real_ctime(const time_t *now);
DWORD __real_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part);

time_t __wrap_time(time_t *now);
char *__wrap_ctime(const time_t *now);
DWORD __wrap_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part);
size_t __wrap__Z21get_environment_valuePKcPcm(const char *name, char *buffer, size_t size);
entry_kind __wrap__Z7kind_ofPKc(const char *path);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);
DWORD __wrap_GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);
DWORD __wrap_GetLastError();
HANDLE __wrap_CreateJobObjectA(LPSECURITY_ATTRIBUTES attributes, LPCSTR name);
BOOL __wrap_SetInformationJobObject(HANDLE handle, JOBOBJECTINFOCLASS info_class, LPVOID info, DWORD size);
BOOL __wrap_CreateProcessA(LPCSTR application, LPSTR command_line, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                           BOOL inherit_handles, DWORD flags, LPVOID environment, LPCSTR directory,
                           LPSTARTUPINFOA start_up, LPPROCESS_INFORMATION information);
BOOL __wrap_AssignProcessToJobObject(HANDLE job_handle, HANDLE handle);
DWORD __wrap_ResumeThread(HANDLE handle);
DWORD __wrap_WaitForSingleObject(HANDLE handle, DWORD milliseconds);
BOOL __wrap_GetExitCodeProcess(HANDLE handle, DWORD *code);
BOOL __wrap_TerminateProcess(HANDLE handle, UINT code);
BOOL __wrap_CloseHandle(HANDLE handle);
BOOL __wrap_SetConsoleCtrlHandler(PHANDLER_ROUTINE handler, BOOL add);

time_t __wrap_time(time_t *now) {
    return in_product() && how(NO_TIME) ? -1 : __real_time(now);
}

char *__wrap_ctime(const time_t *now) {
    return in_product() && how(NO_CTIME) ? nullptr : __real_ctime(now);
}

// As on a system with long paths: the host knows none.
DWORD __wrap_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part) {
    const size_t length = strlen(path);
    if (length <= LONGEST_PATH) {
        return __real_GetFullPathNameA(path, size, buffer, file_part);
    }
    if (length < size) {
        memcpy(buffer, path, length + 1);
    }
    return static_cast<DWORD>(length < size ? length : length + 1);
}

// With VALUE_GROWS another one changes the variable after each question for its length.
size_t __wrap__Z21get_environment_valuePKcPcm(const char *name, char *buffer, size_t size) {
    constexpr const char *NAMES[] = {"CONTAINER_HOME", "JVM_HOME", "QUORVEL_HOME"};
    for (size_t i = 0; i < std::size(NAMES); i++) {
        std::string &value = parts[HOMES + i];
        if (strcmp(name, NAMES[i]) == 0 && !value.empty()) {
            const size_t length = value.size();
            if (length < size) {
                memcpy(buffer, value.c_str(), length + 1);
                return length;
            }
            if (how(VALUE_GROWS) && size == 0) {
                value.resize(length % 3 * length, 'y');
            }
            return length + 1;
        }
    }
    return 0;
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    const unsigned number = static_cast<unsigned>(++seen.paths_asked);
    if (number == bits(MISSING_QUERY) || *path == '\0' || strchr(path, '!') != nullptr || !is_possible_path(path)) {
        return entry_kind::missing;
    }
    if (names_file(path) == (number == bits(TURNED_QUERY))) {
        return entry_kind::directory;
    }
    seen.last_file = path;
    const std::string_view mode = launch_mode == nullptr ? "" : launch_mode;
    const char *home = mode.starts_with("advanced") || mode.starts_with("legacy") ? container_home : jvm_home;
    seen.home_to_start = home == nullptr ? "" : home;
    return entry_kind::file;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode) {
    if (*mode == 'w') {
        return how(NO_LOG) ? nullptr : opened(fopen("/dev/null", mode));
    }
    assert(path == own_home() + "\\launcher.cfg");
    return how(NO_CONFIG) ? nullptr : open_content(parts[CONFIG]);
}

DWORD __wrap_GetModuleFileNameA(HMODULE, LPSTR buffer, DWORD size) {
    assert(own_path().size() < size);
    memcpy(buffer, own_path().c_str(), own_path().size() + 1);
    return static_cast<DWORD>(own_path().size());
}

DWORD __wrap_GetLastError() {
    return seen.last_error;
}

HANDLE __wrap_CreateJobObjectA(LPSECURITY_ATTRIBUTES, LPCSTR name) {
    assert(std::string_view(name).starts_with("pid_"));
    return child(NO_JOB) ? nullptr : &job;
}

BOOL __wrap_SetInformationJobObject(HANDLE handle, JOBOBJECTINFOCLASS, LPVOID info, DWORD size) {
    const auto *limits = static_cast<const JOBOBJECT_EXTENDED_LIMIT_INFORMATION *>(info);
    assert(size == sizeof *limits && limits->BasicLimitInformation.LimitFlags == 0x3800);
    return handle == &job;
}

BOOL __wrap_CreateProcessA(LPCSTR application, LPSTR command_line, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                           BOOL inherit_handles, DWORD flags, LPVOID environment, LPCSTR directory,
                           LPSTARTUPINFOA start_up, LPPROCESS_INFORMATION information) {
    assert(seen.command_line.empty());
    assert(application == nullptr && environment == nullptr && directory == nullptr && !inherit_handles);
    assert(flags == CREATE_SUSPENDED && start_up->cb == sizeof *start_up);
    seen.command_line = command_line;
    if (child(NOT_CREATED)) {
        return static_cast<BOOL>(fail(2));
    }
    seen.created = true;
    *information = {&process, &thread, 4711, 4712};
    return TRUE;
}

BOOL __wrap_AssignProcessToJobObject(HANDLE job_handle, HANDLE handle) {
    assert(seen.created && !seen.resumed && handle == &process);
    assert(launch_mode == nullptr && processedArgCount == 0 && new_mem_val_as_str != nullptr);
    seen.assigned = job_handle == &job && !child(NOT_ASSIGNED);
    return seen.assigned ||
           static_cast<BOOL>(fail(job_handle != nullptr && child(ACCESS_DENIED) ? ERROR_ACCESS_DENIED : 6));
}

DWORD __wrap_ResumeThread(HANDLE handle) {
    assert(handle == &thread && !seen.terminated);
    seen.resumed = !child(NOT_RESUMED);
    return seen.resumed ? 1 : static_cast<DWORD>(-1);
}

DWORD __wrap_WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
    assert(handle == &process && milliseconds == INFINITE && seen.resumed);
    seen.waited = true;
    return WAIT_OBJECT_0;
}

BOOL __wrap_GetExitCodeProcess(HANDLE handle, DWORD *code) {
    assert(handle == &process && seen.waited);
    *code = bits(EXIT_CODE) == 127 ? 0xFFFFFFFF : bits(EXIT_CODE);
    return !child(NO_EXIT_CODE) || static_cast<BOOL>(fail(NO_EXIT_CODE_ERROR));
}

BOOL __wrap_TerminateProcess(HANDLE handle, UINT code) {
    assert(handle == &process && code == 0 && !seen.resumed);
    seen.terminated = true;
    return TRUE;
}

BOOL __wrap_CloseHandle(HANDLE handle) {
    seen.processes_closed += handle == &process;
    seen.threads_closed += handle == &thread;
    seen.jobs_closed += handle == &job;
    return TRUE;
}

BOOL __wrap_SetConsoleCtrlHandler(PHANDLER_ROUTINE handler, BOOL add) {
    assert(add && handler(CTRL_C_EVENT) && handler(CTRL_BREAK_EVENT) && !handler(2));
    assert(seen.command_line.empty());
    return TRUE;
}
}
