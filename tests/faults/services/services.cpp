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
#include "platform/received_start.h"
#include "platform/windows_services.h"

namespace {

const char *faults = nullptr; // null: the program has not begun yet, or is at its end
int open_handles = 0, open_streams = 0, allocations = 0;
DWORD child = 0, injected_error = 0;

bool is_meant(char sign, int number, int call) {
    return sign == '#' ? call == number : sign == '>' ? call > number : strchr(" =", sign) != nullptr;
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

// What is linked in whatever the system, under the linker's name for it.
#define REAL(name) REAL_(name)
#define REAL_(name) __real_##name
#define FUNCTION(type, name, parameters) FUNCTION_(type, name, parameters)
#define FUNCTION_(type, name, parameters)                                                                              \
    extern "C" type __real_##name parameters;                                                                          \
    extern "C" type __wrap_##name parameters;                                                                          \
    type __wrap_##name parameters

// What only returns its failure.
#define PLAIN_SERVICE(fault, failure, type, name, parameters, arguments)                                               \
    SERVICE(type, name, parameters) {                                                                                  \
        return FAILS(fault) ? failure : REAL_SERVICE(name) arguments;                                                  \
    }
#define PLAIN_FUNCTION(fault, failure, type, name, parameters, arguments)                                              \
    FUNCTION(type, name, parameters) {                                                                                 \
        return FAILS(fault) ? failure : REAL(name) arguments;                                                          \
    }

// clang-format off
PLAIN_SERVICE(GetModuleFileNameA, 0, DWORD, GetModuleFileNameA, (HMODULE module, LPSTR buffer, DWORD size),
              (module, buffer, size))
PLAIN_SERVICE(GetFullPathNameA, 0, DWORD, GetFullPathNameA, (LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part),
              (path, size, buffer, file_part))
PLAIN_SERVICE(SetEnvironmentVariableA, 0, BOOL, SetEnvironmentVariableA, (LPCSTR name, LPCSTR value), (name, value))
PLAIN_SERVICE(SetConsoleCtrlHandler, 0, BOOL, SetConsoleCtrlHandler, (PHANDLER_ROUTINE handler, BOOL add),
              (handler, add))
PLAIN_SERVICE(SetInformationJobObject, 0, BOOL, SetInformationJobObject,
              (HANDLE job, JOBOBJECTINFOCLASS what, LPVOID info, DWORD size), (job, what, info, size))
PLAIN_SERVICE(AssignProcessToJobObject, 0, BOOL, AssignProcessToJobObject, (HANDLE job, HANDLE process), (job, process))
PLAIN_SERVICE(ResumeThread, DWORD(-1), DWORD, ResumeThread, (HANDLE thread), (thread))
PLAIN_SERVICE(TerminateProcess, 0, BOOL, TerminateProcess, (HANDLE process, UINT code), (process, code))
PLAIN_SERVICE(WaitForSingleObject, WAIT_FAILED, DWORD, WaitForSingleObject, (HANDLE object, DWORD time), (object, time))
PLAIN_SERVICE(GetExitCodeProcess, 0, BOOL, GetExitCodeProcess, (HANDLE process, DWORD *code), (process, code))
PLAIN_SERVICE(time, -1, time_t, TIME, (time_t *result), (result))
PLAIN_SERVICE(ctime, nullptr, char *, CTIME, (const time_t *time), (time))
PLAIN_FUNCTION(gettimeofday, -1, int, gettimeofday, (timeval *now, void *zone), (now, zone))
PLAIN_FUNCTION(fgets, nullptr, char *, fgets, (char *buffer, int size, FILE *file), (buffer, size, file))
PLAIN_FUNCTION(fread, 0, size_t, fread, (void *buffer, size_t size, size_t count, FILE *file),
               (buffer, size, count, file))
PLAIN_FUNCTION(ferror, 1, int, ferror, (FILE *file), (file))
PLAIN_FUNCTION(fputs, EOF, int, fputs, (const char *text, FILE *file), (text, file))
PLAIN_FUNCTION(fflush, EOF, int, fflush, (FILE *file), (file))
PLAIN_FUNCTION(kind_of, entry_kind::missing, entry_kind, kind_of, (const char *path), (path))
PLAIN_FUNCTION(current_directory, nullptr, char *, current_directory, (void), ())
PLAIN_FUNCTION(get_environment_value, (*value = nullptr, true), bool, get_environment_value,
               (const char *name, char **value), (name, value))
PLAIN_FUNCTION(format_by_runtime, -1, int, format_by_runtime,
               (char *buffer, size_t size, const char *format, va_list arguments), (buffer, size, format, arguments))
// clang-format on

SERVICE(DWORD, GetLastError, (void)) {
    return injected_error != 0 ? injected_error : REAL_SERVICE(GetLastError)();
}

SERVICE(HANDLE, CreateJobObjectA, (LPSECURITY_ATTRIBUTES attributes, LPCSTR name)) {
    HANDLE job = FAILS(CreateJobObjectA) ? nullptr : REAL_SERVICE(CreateJobObjectA)(attributes, name);
    open_handles += job != nullptr;
    return job;
}

SERVICE(BOOL, CreateProcessA,
        (LPCSTR application, LPSTR line, LPSECURITY_ATTRIBUTES of_process, LPSECURITY_ATTRIBUTES of_thread,
         BOOL inherits, DWORD flags, LPVOID environment, LPCSTR folder, LPSTARTUPINFOA start_up,
         LPPROCESS_INFORMATION process)) {
    if (FAILS(CreateProcessA) || !REAL_SERVICE(CreateProcessA)(application, line, of_process, of_thread, inherits,
                                                               flags, environment, folder, start_up, process)) {
        return FALSE;
    }
    open_handles += 2;
    child = process->dwProcessId;
    return TRUE;
}

FUNCTION(BOOL, start_as_received, (const char *command, const char *line, DWORD flags, PROCESS_INFORMATION *process)) {
    if (FAILS(start_as_received) || !__real_start_as_received(command, line, flags, process)) {
        return FALSE;
    }
    open_handles += 2;
    child = process->dwProcessId;
    return TRUE;
}

SERVICE(BOOL, CloseHandle, (HANDLE handle)) {
    const BOOL done = REAL_SERVICE(CloseHandle)(handle);
    open_handles -= done != FALSE;
    return FAILS(CloseHandle) ? FALSE : done;
}

FUNCTION(char *, getenv, (const char *name)) {
    return fails(name, 1) ? nullptr : __real_getenv(name);
}

FUNCTION(int, fclose, (FILE * file)) {
    open_streams--;
    return FAILS(fclose) ? (__real_fclose(file), EOF) : __real_fclose(file);
}

FUNCTION(FILE *, open_text_file, (const char *path, const char *mode)) {
    const bool is_refused = *mode == 'r' ? FAILS(open_to_read) : FAILS(open_to_write);
    FILE *file = is_refused ? nullptr : __real_open_text_file(path, mode);
    open_streams += file != nullptr;
    return file;
}

// All requests for memory are numbered together.
static bool memory_fails() {
    const bool refused = faults != nullptr && fails("memory", ++allocations);
    errno = refused ? ENOMEM : errno;
    return refused;
}

#define MEMORY(type, name, parameters, arguments)                                                                      \
    FUNCTION(type, name, parameters) {                                                                                 \
        return memory_fails() ? nullptr : __real_##name arguments;                                                     \
    }

// clang-format off
MEMORY(void *, malloc, (size_t size), (size))
MEMORY(void *, calloc, (size_t count, size_t size), (count, size))
MEMORY(void *, realloc, (void *block, size_t size), (block, size))
MEMORY(char *, strdup, (const char *text), (text))
// clang-format on
