// E7: argument files against the best public tokenizer of response files, side by side: a text in
// memory becomes a list of strings that are owned.

#include <llvm/Support/Allocator.h>
#include <llvm/Support/CommandLine.h>
#include <llvm/Support/StringSaver.h>

#include <string>

#include "bench/arg_file_lines.h"
#include "bench/target.h"
#include "jli/arg_bookkeeping.h"
#include "jli/arg_file_tokenizer.h"

namespace {

constexpr size_t SIZE = 512 * 1024;

std::string quoted(const std::string &number) {
    return "-Dname" + number + "=\"C:\\\\Program Files\\\\Example\\\\lib\\\\jar-" + number +
           ".jar\" 'a b " + number + "'\n";
}

std::string quoted_options(const std::string &number) {
    return "\"-Dorg.example.name" + number + "=a value with blanks " + number + "\"\n";
}

std::string mixed(const std::string &number) {
    return "# the options of module " + number + "\n-cp \"C:\\\\Program Files\\\\Example\\\\" +
           number + ".jar\"\n-Xmx" + number + "m -ea\n-Dorg.example.option=" + number +
           "\n\n--add-opens java.base/java.lang=ALL-UNNAMED\n";
}

std::string long_tokens(const std::string &number) {
    return "-Dlong=" + std::string(8000, 'x') + number + "\n";
}

// The text of a file; `of_number` makes a line or a few.
std::string text_of(std::string (*of_number)(const std::string &)) {
    std::string text;
    for (int number = 0; text.size() < SIZE; number++) {
        text += of_number(std::to_string(number % 997));
    }
    return text;
}

// What readArgFile() does with a block.
auto read_here(const std::string &text) {
    JLI_List list = JLI_List_new(8);
    ArgFileContext context = {FIND_NEXT, text.data(), text.data() + text.size(), '"',
                              JLI_List_new(4)};
    while (char *token = nextToken(&context)) {
        checkArg(token);
        JLI_List_add(list, token);
    }
    JLI_List_free(context.pieces);
    return [list] { JLI_List_free(list); };
}

struct owned_strings {
    llvm::BumpPtrAllocator memory;
    llvm::SmallVector<const char *, 0> strings;
};

auto read_by_llvm(const std::string &text) {
    auto *owned = new owned_strings;
    llvm::StringSaver saver(owned->memory);
    llvm::cl::TokenizeGNUCommandLine(text, saver, owned->strings);
    return [owned] { delete owned; };
}

// As a ratio of times, so that 1 is the other's; the counters hold MB/s.
void against_llvm(benchmark::State &state, std::string (*of_number)(const std::string &)) {
    const std::string text = text_of(of_number);
    const two_times times = take_turns(
        state, [&] { return read_here(text); }, [&] { return read_by_llvm(text); });
    const double megabytes = static_cast<double>(text.size()) * 1e-6;
    state.counters["here_MB_s"] = megabytes / times.subject;
    state.counters["llvm_MB_s"] = megabytes / times.yardstick;
    report_target(state, times.subject / times.yardstick, 1);
}

BENCHMARK_CAPTURE(against_llvm, E7_plain_options, plain_option)->UseManualTime();
BENCHMARK_CAPTURE(against_llvm, E7_mixed, mixed)->UseManualTime();
BENCHMARK_CAPTURE(against_llvm, E7_quoted, quoted)->UseManualTime();
BENCHMARK_CAPTURE(against_llvm, E7_quoted_options, quoted_options)->UseManualTime();
BENCHMARK_CAPTURE(against_llvm, E7_class_paths, class_path)->UseManualTime();
BENCHMARK_CAPTURE(against_llvm, E7_long_tokens, long_tokens)->UseManualTime();

} // namespace
