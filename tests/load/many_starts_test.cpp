// Rows of starts and starts at once: every exit code is right, nothing is left behind, nothing grows,
// and waiting costs no processor time.

#include <numeric>

#include "tests/support/world.h"

namespace {

constexpr uint32_t IN_A_ROW = on_windows ? 100 : is_sanitized ? 200 : 1000;
constexpr uint32_t AT_ONCE = on_windows ? 20 : is_sanitized ? 50 : 200;

class load : public launcher {};

// 0 and every other code of 8 bits; on Windows large ones as well.
uint32_t exit_code_of(uint32_t start) {
    const uint32_t large[] = {256, 259, 0x7FFFFFFF, 0x80000000, 0xC0000005, 0xFFFFFFFF};
    return on_windows && start % 3 == 2 ? large[start / 3 % std::size(large)] : start % 256;
}

std::string order_for(uint32_t code) {
    return "exit=" + std::to_string(code);
}

std::string rest_of(uint32_t code) {
    return code == 0 ? "" : invalid_command(JAVA);
}

bool has_job(uint32_t launcher_id) {
    return job_exists("pid_" + std::to_string(launcher_id));
}

// Wine keeps what is left of a process, and so its job, for half a second.
void expect_no_jobs(const std::vector<uint32_t> &launchers) {
    for (const uint32_t id : launchers) {
        EXPECT_TRUE(comes_true([=] { return !has_job(id); }));
    }
}

size_t handles_while_waiting() {
    const uint32_t id = until_held(start_held("C:\\held", {}), "C:\\held", {});
    EXPECT_EQ(has_job(id), on_windows);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const size_t count = handle_count(id);
    let_go("C:\\held");
    EXPECT_EQ(end_of_launcher(id, "C:\\held").status, 0u);
    return count;
}

uint64_t cost_of(const std::vector<uint32_t> &processes) {
    return std::transform_reduce(processes.begin(), processes.end(), uint64_t(0), std::plus(), processor_time);
}

// What the processes cost from the moment on when all have come to rest.
uint64_t cost_of_waiting(const std::vector<uint32_t> &processes, int seconds) {
    uint64_t before = 0;
    EXPECT_TRUE(comes_true([&] {
        before = cost_of(processes);
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        return cost_of(processes) == before;
    }));
    EXPECT_GT(before, 0u);
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    return cost_of(processes) - before;
}

int seconds_to_wait() {
    const char *seconds = std::getenv("QVL_LOAD_WAIT_SECONDS");
    return seconds == nullptr ? 5 : std::stoi(seconds);
}

} // namespace

TEST_F(load, a_row_of_starts) {
    const size_t first_handles = handles_while_waiting();
    const size_t own_handles = handle_count(own_process_id());
    EXPECT_GE(first_handles, 3u);
    std::vector<uint32_t> launchers;
    const auto begin = std::chrono::steady_clock::now();
    for (uint32_t i = 0; i < IN_A_ROW; i++) {
        const uint32_t code = exit_code_of(i);
        const outcome result = run_launcher(LAUNCHER, {order_for(code)});
        ASSERT_EQ(result.output, report(JAVA, {order_for(code)}) + rest_of(code));
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, code);
        launchers.push_back(result.process_id);
    }
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
    expect_no_jobs(launchers);
    const size_t last_handles = handles_while_waiting();
    EXPECT_EQ(last_handles, first_handles);
    EXPECT_EQ(handle_count(own_process_id()), own_handles);
    std::printf("[ measured ] %u starts in a row: %.1f ms each, %zu handles in the first launcher, %zu in the last\n",
                IN_A_ROW, taken.count() / IN_A_ROW, first_handles, last_handles);
}

TEST_F(load, starts_at_once_that_wait_for_nothing) {
    const size_t own_handles = handle_count(own_process_id());
    texts folders;
    std::vector<uint32_t> launchers, children;
    for (uint32_t i = 0; i < AT_ONCE; i++) {
        folders.push_back("C:\\work\\" + std::to_string(i));
        launchers.push_back(start_held(folders[i], {order_for(exit_code_of(i))}));
    }
    for (uint32_t i = 0; i < AT_ONCE; i++) {
        launchers[i] = until_held(launchers[i], folders[i], {order_for(exit_code_of(i))});
        children.push_back(process_id_in(folders[i] + "\\held"));
        EXPECT_TRUE(is_running(children[i]));
        EXPECT_EQ(has_job(launchers[i]), on_windows);
    }

    const int seconds = seconds_to_wait();
    const uint64_t cost = cost_of_waiting(launchers, seconds);
    EXPECT_EQ(cost, 0u);
    std::printf("[ measured ] %u launchers at once: %.6f s of processor time in %d s of waiting, %zu to %zu handles\n",
                AT_ONCE, static_cast<double>(cost) / 1e9, seconds, handle_count(launchers.front()),
                handle_count(launchers.back()));
    EXPECT_EQ(handle_count(launchers.back()), handle_count(launchers.front()));

    for (const std::string &folder : folders) {
        let_go(folder);
    }
    for (uint32_t i = 0; i < AT_ONCE; i++) {
        const uint32_t code = exit_code_of(i);
        const outcome result = end_of_launcher(launchers[i], folders[i]);
        EXPECT_EQ(result.output, report(JAVA, {hold_order(folders[i]), order_for(code)}, folders[i]) + rest_of(code));
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, code);
        EXPECT_FALSE(is_running(children[i]));
    }
    expect_no_jobs(launchers);
    EXPECT_EQ(handle_count(own_process_id()), own_handles);
}
