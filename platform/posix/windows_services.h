#ifndef PLATFORM_POSIX_WINDOWS_SERVICES_H
#define PLATFORM_POSIX_WINDOWS_SERVICES_H

/* The subset of the Windows services that the product calls, over POSIX.
 *
 * Paths are Windows paths. QVL_HOST_DRIVE_<letter> in the environment names the Unix directory that
 * stands for a drive; Z: is / unless set. The letter case of names counts, as it does for the
 * file systems of Linux; shares, device names, the prefix \\?\ and names with what Windows refuses
 * in them (" * < > ? | and control characters) lead to no file. A failed call sets what
 * GetLastError() returns. Handles are given back with CloseHandle(); any other value passed for one
 * is refused with ERROR_INVALID_HANDLE. One thread only. */

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define WINAPI

typedef int BOOL;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef uint32_t UINT;
typedef uint8_t BYTE;
typedef char *LPSTR;
typedef const char *LPCSTR;
typedef void *LPVOID;
typedef void *HANDLE;
typedef void *HMODULE;
typedef int64_t LONGLONG;
typedef uint64_t ULONGLONG;
typedef uintptr_t ULONG_PTR;
typedef size_t SIZE_T;

/* Macros, as on Windows, where other headers may define them too. */
#ifndef FALSE
#define FALSE 0
#endif
#ifndef TRUE
#define TRUE 1
#endif

enum {
    ERROR_SUCCESS = 0,
    ERROR_FILE_NOT_FOUND = 2,
    ERROR_PATH_NOT_FOUND = 3,
    ERROR_ACCESS_DENIED = 5,
    ERROR_INVALID_HANDLE = 6,
    ERROR_NOT_ENOUGH_MEMORY = 8,
    ERROR_GEN_FAILURE = 31,
    ERROR_INVALID_PARAMETER = 87,
    ERROR_INSUFFICIENT_BUFFER = 122,
    ERROR_INVALID_NAME = 123,
    ERROR_BAD_EXE_FORMAT = 193,
    ERROR_ENVVAR_NOT_FOUND = 203,
    ERROR_FILENAME_EXCED_RANGE = 206
};

/* The last failed call's error; a call that succeeds may leave it as it was. */
DWORD GetLastError(void);

/* ---- Paths and the environment ---- */

/* The program's own path (`module` is null). Returns its length; a path that does not fit is cut to
 * `size` and ERROR_INSUFFICIENT_BUFFER set. */
DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);

/* The full path of `path`, by text alone: "." and ".." resolved, "/" turned into "\", separators
 * folded into one, a trailing one kept, dots and blanks at the very end dropped. A relative path is
 * taken from the current directory, one that begins with a separator from the root of the current
 * drive; "D:x" from the current directory where that is on D:, else from the root of D:. Letters
 * stay as they are written. Returns the length without the terminator; when the buffer is too
 * small, the size needed with it, the buffer untouched; 0 on failure: nothing but blanks, or a full
 * path of 32767 bytes or more. `file_part` must be null (else ERROR_INVALID_PARAMETER). */
DWORD GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part);

/* The environment that child processes receive; names without regard to letter case. getenv() keeps
 * seeing the environment as the process received it. The length of the value without the
 * terminator; 0 when the variable is unset (ERROR_ENVVAR_NOT_FOUND) or empty (the last error stays
 * as it was); when the buffer is too small, the size needed with the terminator, the buffer
 * untouched. */
DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size);

/* Sets the variable, or with a null value removes it. A variable that is set keeps the spelling of
 * its name. Fails for an empty name and one with "=". */
BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value);

/* ---- Child processes ---- */

typedef struct SECURITY_ATTRIBUTES_ *LPSECURITY_ATTRIBUTES;

typedef struct {
    DWORD cb;
    LPSTR lpReserved;
    LPSTR lpDesktop;
    LPSTR lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    BYTE *lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
} STARTUPINFOA, *LPSTARTUPINFOA;

typedef struct {
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
} PROCESS_INFORMATION, *LPPROCESS_INFORMATION;

#define CREATE_SUSPENDED 0x00000004u
#define INFINITE 0xFFFFFFFFu
#define WAIT_OBJECT_0 0x00000000u
#define WAIT_FAILED 0xFFFFFFFFu
#define STILL_ACTIVE 0x00000103u

