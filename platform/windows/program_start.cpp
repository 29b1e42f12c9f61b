// Where Windows starts the launcher. The compiler's own start-up code serves more than this program
// has (a table of relocations at run time, variables of threads, globals that are constructed) and
// would be a tenth of it.

#include <cstdlib>
#include <sys/time.h>

#include "platform/windows_services.h"

int main(int argc, char **argv);

extern "C" {

// Of msvcrt.dll; the compiler's headers do not declare them.
struct runtime_settings {
    int new_mode; // of operator new
};
int __getmainargs(int *argc, char ***argv, char ***environment, int expands_wildcards,
                  runtime_settings *settings);
void __set_app_type(int type);

// main() calls it to have globals constructed. There are none: the linker makes sure of that.
[[gnu::used]] void __main() {}

// The compiler's own looks for a finer clock first, and for the time zone.
int gettimeofday(timeval *now, void * /*zone*/) {
    constexpr long long hundred_ns_to_1970 = 116444736000000000;
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    const long long high = time.dwHighDateTime;
    const long long hundred_ns = (high << 32 | time.dwLowDateTime) - hundred_ns_to_1970;
    now->tv_sec = static_cast<long>(hundred_ns / 10000000);
    now->tv_usec = static_cast<long>(hundred_ns % 10000000 / 10);
    return 0;
}

[[noreturn, gnu::used]] void program_start() {
    constexpr int console_program = 1;
    constexpr int expands_wildcards = -1; // * and ? arrive as the names of matching files
    int argc = 0;
    char **argv = nullptr;
    char **environment = nullptr;
    runtime_settings settings = {};
    __set_app_type(console_program);
    __getmainargs(&argc, &argv, &environment, expands_wildcards, &settings);
    exit(main(argc, argv));
}
}
