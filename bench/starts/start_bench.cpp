// start_bench ROUNDS A -- B: starts the command lines A and B in turn and prints the lower quartile
// of the time each takes, in microseconds, and the ratio A to B. start_bench ROUNDS A: the same for
// A started with and without 64 MiB of memory in use.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "platform/windows_services.h"

namespace {

constexpr size_t TOUCHED_BYTES = size_t{64} << 20;

double microseconds_to_run(std::string command_line) {
    const auto begin = std::chrono::steady_clock::now();
    STARTUPINFOA start_up = {};
    start_up.cb = sizeof start_up;
    PROCESS_INFORMATION child = {};
    DWORD code = 1;
    if (!CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &start_up, &child)) {
        fprintf(stderr, "start_bench: cannot start %s\n", command_line.c_str());
        exit(1);
    }
    WaitForSingleObject(child.hProcess, INFINITE);
    GetExitCodeProcess(child.hProcess, &code);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
    if (code != 0) {
        fprintf(stderr, "start_bench: %s ended with %u\n", command_line.c_str(), (unsigned)code);
        exit(1);
    }
    const std::chrono::duration<double, std::micro> taken =
        std::chrono::steady_clock::now() - begin;
    return taken.count();
}

double lower_quartile(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 4];
}

void touch_memory() {
    static std::vector<char> touched;
    touched.assign(TOUCHED_BYTES, 1);
}

void report(const std::vector<double> &a, const std::vector<double> &b) {
    printf("%.0f %.0f %.3f\n", lower_quartile(a), lower_quartile(b),
           lower_quartile(a) / lower_quartile(b));
}

} // namespace

int main(int argc, char **argv) {
    const int rounds = argc > 2 ? atoi(argv[1]) : 0;
    std::string lines[2];
    int line = 0;
    for (int i = 2; i < argc; i++) {
        if (strcmp(argv[i], "--") == 0) {
            line = 1;
        } else {
            lines[line] += argv[i];
            lines[line] += ' ';
        }
    }
    if (rounds < 4) {
        fprintf(stderr, "usage: start_bench ROUNDS A [-- B]\n");
        return 2;
    }
    std::vector<double> a, b;
    if (line == 0) {
        for (int i = 0; i < rounds; i++) {
            b.push_back(microseconds_to_run(lines[0]));
        }
        touch_memory();
    }
    for (int i = 0; i < rounds; i++) {
        a.push_back(microseconds_to_run(lines[0]));
        if (line == 1) {
            b.push_back(microseconds_to_run(lines[1]));
        }
    }
    report(a, b);
    return 0;
}