/* Starts the program that stands first in the command line, in double quotes or, without them, the
 * first of the texts up to a blank, to the next blank and so on that names a file (".exe" appended
 * to a name without a dot); the rest is split into its arguments by the Windows rules. The child
 * has the current directory, the environment of SetEnvironmentVariableA and the three standard
 * streams, and no other descriptor. Fails where the program cannot be started (missing, a
 * directory, no program) and for a command line of 32767 characters or more. With CREATE_SUSPENDED
 * the program does not run before ResumeThread(); it may for a moment where the system refuses to
 * trace it, as under a debugger that follows children.
 *
 * `application` and the attributes must be null and `inherit_handles`, `environment` and
 * `directory` 0 or null (else ERROR_INVALID_PARAMETER). The caller closes both handles. A child is
 * bound to its parent's life from the start: it is killed with it. */
BOOL CreateProcessA(LPCSTR application, LPSTR command_line,
                    LPSECURITY_ATTRIBUTES process_attributes,
                    LPSECURITY_ATTRIBUTES thread_attributes, BOOL inherit_handles, DWORD flags,
                    LPVOID environment, LPCSTR directory, LPSTARTUPINFOA start_up,
                    LPPROCESS_INFORMATION process);

/* Lets a suspended child run. Returns the suspend count as it was, (DWORD)-1 on failure. */
DWORD ResumeThread(HANDLE thread);

/* Waits for the end of a process: `milliseconds` must be INFINITE (else ERROR_INVALID_PARAMETER).
 */
DWORD WaitForSingleObject(HANDLE process, DWORD milliseconds);

/* The exit code, STILL_ACTIVE while the process runs, 128 plus the number of the signal that ended
 * it, or the code given to TerminateProcess (0 when a job's closing killed it). */
BOOL GetExitCodeProcess(HANDLE process, DWORD *code);

/* Fails with ERROR_ACCESS_DENIED once the process has ended. */
BOOL TerminateProcess(HANDLE process, UINT code);

BOOL CloseHandle(HANDLE handle);

/* ---- Jobs ---- */

#define JOB_OBJECT_LIMIT_BREAKAWAY_OK 0x00000800u
#define JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK 0x00001000u
#define JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE 0x00002000u

typedef struct {
    LONGLONG PerProcessUserTimeLimit;
    LONGLONG PerJobUserTimeLimit;
    DWORD LimitFlags;
    SIZE_T MinimumWorkingSetSize;
    SIZE_T MaximumWorkingSetSize;
    DWORD ActiveProcessLimit;
    ULONG_PTR Affinity;
    DWORD PriorityClass;
    DWORD SchedulingClass;
} JOBOBJECT_BASIC_LIMIT_INFORMATION;

typedef struct {
    ULONGLONG ReadOperationCount;
    ULONGLONG WriteOperationCount;
    ULONGLONG OtherOperationCount;
    ULONGLONG ReadTransferCount;
    ULONGLONG WriteTransferCount;
    ULONGLONG OtherTransferCount;
} IO_COUNTERS;

typedef struct {
    JOBOBJECT_BASIC_LIMIT_INFORMATION BasicLimitInformation;
    IO_COUNTERS IoInfo;
    SIZE_T ProcessMemoryLimit;
    SIZE_T JobMemoryLimit;
    SIZE_T PeakProcessMemoryUsed;
    SIZE_T PeakJobMemoryUsed;
} JOBOBJECT_EXTENDED_LIMIT_INFORMATION;

typedef enum { JobObjectExtendedLimitInformation = 9 } JOBOBJECTINFOCLASS;

/* A job holds the processes that are assigned to it, and none that they start. The name is not used
 * here. */
HANDLE CreateJobObjectA(LPSECURITY_ATTRIBUTES attributes, LPCSTR name);

/* Of the extended limits, the kill-on-close flag counts: closing the job then kills what runs in
 * it. */
BOOL SetInformationJobObject(HANDLE job, JOBOBJECTINFOCLASS info_class, LPVOID info, DWORD size);

BOOL AssignProcessToJobObject(HANDLE job, HANDLE process);

/* ---- Console ---- */

/* As on Windows, writing into a pipe that nobody reads fails and ends nothing: a program with these
 * services linked in catches SIGPIPE, its children have it as it was. */

typedef BOOL(WINAPI *PHANDLER_ROUTINE)(DWORD event);

enum { CTRL_C_EVENT = 0, CTRL_BREAK_EVENT = 1 };

/* Sets (`add` must be TRUE) the one handler for Ctrl-C (SIGINT) and Ctrl-Break (SIGQUIT); it
 * returns TRUE for an event that is done with, FALSE for one that takes its default. Signals that
 * the process was started with ignored stay so. Children do not inherit the handler. */
BOOL SetConsoleCtrlHandler(PHANDLER_ROUTINE handler, BOOL add);

#ifdef __cplusplus
}
#endif

#endif
