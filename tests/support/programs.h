#ifndef TESTS_SUPPORT_PROGRAMS_H
#define TESTS_SUPPORT_PROGRAMS_H

// Programs as a test starts and ends them; the bodies differ by system.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "tests/support/disk.h"

// What a program's status -1 arrives as: all 32 bits, or the 8 of a Unix process.
constexpr uint32_t STATUS_MINUS_1 = on_windows ? 0xFFFFFFFF : 255;

// A search for leaks at the end of every program: a start takes its time.
#ifdef __SANITIZE_ADDRESS__
constexpr bool is_sanitized = true;
#else
constexpr bool is_sanitized = false;
#endif

// What Windows lets a start say besides; the host knows nothing of it.
struct manner {
    int window = -1;              // SW_SHOWMINNOACTIVE and its kind
    unsigned flags = 0;           // DETACHED_PROCESS, a priority class
    bool hands_on_streams = true; // names them, inheritable; else the program gets copies, as from a shell
    bool quotes = true;           // else the arguments stand in the command line as they are
};

struct program {
    fs::path file;
    std::vector<std::string> arguments; // without double quotes of their own where they are quoted
    fs::path folder;                    // where it starts; where its three streams' files stand
    manner how = {};
};

// Starts it with the streams "in", "out" and "err" of its folder ("in" may be missing: empty input)
// and returns its process id; 0 when it cannot be started.
uint32_t start(const program &what);

// Waits for the end of a program of start() and returns its exit code.
uint32_t wait_for_end(uint32_t process_id);

// Ends any process by force.
void end_by_force(uint32_t process_id);
bool is_running(uint32_t process_id);

// The bytes of this process's heap that are in use; 0 where a sanitizer keeps it.
size_t heap_in_use();

// How this process was started: window, title, which streams were named, priority, console; on POSIX,
// which descriptors are open.
std::string own_start();

// Handles (descriptors) as numbers that another process can be told: of an open file, and of both ends
// of a pipe that children inherit. What is read from a pipe ends when all have closed its other end.
uintptr_t handle_of(FILE *file);
struct pipe_ends {
    uintptr_t reader, writer;
};
pipe_ends make_pipe();
bool write_to(uintptr_t handle, const std::string &text);
std::string read_and_close(const pipe_ends &pipe);

// Takes this process off its console, where the system has such a thing.
void leave_console();

// An empty value removes the variable.
void set_environment(const std::string &name, const std::string &value);

// Of the running program itself.
fs::path own_file();
inline uint32_t own_process_id() {
    return static_cast<uint32_t>(getpid());
}

// Whether the condition holds within so many minutes.
template <typename condition>
bool comes_true(const condition &holds, int minutes = 1) {
    for (int i = 0; i < minutes * 2400 && !holds(); i++) {
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    return holds();
}

#endif
