// What a child takes over from its parent on the host: signals and descriptors; and how it is held
// where tracing is refused.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>

#include "platform/files.h"
#include "tests/platform/child_program.h"
#include "tests/platform/sandbox.h"

static bool refuse_tracing = false;

extern "C" long __real_ptrace(int request, pid_t pid, void *address, void *data);
extern "C" long __wrap_ptrace(int request, pid_t pid, void *address, void *data) {
    if (refuse_tracing) {
        errno = EPERM;
        return -1;
    }
    return __real_ptrace(request, pid, address, data);
}

static int signals_sent = 0;

extern "C" int __real_kill(pid_t pid, int number);
extern "C" int __wrap_kill(pid_t pid, int number) {
    signals_sent++;
    return __real_kill(pid, number);
}

namespace {

// Runs a shell script as the program C:\qvl_test\d\script.
std::string run_script(const std::string &text, DWORD flags) {
    write_file("script", "#!/bin/sh\n" + text);
    chmod("script", 0700);
    std::string line = "C:\\qvl_test\\d\\script";
    STARTUPINFOA start_up = {};
    child started = {};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, 0, flags, nullptr, nullptr, &start_up,
                        &started.process)) {
        return "error " + std::to_string(GetLastError());
    }
    if (flags != 0) {
        ResumeThread(started.process.hThread);
    }
    std::string result = "exit " + std::to_string(end_of(started));
    char output[400] = "";
    if (FILE *file = open_text_file("result", "r"); file != nullptr) {
        size_t length = fread(output, 1, sizeof output, file);
        fclose(file);
        unlink("result");
        return std::string(output, length) + result;
    }
    return result;
}

class child_on_host : public testing::TestWithParam<std::pair<DWORD, bool>> {
protected:
    void SetUp() override { refuse_tracing = GetParam().second; }
    void TearDown() override { refuse_tracing = false; }
    std::string run(const std::string &text) { return run_script(text, GetParam().first); }
};

INSTANTIATE_TEST_SUITE_P(starts, child_on_host,
                         testing::Values(std::pair(0u, false), std::pair(CREATE_SUSPENDED, false),
                                         std::pair(CREATE_SUSPENDED, true)));

BOOL WINAPI take_event(DWORD event) {
    return event == CTRL_C_EVENT;
}

TEST_P(child_on_host, a_signal_is_told_by_its_number) {
    EXPECT_EQ(run("kill -TERM $$"), "exit 143");
    EXPECT_EQ(run("kill -KILL $$"), "exit 137");
}

TEST_P(child_on_host, has_no_descriptor_beyond_its_streams) {
    int leaky = open("/dev/null", O_RDONLY);
    FILE *text = open_text_file("g.txt", "r");
    FILE *log = open_text_file("t", "w+");
    EXPECT_EQ(run("exec /bin/ls /proc/self/fd > result"), "0\n1\n2\n3\nexit 0");
    fclose(log);
    fclose(text);
    close(leaky);
}

// Masks are in hexadecimal, the lowest bit for signal 1.
TEST_P(child_on_host, has_the_mask_and_the_ignored_signals_of_its_parent) {
    sigset_t mask;
    sigset_t old_mask;
    sigemptyset(&mask);
    sigaddset(&mask, SIGUSR2); // 12
    sigprocmask(SIG_SETMASK, &mask, &old_mask);
    signal(SIGHUP, SIG_IGN); // 1
    ASSERT_TRUE(SetConsoleCtrlHandler(take_event, TRUE));
    EXPECT_EQ(run("exec /bin/grep -E '^Sig(Blk|Ign)' /proc/self/status > result"),
              "SigBlk:\t0000000000000800\nSigIgn:\t0000000000000001\nexit 0");
    EXPECT_TRUE(SetConsoleCtrlHandler(take_event, FALSE));
    signal(SIGHUP, SIG_DFL);
    sigset_t after;
    sigprocmask(SIG_SETMASK, &old_mask, &after);
    EXPECT_TRUE(sigismember(&after, SIGUSR2) == 1 && sigismember(&after, SIGINT) == 0);
}

TEST_P(child_on_host, keeps_its_exit_code_where_children_are_ignored) {
    signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(run("exit 6"), "exit 6");
    signal(SIGCHLD, SIG_DFL);
}

