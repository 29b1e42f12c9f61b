#include "fuzz/product_run.h"

#include <algorithm>
#include <csetjmp>
#include <sstream>

#include "core/rewriting/shared_disk_queries.h"
#include "tests/support/state.h"

namespace {

jmp_buf after_run;
std::unordered_set<void *> blocks; // of this run, and not given back

void *note(void *block) {
    if (product.is_going_on && block != nullptr) {
        blocks.insert(block);
    }
    return block;
}

} // namespace

product_run product;

WRAP([[noreturn]] void, exit, (int status)) {
    if (!product.is_going_on) {
        __real_exit(status);
    }
    product.status = status;
    longjmp(after_run, 1);
}

WRAP(void *, malloc, (size_t size)) {
    return note(__real_malloc(size));
}

WRAP(void *, realloc, (void *block, size_t size)) {
    blocks.erase(block);
    return note(__real_realloc(block, size));
}

WRAP(char *, strdup, (const char *text)) {
    return static_cast<char *>(note(__real_strdup(text)));
}

WRAP(void, free, (void *block)) {
    blocks.erase(block);
    __real_free(block);
}

WRAP(int, fclose, (FILE * stream)) {
    assert(!product.is_going_on || product.streams.erase(stream) == 1);
    return __real_fclose(stream);
}

WRAP(int, fputs, (const char *text, FILE *stream)) {
    if (!product.is_going_on) {
        return __real_fputs(text, stream);
    }
    assert(stream == stdout || stream == stderr || product.streams.count(stream) == 1);
    (stream == stdout ? product.shown : stream == stderr ? product.complained : product.logged) += text;
    return 0;
}

namespace {

// Sets back what the product keeps for the life of a process.
void start() {
    // The platform keeps what it finds out about its drives beyond the run.
    setenv("QVL_HOST_DRIVE_C", "/tmp", 1);
    free(current_directory());

    product = {};
    forget_state();
}

// Gives back heap blocks and streams, and with them what the launcher state points to.
void release() {
    // A run that has ended on its way has left the shared queries standing.
    shared_disk_queries::forget();
    for (FILE *stream : product.streams) {
        __real_fclose(stream);
    }
    for (void *block : blocks) {
        __real_free(block);
    }
    blocks.clear();
}

} // namespace

void run_product(const std::function<void()> &run, const std::function<void()> &check) {
    start();
    product.by_exit = setjmp(after_run) != 0;
    if (!product.by_exit) {
        product.is_going_on = true;
        run();
    }
    product.is_going_on = false;
    for (const auto &list : STATE_LISTS) {
        assert(*list.count >= 0 && *list.count <= list.slots);
    }
    check();
    release();
}

FILE *opened(FILE *stream) {
    if (stream != nullptr) {
        product.streams.insert(stream);
    }
    return stream;
}

std::vector<std::string> split_input(const uint8_t *data, size_t size, size_t wanted) {
    std::vector<std::string> parts;
    std::istringstream input({data, data + size});
    for (std::string part; std::getline(input, part, '|');) {
        parts.emplace_back(part.c_str());
    }
    parts.resize(std::max(parts.size(), wanted));
    return parts;
}

std::vector<char *> pointers_to(std::vector<std::string> &texts) {
    std::vector<char *> pointers;
    for (std::string &text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}
