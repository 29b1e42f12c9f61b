// The services of the platform, any of which can be made to fail. Linked into programs of the product
// and told by the environment:
//   QVL_FAULTS   "service", "service=error", "service#call" (the first is 1) and "service>call" (all
//                that follow), separated by blanks; getenv fails for the variables that are named
//   QVL_REPORT   the file to which the end of the program writes what it leaves open, which child it
//                had (0: none) and how often it asked for memory
// Nothing here takes memory from the heap while the program runs.

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <sys/time.h>

#include "linkage.h"
#include "platform/files.h"
#include "platform/windows_services.h"

namespace {

const char *faults = nullptr; // null: the program has not begun yet, or is at its end
int open_handles = 0, open_streams = 0, allocations = 0;
DWORD child = 0, injected_error = 0;

bool is_meant(char sign, int number, int call) {
    switch (sign) {
    case '#':
        return call == number;
    case '>':
        return call > number;
    default:
        return sign == '\0' || sign == ' ' || sign == '=';
    }
}

// Whether this call of the service is to fail, and with which error.
bool fails(const char *service, int call) {
    const size_t length = strlen(service);
    for (const char *at = faults; at != nullptr && (at = strstr(at, service)) != nullptr; at += length) {
        const char sign = at[length];
        const int number = sign == '\0' ? 0 : atoi(at + length + 1);
        if ((at == faults || at[-1] == ' ') && is_meant(sign, number, call)) {
            injected_error = sign == '=' ? static_cast<DWORD>(number) : DWORD(ERROR_GEN_FAILURE);
            return true;
        }
    }
    return false;
}

void write_report() {
    faults = nullptr;
    if (FILE *file = fopen(getenv("QVL_REPORT"), "w")) {
        fprintf(file, "handles %d streams %d child %u allocations %d\n", open_handles, open_streams,
                static_cast<unsigned>(child), allocations);
        fclose(file);
    }
}

[[maybe_unused]] const bool begun = [] {
    atexit(write_report);
    faults = getenv("QVL_FAULTS");
    return true;
}();

} // namespace

