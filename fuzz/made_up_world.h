#ifndef FUZZ_MADE_UP_WORLD_H
#define FUZZ_MADE_UP_WORLD_H

// A run of the product inside the fuzzer, as if it were a process of its own: the launcher state is new, the end of
// the process comes back, and what is printed is kept. Its disk and its environment are made up: an entry with a dot
// in its name is a file, any other a directory. What holds a character that Windows has in no name is missing, and
// what holds "!" cannot be written.

#include <cassert>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

struct made_up_world {
    std::string missing; // what holds this is missing as well
    std::string config;  // of every launcher.cfg
    std::string content; // of every other file
    std::map<std::string, std::string> variables;
    // What the run leaves.
    std::optional<int> status;             // with which it has ended the process
    std::string shown, complained, logged; // on standard output, on standard error, in the log
};
extern made_up_world world;

// Releases what the run before has left.
void run_product(const std::function<void()> &run);

// The input's parts, "|" between them: as many as wanted, or more. A part ends with its first null byte.
std::vector<std::string> split_input(const uint8_t *data, size_t size, size_t wanted);

#endif
