#ifndef FUZZ_PRODUCT_RUN_H
#define FUZZ_PRODUCT_RUN_H

// A run of the product inside the fuzzer, as if it were a process of its own: the launcher state is new, exit()
// comes back, what is printed is kept, and the heap blocks and streams that the run leaves are released, since
// exit() leaves working values behind.

#include <cassert>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

// The function to which the linker hands the calls of `name`; __real_ and its name is what it stands for.
#define WRAP(result, name, parameters)                                                                                 \
    extern "C" result __real_##name parameters;                                                                        \
    extern "C" result __wrap_##name parameters;                                                                        \
    result __wrap_##name parameters

struct product_run {
    bool is_going_on;
    bool by_exit;                          // how it has ended
    int status;                            // of exit()
    size_t allocations_to_failure;         // the one of this number fails, with 0 none does
    std::string shown, complained, logged; // on standard output, on standard error, on every other stream
    std::unordered_set<FILE *> streams;    // open ones
};
extern product_run product;

// Sets back what the product keeps for the life of a process.
void start_product();

void run_product(const std::function<void()> &run);

// Gives back the heap blocks and streams of the run, and with them what the launcher state points to.
void release_product();

// Notes a stream that the run opens.
FILE *opened(FILE *stream);

// The input's parts, "|" between them: as many as wanted, or more. A part ends with its first null byte.
std::vector<std::string> split_input(const uint8_t *data, size_t size, size_t wanted);

// Pointers to the texts, and a null pointer behind them.
std::vector<char *> pointers_to(std::vector<std::string> &texts);

#endif