#define FAILS(name)                                                                                                    \
    [] {                                                                                                               \
        static int calls = 0;                                                                                          \
        return fails(#name, ++calls);                                                                                  \
    }()

SERVICE(DWORD, GetLastError, (void)) {
    return injected_error != 0 ? injected_error : REAL_SERVICE(GetLastError)();
}

SERVICE(DWORD, GetModuleFileNameA, (HMODULE module, LPSTR buffer, DWORD size)) {
    return FAILS(GetModuleFileNameA) ? 0 : REAL_SERVICE(GetModuleFileNameA)(module, buffer, size);
}

SERVICE(DWORD, GetFullPathNameA, (LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part)) {
    return FAILS(GetFullPathNameA) ? 0 : REAL_SERVICE(GetFullPathNameA)(path, size, buffer, file_part);
}

SERVICE(BOOL, SetEnvironmentVariableA, (LPCSTR name, LPCSTR value)) {
    return FAILS(SetEnvironmentVariableA) ? FALSE : REAL_SERVICE(SetEnvironmentVariableA)(name, value);
}

SERVICE(BOOL, SetConsoleCtrlHandler, (PHANDLER_ROUTINE handler, BOOL add)) {
    return FAILS(SetConsoleCtrlHandler) ? FALSE : REAL_SERVICE(SetConsoleCtrlHandler)(handler, add);
}

SERVICE(HANDLE, CreateJobObjectA, (LPSECURITY_ATTRIBUTES attributes, LPCSTR name)) {
    HANDLE job = FAILS(CreateJobObjectA) ? nullptr : REAL_SERVICE(CreateJobObjectA)(attributes, name);
    open_handles += job != nullptr;
    return job;
}

SERVICE(BOOL, SetInformationJobObject, (HANDLE job, JOBOBJECTINFOCLASS info_class, LPVOID info, DWORD size)) {
    return FAILS(SetInformationJobObject) ? FALSE : REAL_SERVICE(SetInformationJobObject)(job, info_class, info, size);
}

SERVICE(BOOL, CreateProcessA,
        (LPCSTR application, LPSTR command_line, LPSECURITY_ATTRIBUTES process_attributes,
         LPSECURITY_ATTRIBUTES thread_attributes, BOOL inherit_handles, DWORD flags, LPVOID environment,
         LPCSTR directory, LPSTARTUPINFOA start_up, LPPROCESS_INFORMATION process)) {
    const BOOL done =
        FAILS(CreateProcessA)
            ? FALSE
            : REAL_SERVICE(CreateProcessA)(application, command_line, process_attributes, thread_attributes,
                                           inherit_handles, flags, environment, directory, start_up, process);
    if (done) {
        open_handles += 2;
        child = process->dwProcessId;
    }
    return done;
}

SERVICE(BOOL, AssignProcessToJobObject, (HANDLE job, HANDLE process)) {
    return FAILS(AssignProcessToJobObject) ? FALSE : REAL_SERVICE(AssignProcessToJobObject)(job, process);
}

SERVICE(DWORD, ResumeThread, (HANDLE thread)) {
    return FAILS(ResumeThread) ? static_cast<DWORD>(-1) : REAL_SERVICE(ResumeThread)(thread);
}

SERVICE(DWORD, WaitForSingleObject, (HANDLE object, DWORD milliseconds)) {
    return FAILS(WaitForSingleObject) ? WAIT_FAILED : REAL_SERVICE(WaitForSingleObject)(object, milliseconds);
}

SERVICE(BOOL, GetExitCodeProcess, (HANDLE process, DWORD *code)) {
    return FAILS(GetExitCodeProcess) ? FALSE : REAL_SERVICE(GetExitCodeProcess)(process, code);
}

SERVICE(BOOL, CloseHandle, (HANDLE handle)) {
    const BOOL done = REAL_SERVICE(CloseHandle)(handle);
    open_handles -= done != FALSE;
    return FAILS(CloseHandle) ? FALSE : done;
}

SERVICE(time_t, TIME, (time_t * result)) {
    return FAILS(time) ? -1 : REAL_SERVICE(TIME)(result);
}

SERVICE(char *, CTIME, (const time_t *time)) {
    return FAILS(ctime) ? nullptr : REAL_SERVICE(CTIME)(time);
}

// What is linked in whatever the system, under the linker's name for it.
#define FUNCTION(type, name, parameters) FUNCTION_(type, name, parameters)
#define FUNCTION_(type, name, parameters)                                                                              \
    extern "C" type __real_##name parameters;                                                                          \
    extern "C" type __wrap_##name parameters;                                                                          \
    type __wrap_##name parameters

FUNCTION(int, gettimeofday, (timeval * now, void *zone)) {
    return FAILS(gettimeofday) ? -1 : __real_gettimeofday(now, zone);
}

FUNCTION(char *, getenv, (const char *name)) {
    return fails(name, 1) ? nullptr : __real_getenv(name);
}

FUNCTION(char *, fgets, (char *buffer, int size, FILE *file)) {
    return FAILS(fgets) ? nullptr : __real_fgets(buffer, size, file);
}

FUNCTION(size_t, fread, (void *buffer, size_t size, size_t count, FILE *file)) {
    return FAILS(fread) ? 0 : __real_fread(buffer, size, count, file);
}

FUNCTION(int, ferror, (FILE * file)) {
    return FAILS(ferror) ? 1 : __real_ferror(file);
}

FUNCTION(int, fputs, (const char *text, FILE *file)) {
    return FAILS(fputs) ? EOF : __real_fputs(text, file);
}

FUNCTION(int, fflush, (FILE * file)) {
    return FAILS(fflush) ? EOF : __real_fflush(file);
}

FUNCTION(int, fclose, (FILE * file)) {
    open_streams--;
    return FAILS(fclose) ? (__real_fclose(file), EOF) : __real_fclose(file);
}

FUNCTION(FILE *, _Z14open_text_filePKcS0_, (const char *path, const char *mode)) {
    const bool is_refused = *mode == 'r' ? FAILS(open_to_read) : FAILS(open_to_write);
    FILE *file = is_refused ? nullptr : __real__Z14open_text_filePKcS0_(path, mode);
    open_streams += file != nullptr;
    return file;
}

FUNCTION(entry_kind, _Z7kind_ofPKc, (const char *path)) {
    return FAILS(kind_of) ? entry_kind::missing : __real__Z7kind_ofPKc(path);
}

FUNCTION(char *, _Z17current_directoryv, (void)) {
    return FAILS(current_directory) ? nullptr : __real__Z17current_directoryv();
}

FUNCTION(size_t, GET_ENVIRONMENT_VALUE, (const char *name, char *buffer, size_t size)) {
    return FAILS(get_environment_value) ? 0 : REAL(GET_ENVIRONMENT_VALUE)(name, buffer, size);
}

FUNCTION(int, FORMAT_BY_RUNTIME, (char *buffer, size_t size, const char *format, va_list arguments)) {
    return FAILS(format_by_runtime) ? -1 : REAL(FORMAT_BY_RUNTIME)(buffer, size, format, arguments);
}

namespace {

// All requests for memory are numbered together.
bool memory_fails() {
    const bool refused = faults != nullptr && fails("memory", ++allocations);
    errno = refused ? ENOMEM : errno;
    return refused;
}

} // namespace

FUNCTION(void *, malloc, (size_t size)) {
    return memory_fails() ? nullptr : __real_malloc(size);
}

FUNCTION(void *, calloc, (size_t count, size_t size)) {
    return memory_fails() ? nullptr : __real_calloc(count, size);
}

FUNCTION(void *, realloc, (void *block, size_t size)) {
    return memory_fails() ? nullptr : __real_realloc(block, size);
}

FUNCTION(char *, strdup, (const char *text)) {
    return memory_fails() ? nullptr : __real_strdup(text);
}
