// E1: what rewriting a path list asks of the disk. E2: what the filters cost. E8: what a path
// argument costs besides the disk.

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "bench/target.h"
#include "core/jlp_utils.h"
#include "core/rewriting/option_filters.h"
#include "core/rewriting/path_rewriting.h"
#include "core/rewriting/shared_disk_queries.h"
#include "core/state_arrays.h"
#include "platform/files.h"
#include "platform/windows_services.h"
#include "tests/rewriting/plain_walk.h"

namespace {

size_t queries = 0;
size_t current_directory_calls = 0;

} // namespace

extern "C" {
entry_kind __real_kind_of(const char *path);
entry_kind __wrap_kind_of(const char *path);
char *__real_current_directory();
char *__wrap_current_directory();

entry_kind __wrap_kind_of(const char *path) {
    queries++;
    return __real_kind_of(path);
}

char *__wrap_current_directory() {
    current_directory_calls++;
    return __real_current_directory();
}
}

namespace {

namespace fs = std::filesystem;

// 1000 jars in 50 folders, eight components deep, on a drive of their own.
const std::vector<std::string> &jars() {
    static const std::vector<std::string> paths = [] {
        const fs::path root = fs::temp_directory_path() / "qvl_rewriting_bench";
        fs::remove_all(root);
        setenv("QVL_HOST_DRIVE_C", root.c_str(), 1);
        const std::string folder = "C:\\apps\\server\\releases\\current\\modules\\ext\\";
        std::vector<std::string> made;
        for (int i = 0; i < 1000; i++) {
            made.push_back(folder + std::to_string(i % 50) + "\\" + std::to_string(i) + ".jar");
            std::string file = root.string() + made.back().substr(2);
            replace_char(file.data(), '\\', '/');
            fs::create_directories(fs::path(file).parent_path());
            std::ofstream(file).close();
        }
        fs::current_path(root);
        return made;
    }();
    return paths;
}

std::string joined(const std::vector<std::string> &paths) {
    std::string list;
    for (const std::string &path : paths) {
        list += (list.empty() ? "" : ";") + path;
    }
    return list;
}

void rewrite(const std::string &list) {
    replaceLauncherHomeWithRIHome(list.c_str(), "C:\\apps", "C:\\moved", 0, '=');
    release_entries(newPathList, &newPathListCount);
}

// The limit: the prefixes that exist, each once, and one question for each element.
void count_queries(benchmark::State &state) {
    const std::string list = joined(jars());
    std::set<std::string> existing;
    size_t plain = 0;
    for (const std::string &jar : jars()) {
        const plain_walk walk = walk_plainly(jar);
        existing.insert(walk.existing.begin(), walk.existing.end());
        plain += walk.queries;
    }
    for (auto _ : state) {
        queries = 0;
        rewrite(list);
    }
    state.counters["plain_walk"] = static_cast<double>(plain);
    report_target(state, static_cast<double>(queries),
                  static_cast<double>(existing.size() + jars().size()));
}
BENCHMARK(count_queries)->Name("E1 queries of a path list")->Unit(benchmark::kMicrosecond);

void count_current_directory(benchmark::State &state) {
    const std::string list = joined(jars());
    for (auto _ : state) {
        current_directory_calls = 0;
        rewrite(list);
    }
    report_target(state, static_cast<double>(current_directory_calls), 1);
}
BENCHMARK(count_current_directory)->Name("E1 getcwd of a path list")->Iterations(10);

// ---- E8 ----

void copy(const char *arg, size_t size) {
    void *copied = malloc(size);
    benchmark::DoNotOptimize(copied);
    memcpy(copied, arg, size);
    benchmark::ClobberMemory();
    free(copied);
}

// Every path as an argument of one command line, less what is asked of the disk for it, against a
// copy of the argument.
void path_arguments(benchmark::State &state) {
    const auto no_release = [] {};
    std::vector<std::string> arguments;
    for (const std::string &jar : jars()) {
        arguments.push_back("-Dlibrary=" + jar);
    }
    std::vector<double> copying;
    const two_times times = take_turns(
        state,
        [&] {
            const shared_disk_queries shared;
            for (const std::string &arg : arguments) {
                replaceLauncherHomeWithRIHome(arg.c_str(), "C:\\apps", "C:\\moved", 1, '=');
            }
            return [] { release_entries(newPathList, &newPathListCount); };
        },
        [&] {
            char full[260];
            for (const std::string &jar : jars()) {
                benchmark::DoNotOptimize(__real_kind_of(jar.c_str()));
                benchmark::DoNotOptimize(GetFullPathNameA(jar.c_str(), sizeof full, full, nullptr));
            }
            return no_release;
        });
    for (int i = 0; i < 100; i++) {
        copying.push_back(seconds_of([&] {
            for (const std::string &arg : arguments) {
                copy(arg.c_str(), arg.size() + 1);
            }
            return no_release;
        }));
    }
    report_target(state, (times.subject - times.yardstick) / lower_quartile(copying), 2);
}
BENCHMARK(path_arguments)
    ->Name("E8 path arguments")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

// ---- E2 ----

constexpr const char *MATCH_NOTHING[] = {
    "-Dorg.example.server.config=C:\\Program Files\\Example\\conf\\server.properties",
    "-Dx=1",
    "-XX:+UseStringDeduplication",
    "-XX:-OmitStackTraceInFastThrow",
    "-XX:+PrintCodeCache",
    "-XX:MaxMetaspaceSize=256m",
    "-XX:PrintAssemblyOptions=intel",
    "-XX:CMSIncrementalSafetyFactor=10",
    "-XX:+UseG1GC",
    "-Xmx512m",
    "-Xshare:off",
    "-Xlog:gc*:file=C:\\logs\\gc.log",
    "-javaagent:C:\\agents\\agent.jar=x",
    "--add-opens=java.base/java.lang=ALL-UNNAMED",
    "-cp",
    "C:\\apps\\server\\lib\\one.jar;C:\\apps\\server\\lib\\two.jar",
    "org.example.server.Main",
    "-verbose",
    "-ea",
};

constexpr int REPEATED = 1000;

template <typename Function>
auto repeated(Function function) {
    return [function] {
        for (int i = 0; i < REPEATED; i++) {
            function();
        }
        return [] {};
    };
}

// The built-in tables against a copy whose size is known.
void filter(benchmark::State &state, const char *arg) {
    const size_t size = strlen(arg) + 1;
    measure_ratio(state, 2.5,
                  repeated([=] { benchmark::DoNotOptimize(is_ignore_property(arg, 1)); }),
                  repeated([=] { copy(arg, size); }));
}

const bool registered = [] {
    for (const char *arg : MATCH_NOTHING) {
        benchmark::RegisterBenchmark((std::string("E2 ") + arg).c_str(), filter, arg)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond)
            ->MinTime(0.1);
    }
    return true;
}();

} // namespace
