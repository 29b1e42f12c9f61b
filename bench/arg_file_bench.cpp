// E6: what it costs to turn an argument file into a list.

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "bench/arg_file_lines.h"
#include "bench/target.h"
#include "jli/args.h"

namespace {

constexpr size_t SMALL = 512 * 1024;
constexpr size_t LARGE = 64 * 1024 * 1024;

// The heap of the code under test, while it is being counted.
bool counting = false;
size_t heap_bytes = 0;
size_t heap_peak = 0;

template <typename Block>
Block *enter(Block *block) {
    if (counting) {
        heap_bytes += malloc_usable_size(block);
        heap_peak = std::max(heap_peak, heap_bytes);
    }
    return block;
}

void leave(void *block) {
    heap_bytes -= counting ? malloc_usable_size(block) : 0;
}

} // namespace

extern "C" {
void *__real_malloc(size_t size);
void *__real_realloc(void *block, size_t size);
void __real_free(void *block);
void *__wrap_malloc(size_t size);
void *__wrap_realloc(void *block, size_t size);
void __wrap_free(void *block);

void *__wrap_malloc(size_t size) {
    return enter(__real_malloc(size));
}

void *__wrap_realloc(void *block, size_t size) {
    leave(block);
    return enter(__real_realloc(block, size));
}

void __wrap_free(void *block) {
    leave(block);
    __real_free(block);
}
}

namespace {

enum kind { PLAIN_OPTIONS, CLASS_PATHS, LONG_TOKENS };

constexpr const char *KIND_NAMES[] = {"plain options", "escaped class paths", "long tokens"};

std::string line_of(kind kind, size_t number) {
    const std::string digits = std::to_string(number % 997);
    switch (kind) {
    case PLAIN_OPTIONS:
        return plain_option(digits);
    case CLASS_PATHS:
        return class_path(digits);
    default:
        return "-Dlong=" + std::string(8000 + number % 997, 'x') + "\n";
    }
}

// A file of about `size` bytes, and its tokens one after another with their lengths.
struct sample {
    FILE *file;
    size_t size;
    std::string text;
    std::vector<size_t> lengths;
    size_t longest;
};

JLI_List list_of(const sample &sample) {
    rewind(sample.file);
    return readArgFile(sample.file);
}

sample make_sample(kind kind, size_t size) {
    std::string content;
    for (size_t number = 0; content.size() < size; number++) {
        content += line_of(kind, number);
    }
    sample made = {tmpfile(), content.size(), {}, {}, 0};
    fwrite(content.data(), 1, content.size(), made.file);
    JLI_List list = list_of(made);
    for (size_t i = 0; i < list->size; i++) {
        made.text += list->elements[i];
        made.lengths.push_back(strlen(list->elements[i]));
        made.longest = std::max(made.longest, made.lengths.back());
    }
    JLI_List_free(list);
    return made;
}

// What returns to the heap outside the time taken.
auto released_later(JLI_List list) {
    return [list] { JLI_List_free(list); };
}

// One heap string for each token, the bounds known beforehand.
JLI_List strings_of(const sample &sample) {
    JLI_List list = JLI_List_new(8);
    const char *start = sample.text.data();
    for (const size_t length : sample.lengths) {
        char *token = static_cast<char *>(malloc(length + 1));
        memcpy(token, start, length);
        token[length] = '\0';
        start += length;
        JLI_List_add(list, token);
    }
    return list;
}

void read_blocks(const sample &sample) {
    char block[4096];
    rewind(sample.file);
    while (const size_t size = fread(block, 1, sizeof block, sample.file)) {
        benchmark::DoNotOptimize(block[size - 1]);
    }
}

// Short tokens against making their strings; long ones against that and reading the file.
void file_to_list(benchmark::State &state, kind kind) {
    const sample sample = make_sample(kind, SMALL);
    measure_ratio(
        state, kind == LONG_TOKENS ? 2 : 3, [&] { return released_later(list_of(sample)); },
        [&] {
            if (kind == LONG_TOKENS) {
                read_blocks(sample);
            }
            return released_later(strings_of(sample));
        });
    fclose(sample.file);
}

// A large file against a small one, per byte.
void large_file(benchmark::State &state, kind kind) {
    const sample large = make_sample(kind, LARGE);
    const sample small = make_sample(kind, SMALL);
    const two_times times = take_turns(
        state, [&] { return released_later(list_of(large)); },
        [&] { return released_later(list_of(small)); });
    const double bytes = static_cast<double>(large.size) / static_cast<double>(small.size);
    report_target(state, times.subject / times.yardstick / bytes, 2);
    fclose(large.file);
    fclose(small.file);
}

// The bytes that a file costs besides its result, against 256 KiB + 3 times the longest token.
void memory(benchmark::State &state, const sample &sample) {
    for (auto _ : state) {
        heap_bytes = heap_peak = 0;
        counting = true;
        JLI_List list = list_of(sample);
        counting = false;
        report_target(state, static_cast<double>(heap_peak - heap_bytes),
                      static_cast<double>(256 * 1024 + 3 * sample.longest));
        JLI_List_free(list);
        state.SetIterationTime(1);
    }
    fclose(sample.file);
}

sample token_of_escapes() {
    sample made = {tmpfile(), 0, {}, {}, 1 << 20};
    fputc('"', made.file);
    for (size_t i = 0; i < made.longest; i++) {
        fputs("\\x", made.file);
    }
    fputs("\"\n", made.file);
    return made;
}

const bool registered = [] {
    for (const kind kind : {PLAIN_OPTIONS, CLASS_PATHS, LONG_TOKENS}) {
        const std::string name = KIND_NAMES[kind];
        const auto add = [kind](const std::string &title,
                                void (*run)(benchmark::State &, enum kind)) {
            return benchmark::RegisterBenchmark(title.c_str(), run, kind)
                ->UseManualTime()
                ->Unit(benchmark::kMicrosecond);
        };
        if (kind != CLASS_PATHS) {
            add("E6 " + name + ", to strings", file_to_list);
        }
        add("E6 " + name + ", 64 MiB per byte", large_file)->Iterations(5);
        benchmark::RegisterBenchmark(
            ("E6 " + name + ", memory").c_str(),
            [kind](benchmark::State &state) { memory(state, make_sample(kind, SMALL)); })
            ->UseManualTime()
            ->Iterations(1);
    }
    benchmark::RegisterBenchmark("E6 1 MiB of escapes, memory",
                                 [](benchmark::State &state) { memory(state, token_of_escapes()); })
        ->UseManualTime()
        ->Iterations(1);
    return true;
}();

} // namespace