TEST_P(child_on_host, failures_of_the_start_are_known_at_once) {
    write_file("script", "no program");
    STARTUPINFOA start_up = {};
    PROCESS_INFORMATION process;
    char line[] = "script";
    static constexpr struct {
        mode_t mode;
        DWORD error;
    } ROWS[] = {{0600, ERROR_ACCESS_DENIED}, {0700, ERROR_BAD_EXE_FORMAT}};
    for (const auto &row : ROWS) {
        chmod(line, row.mode);
        EXPECT_FALSE(CreateProcessA(nullptr, line, nullptr, nullptr, 0, GetParam().first, nullptr, nullptr, &start_up,
                                    &process));
        EXPECT_EQ(GetLastError(), row.error);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a zombie is left";
    }
}

TEST_P(child_on_host, is_killed_by_its_job_after_its_handles_are_closed) {
    HANDLE job = job_with_limits(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE);
    child started = start_child_as("sleep", own_program(), GetParam().first);
    ASSERT_TRUE(AssignProcessToJobObject(job, started.process.hProcess));
    EXPECT_TRUE(CloseHandle(started.process.hThread) && CloseHandle(started.process.hProcess));
    EXPECT_TRUE(CloseHandle(job));
    int status = SIGKILL; // where the closing has waited for it already
    waitpid(static_cast<pid_t>(started.process.dwProcessId), &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
}

TEST(job_on_host, does_not_signal_a_child_once_it_has_been_waited_for) {
    HANDLE job = job_with_limits(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE);
    child started = start_child_as("exit", own_program() + " 1", CREATE_SUSPENDED);
    ASSERT_TRUE(AssignProcessToJobObject(job, started.process.hProcess));
    ResumeThread(started.process.hThread);
    EXPECT_EQ(end_of(started), 1u);
    signals_sent = 0;
    EXPECT_TRUE(CloseHandle(job));
    EXPECT_EQ(signals_sent, 0);
}

TEST_P(child_on_host, is_resumed_even_if_tracing_is_refused) {
    child started = start_child_as("exit", own_program() + " 3", GetParam().first);
    EXPECT_EQ(ResumeThread(started.process.hThread), GetParam().first == 0 ? 0u : 1u);
    EXPECT_EQ(ResumeThread(started.process.hThread), 0u);
    EXPECT_EQ(end_of(started), 3u);
}

TEST(suspended_child, may_be_killed_before_it_is_resumed) {
    child started = start_child_as("exit", own_program(), CREATE_SUSPENDED);
    kill(static_cast<pid_t>(started.process.dwProcessId), SIGKILL);
    pause_for(20);
    EXPECT_EQ(ResumeThread(started.process.hThread), 1u);
    EXPECT_EQ(end_of(started), 137u);
}

TEST_P(child_on_host, has_variables_under_the_names_that_they_were_received_with) {
    const std::string path = getenv("PATH");
    SetEnvironmentVariableA("Path", "/x");
    EXPECT_EQ(run("echo $PATH > result"), "/x\nexit 0");
    SetEnvironmentVariableA("path", path.c_str());
}

TEST_P(child_on_host, a_signal_during_the_start_stops_nothing) {
    ASSERT_TRUE(SetConsoleCtrlHandler(take_event, TRUE));
    pid_t sender = fork();
    if (sender == 0) {
        while (kill(getppid(), SIGINT) == 0) {
            usleep(50);
        }
    }
    for (int i = 0; i < 50; i++) {
        EXPECT_EQ(run("exit 4"), "exit 4");
    }
    kill(sender, SIGKILL);
    waitpid(sender, nullptr, 0);
    SetConsoleCtrlHandler(take_event, FALSE);
}

TEST(console, a_handler_decides_and_ignored_signals_stay_ignored) {
    signal(SIGQUIT, SIG_IGN);
    EXPECT_FALSE(SetConsoleCtrlHandler(take_event, FALSE));
    EXPECT_TRUE(SetConsoleCtrlHandler(take_event, TRUE));
    raise(SIGINT);
    raise(SIGQUIT);
    signal(SIGQUIT, SIG_DFL);
    EXPECT_TRUE(SetConsoleCtrlHandler(take_event, FALSE));
    EXPECT_TRUE(SetConsoleCtrlHandler(take_event, TRUE));
    EXPECT_EXIT(raise(SIGQUIT), testing::KilledBySignal(SIGQUIT), "");
    EXPECT_TRUE(SetConsoleCtrlHandler(take_event, FALSE));
}

} // namespace
