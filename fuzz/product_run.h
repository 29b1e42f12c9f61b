#ifndef FUZZ_PRODUCT_RUN_H
#define FUZZ_PRODUCT_RUN_H

// A run of the product inside the fuzzer, as if it were a process of its own: the launcher state is new, exit()
// comes back, what is printed is kept, and the heap blocks and streams that the run leaves are released, since
// exit() leaves working values behind.
//
// Its disk and its environment are made up. Nothing has to be made on the disk: an entry with a dot in its name is a
// file, any other a directory. What holds a character that Windows has in no name is missing, and what holds "!" cannot
// be read or written. A path with "%" has no full path, and one with "&" a longer one.

#include <cassert>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/files.h"

// The function to which the linker hands the calls of `name`; __real_ and its name is what it stands for.
#define WRAP(result, name, parameters)                                                                                 \
    extern "C" result __real_##name parameters;                                                                        \
    extern "C" result __wrap_##name parameters;                                                                        \
    result __wrap_##name parameters

struct product_run {
    bool is_going_on;
    bool by_exit;                          // how it has ended
    int status;                            // of exit()
    std::string shown, complained, logged; // on standard output, on standard error, on every other stream
    std::unordered_set<FILE *> streams;    // open ones
};
extern product_run product;

constexpr size_t LONGEST_PATH = 32766;

struct made_up_world {
    std::string missing; // what holds this is missing as well
    std::string turned;  // what holds this is a file instead of a directory, or the reverse
    std::string config;  // of every launcher.cfg
    std::string content; // of every other file

    // Variables as the process received them, and as the run changes them. A value with "+" is changed by another
    // program when the run has asked for its size.
    std::map<std::string, std::string> variables, changes;
    unsigned changes_to_failure; // the run's change of this number fails

    // What the run has found out.
    std::string last_file; // found
    std::string last_home; // that of the launch mode, as it was then
    std::string last_read;
    bool has_log;
};
extern made_up_world world;

// After the run, what it has left is checked and then released.
void run_product(const std::function<void()> &run, const std::function<void()> &check);

// Notes a stream that the run opens.
FILE *opened(FILE *stream);

// The input's parts, "|" between them: as many as wanted, or more. A part ends with its first null byte.
std::vector<std::string> split_input(const uint8_t *data, size_t size, size_t wanted);

// Pointers to the texts, and a null pointer behind them.
std::vector<char *> pointers_to(std::vector<std::string> &texts);

#endif
