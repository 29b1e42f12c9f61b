// E3 to E5: what it costs to rewrite a whole command line.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/target.h"
#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"

namespace {

namespace fs = std::filesystem;

// As many as the launcher state has room for, but for what the engine adds.
constexpr size_t MANY = 9990;

struct command_line {
    std::vector<std::string> texts;
    std::vector<char *> argv;
    size_t bytes = 0;
};

// The folder that stands for drive C:, with the launcher home and a library for each path.
const fs::path &drive() {
    static const fs::path folder = [] {
        fs::path made = fs::temp_directory_path() / ("bench" + std::to_string(getpid()));
        fs::create_directories(made / "L/lib");
        for (int i = 0; i < 2000; i++) {
            std::ofstream(made / "L/lib" / ("library" + std::to_string(i) + ".jar"));
        }
        setenv("QVL_HOST_DRIVE_C", made.c_str(), 1);
        atexit([] { fs::remove_all(drive()); });
        return made;
    }();
    return folder;
}

// One in five arguments holds a path, where asked for; a tenth belongs to the application.
command_line make_command_line(size_t count, bool with_paths) {
    command_line made;
    for (size_t i = 0; i < count; i++) {
        const std::string number = std::to_string(i / 5);
        std::string arg;
        if (i == count * 9 / 10) {
            arg = "com.example.Main";
        } else if (with_paths && i % 5 == 0) {
            arg = "-Dlibrary." + number + "=C:\\L\\lib\\library" + number + ".jar";
        } else if (i % 5 == 1) {
            arg = "-XX:MaxInlineLevel" + number + "=" + std::to_string(i);
        } else if (i % 5 == 2) {
            arg = "--add-opens=java.base/java.lang.module" + number + "=ALL-UNNAMED";
        } else {
            arg = "-Xlog:category" + number + "=info:file:log" + std::to_string(i);
        }
        made.bytes += arg.size();
        made.texts.push_back(std::move(arg));
    }
    for (std::string &text : made.texts) {
        made.argv.push_back(text.data());
    }
    return made;
}

// A process whose configuration has been loaded.
void set_state() {
    drive();
    assign_text(&launch_mode, "legacy");
    use_advanced_launch_mode = 0;
    is_host_java_9_plus = 1;
    assign_text(&launcher_home, "C:\\L");
    assign_text(&container_home, "C:\\C");
    assign_text(&jvm_home, "C:\\J");
    assign_text(&quorvel_home, "C:\\Q");
    assign_text(&quorvel_library_path, "C:\\Q\\quorvel.dll");
    assign_text(&launcher_path_arg, "-Dcom.quorvel.LauncherPackPath=C:\\L");
}

void release_results() {
    release_entries(processedArg, &processedArgCount);
    release_entries(newPathList, &newPathListCount);
    lhs_count = 0;
    rhs_count = 0;
}

auto rewrite(command_line &line) {
    parse_arguments(static_cast<int>(line.argv.size()), line.argv.data());
    return release_results;
}

auto copy(const command_line &line) {
    std::vector<char *> copies;
    copies.reserve(line.argv.size());
    for (const char *arg : line.argv) {
        copies.push_back(strdup(arg));
    }
    return [copies] {
        for (char *text : copies) {
            free(text);
        }
    };
}

void rewriting_against_copying(benchmark::State &state, bool with_paths, double limit) {
    set_state();
    command_line line = make_command_line(MANY, with_paths);
    measure_ratio(
        state, limit, [&] { return rewrite(line); }, [&] { return copy(line); });
}

void ten_times_the_arguments(benchmark::State &state) {
    set_state();
    command_line many = make_command_line(MANY, true);
    command_line few = make_command_line(MANY / 10, true);
    measure_ratio(
        state, 11, [&] { return rewrite(many); }, [&] { return rewrite(few); });
}

// The curve: what the time grows to with the number of arguments.
void of_a_number_of_arguments(benchmark::State &state) {
    set_state();
    command_line line = make_command_line(static_cast<size_t>(state.range(0)), true);
    const two_times times = take_turns(
        state, [&] { return rewrite(line); }, [&] { return copy(line); });
    state.counters["subject_us"] = times.subject * 1e6;
}

double private_bytes() {
    std::ifstream file("/proc/self/smaps_rollup");
    std::string word;
    double kilobytes = 0;
    while (file >> word) {
        if (word == "Private_Dirty:") {
            file >> kilobytes;
        }
    }
    return kilobytes * 1024;
}

// By how much the private memory of a process grows that rewrites the command line.
double growth(command_line &line) {
    int ends[2];
    if (pipe(ends) != 0) {
        return 0;
    }
    const pid_t child = fork();
    if (child == 0) {
        private_bytes(); // what reading the figure takes is there before
        const double before = private_bytes();
        rewrite(line);
        const double grown = private_bytes() - before;
        _exit(write(ends[1], &grown, sizeof grown) == sizeof grown ? 0 : 1);
    }
    double grown = 0;
    if (read(ends[0], &grown, sizeof grown) != sizeof grown) {
        grown = 0;
    }
    close(ends[0]);
    close(ends[1]);
    waitpid(child, nullptr, 0);
    return grown;
}

void memory(benchmark::State &state, bool with_paths) {
    set_state();
    command_line line = make_command_line(MANY, with_paths);
    for (auto _ : state) {
        report_target(state, growth(line), static_cast<double>(3 * line.bytes + 64 * MANY));
        state.SetIterationTime(1);
    }
}

void memory_of_ten_times_the_arguments(benchmark::State &state) {
    set_state();
    command_line many = make_command_line(MANY, true);
    command_line few = make_command_line(MANY / 10, true);
    for (auto _ : state) {
        report_target(state, growth(many) / growth(few), 11);
        state.SetIterationTime(1);
    }
}

// Memory first, while the heap is as fresh as that of a process that has just started.
BENCHMARK(memory_of_ten_times_the_arguments)
    ->Name("E4_memory of ten times the arguments")
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(memory, paths, true)
    ->Name("E5_memory for 10,000 arguments, a fifth are paths")
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(memory, none, false)
    ->Name("E5_memory for 10,000 arguments without paths")
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(rewriting_against_copying, paths, true, 20)
    ->Name("E3_10,000 arguments, a fifth are paths")
    ->UseManualTime()
    ->Iterations(100);
BENCHMARK_CAPTURE(rewriting_against_copying, none, false, 4)
    ->Name("E3_10,000 arguments without paths")
    ->UseManualTime()
    ->Iterations(400);
BENCHMARK(ten_times_the_arguments)
    ->Name("E4_time of ten times the arguments")
    ->UseManualTime()
    ->Iterations(100);
BENCHMARK(of_a_number_of_arguments)
    ->Name("curve")
    ->RangeMultiplier(10)
    ->Range(10, 1000)
    ->Arg(MANY)
    ->UseManualTime()
    ->MinTime(0.2);
} // namespace
