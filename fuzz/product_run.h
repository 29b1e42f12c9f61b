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
#include <string_view>
#include <vector>

struct product_end {
    bool by_exit;
    int status; // of exit()
};

// Sets the launcher state and the trace switch back, and forgets what was printed.
void start_product();

product_end run_product(const std::function<void()> &run);

// Gives back the heap blocks and streams of the run, and with them what the launcher state points to.
void release_product();

// Whether a run is going on: the targets' wraps act in it alone.
bool in_product();

// Does something whose blocks outlive the run.
void outside_product(const std::function<void()> &work);

// The allocation of this number, from the next one on, fails once; with 0 none does.
void fail_allocation(size_t number);

// What was printed: on standard output, on standard error, on every other stream.
struct product_output {
    std::string shown;
    std::string complained;
    std::string logged;
};
extern product_output printed;

// A stream that the run opens.
FILE *opened(FILE *stream);
FILE *open_content(std::string &content);
size_t open_streams();

// The input's parts, parted by null bytes; the last one takes the rest.
std::vector<std::string> split_input(const uint8_t *data, size_t size, size_t count);
std::vector<std::string> lines_of(const std::string &text);

// A disk of which nothing has to be made: an entry with a dot in its name is a file, any other a directory. What
// holds a character that Windows has in no name is missing.
bool is_possible_path(std::string_view path);
bool names_file(std::string_view path);

#endif
