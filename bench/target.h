#ifndef BENCH_TARGET_H
#define BENCH_TARGET_H

// A target is a figure that must not go beyond a limit. The report of a benchmark shows the figure,
// the yardstick or the limit that it is held against, and whether it is met.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <vector>

inline void report_target(benchmark::State &state, double figure, double limit) {
    state.counters["figure"] = figure;
    state.counters["limit"] = limit;
    state.SetLabel(figure <= limit ? "met" : "NOT MET");
}

inline double lower_quartile(std::vector<double> samples) {
    const auto quartile = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 4);
    std::nth_element(samples.begin(), quartile, samples.end());
    return *quartile;
}

// The lower quartiles of the seconds of two functions, which take turns.
struct two_times {
    double subject;
    double yardstick;
};

// Processor time, which other programs of a busy machine do not stretch.
inline double seconds_now() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// A function may return what has to be released outside the time taken: a callable.
template <typename Function>
double seconds_of(Function function) {
    const double start = seconds_now();
    auto release = function();
    const double time = seconds_now() - start;
    release();
    return time;
}

template <typename Subject, typename Yardstick>
two_times take_turns(benchmark::State &state, Subject subject, Yardstick yardstick) {
    std::vector<double> subject_times;
    std::vector<double> yardstick_times;
    for (auto _ : state) {
        subject_times.push_back(seconds_of(subject));
        yardstick_times.push_back(seconds_of(yardstick));
        state.SetIterationTime(subject_times.back());
    }
    const two_times times = {lower_quartile(subject_times), lower_quartile(yardstick_times)};
    state.counters["yardstick_us"] = times.yardstick * 1e6;
    return times;
}

// Holds the time of the subject against `limit` times that of the yardstick.
template <typename Subject, typename Yardstick>
void measure_ratio(benchmark::State &state, double limit, Subject subject, Yardstick yardstick) {
    const two_times times = take_turns(state, subject, yardstick);
    report_target(state, times.subject / times.yardstick, limit);
}

#endif
