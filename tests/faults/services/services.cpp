// The services of the platform, any of which can be made to fail. Linked into programs of the product
// and told by the environment:
//   QVL_FAULTS   "service", "service=error", "service#call" (the first is 1) and "service>call" (all
//                that follow), separated by blanks; getenv fails for the variables that are named
//   QVL_REPORT   the file to which the end of the program writes how many handles and streams it
//                leaves open, which child it had (0: none) and how often it asked for memory
// Nothing here takes memory from the heap while the program runs.

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

// All requests for memory are numbered together.
bool memory_fails() {
    return faults != nullptr && fails("memory", ++allocations);
}

template <typename result>
result counted(int &count, int change, result done) {
    count += done ? change : 0;
    return done;
}

BOOL with_child(BOOL is_started, const PROCESS_INFORMATION *process) {
    child = is_started ? process->dwProcessId : child;
    return counted(open_handles, 2, is_started);
}

[[maybe_unused]] const bool begun = [] {
    atexit([] {
        faults = nullptr;
        FILE *file = fopen(getenv("QVL_REPORT"), "w");
        fprintf(file, "%d %d %u %d\n", open_handles, open_streams, static_cast<unsigned>(child), allocations);
        fclose(file);
    });
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

// Which fault makes it fail, what it returns then, and what it is.
#define FAULTY_SERVICE(fault, failure, type, name, parameters, arguments)                                              \
    SERVICE(type, name, parameters) {                                                                                  \
        return fault ? failure : REAL_SERVICE(name) arguments;                                                         \
    }
#define FAULTY_FUNCTION(fault, failure, type, name, parameters, arguments)                                             \
    FUNCTION(type, name, parameters) {                                                                                 \
        return fault ? failure : REAL(name) arguments;                                                                 \
    }

// clang-format off
FAULTY_SERVICE(FAILS(GetModuleFileNameA), 0, DWORD, GetModuleFileNameA, (HMODULE module, LPSTR buffer, DWORD size),
               (module, buffer, size))
FAULTY_SERVICE(FAILS(GetFullPathNameA), 0, DWORD, GetFullPathNameA,
               (LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part), (path, size, buffer, file_part))
FAULTY_SERVICE(FAILS(SetEnvironmentVariableA), 0, BOOL, SetEnvironmentVariableA, (LPCSTR name, LPCSTR value),
               (name, value))
FAULTY_SERVICE(FAILS(SetConsoleCtrlHandler), 0, BOOL, SetConsoleCtrlHandler, (PHANDLER_ROUTINE handler, BOOL add),
               (handler, add))
FAULTY_SERVICE(FAILS(SetInformationJobObject), 0, BOOL, SetInformationJobObject,
               (HANDLE job, JOBOBJECTINFOCLASS what, LPVOID info, DWORD size), (job, what, info, size))
FAULTY_SERVICE(FAILS(AssignProcessToJobObject), 0, BOOL, AssignProcessToJobObject, (HANDLE job, HANDLE process),
               (job, process))
FAULTY_SERVICE(FAILS(ResumeThread), DWORD(-1), DWORD, ResumeThread, (HANDLE thread), (thread))
FAULTY_SERVICE(FAILS(TerminateProcess), 0, BOOL, TerminateProcess, (HANDLE process, UINT code), (process, code))
FAULTY_SERVICE(FAILS(WaitForSingleObject), WAIT_FAILED, DWORD, WaitForSingleObject, (HANDLE object, DWORD time),
               (object, time))
FAULTY_SERVICE(FAILS(GetExitCodeProcess), 0, BOOL, GetExitCodeProcess, (HANDLE process, DWORD *code), (process, code))
FAULTY_SERVICE(FAILS(time), -1, time_t, TIME, (time_t *result), (result))
FAULTY_SERVICE(FAILS(ctime), nullptr, char *, CTIME, (const time_t *time), (time))
FAULTY_SERVICE(injected_error != 0, injected_error, DWORD, GetLastError, (void), ())
FAULTY_FUNCTION(memory_fails(), nullptr, void *, malloc, (size_t size), (size))
FAULTY_FUNCTION(memory_fails(), nullptr, void *, calloc, (size_t count, size_t size), (count, size))
FAULTY_FUNCTION(memory_fails(), nullptr, void *, realloc, (void *block, size_t size), (block, size))
FAULTY_FUNCTION(memory_fails(), nullptr, char *, strdup, (const char *text), (text))
FAULTY_FUNCTION(fails(name, 1), nullptr, char *, getenv, (const char *name), (name))
FAULTY_FUNCTION(FAILS(gettimeofday), -1, int, gettimeofday, (timeval *now, void *zone), (now, zone))
FAULTY_FUNCTION(FAILS(fgets), nullptr, char *, fgets, (char *buffer, int size, FILE *file), (buffer, size, file))
FAULTY_FUNCTION(FAILS(fread), 0, size_t, fread, (void *buffer, size_t size, size_t count, FILE *file),
                (buffer, size, count, file))
FAULTY_FUNCTION(FAILS(ferror), 1, int, ferror, (FILE *file), (file))
FAULTY_FUNCTION(FAILS(fputs), EOF, int, fputs, (const char *text, FILE *file), (text, file))
FAULTY_FUNCTION(FAILS(fflush), EOF, int, fflush, (FILE *file), (file))
FAULTY_FUNCTION(FAILS(kind_of), entry_kind::missing, entry_kind, kind_of, (const char *path), (path))
FAULTY_FUNCTION(FAILS(current_directory), nullptr, char *, current_directory, (void), ())
FAULTY_FUNCTION(FAILS(get_environment_value), (*value = nullptr, true), bool, get_environment_value,
                (const char *name, char **value), (name, value))
FAULTY_FUNCTION(FAILS(format_by_runtime), -1, int, format_by_runtime,
                (char *buffer, size_t size, const char *format, va_list arguments), (buffer, size, format, arguments))
// clang-format on

// What is counted as well.
SERVICE(HANDLE, CreateJobObjectA, (LPSECURITY_ATTRIBUTES attributes, LPCSTR name)) {
    return FAILS(CreateJobObjectA) ? nullptr
                                   : counted(open_handles, 1, REAL_SERVICE(CreateJobObjectA)(attributes, name));
}

SERVICE(BOOL, CreateProcessA,
        (LPCSTR application, LPSTR line, LPSECURITY_ATTRIBUTES of_process, LPSECURITY_ATTRIBUTES of_thread,
         BOOL inherits, DWORD flags, LPVOID environment, LPCSTR folder, LPSTARTUPINFOA start_up,
         LPPROCESS_INFORMATION process)) {
    return !FAILS(CreateProcessA) &&
           with_child(REAL_SERVICE(CreateProcessA)(application, line, of_process, of_thread, inherits, flags,
                                                   environment, folder, start_up, process),
                      process);
}

FUNCTION(BOOL, start_as_received, (const char *command, const char *line, DWORD flags, PROCESS_INFORMATION *process)) {
    return !FAILS(start_as_received) && with_child(__real_start_as_received(command, line, flags, process), process);
}

SERVICE(BOOL, CloseHandle, (HANDLE handle)) {
    const BOOL done = counted(open_handles, -1, REAL_SERVICE(CloseHandle)(handle));
    return FAILS(CloseHandle) ? FALSE : done;
}

FUNCTION(FILE *, open_text_file, (const char *path, const char *mode)) {
    const bool is_refused = *mode == 'r' ? FAILS(open_to_read) : FAILS(open_to_write);
    return is_refused ? nullptr : counted(open_streams, 1, __real_open_text_file(path, mode));
}

FUNCTION(int, fclose, (FILE * file)) {
    open_streams--;
    const int failed = __real_fclose(file);
    return FAILS(fclose) ? EOF : failed;
}
