// What children take over on POSIX, in every way that they are started.

#include <csignal>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/platform/children.h"

namespace {

// At once or suspended: the outcome must be the same.
std::string run_script(const std::string &text, mode_t mode = 0700) {
    std::ofstream("script") << text;
    chmod("script", mode);
    const std::string result = run("script");
    EXPECT_EQ(run("script", CREATE_SUSPENDED), result);
    return result;
}

TEST(starts, fail_at_once_and_end_with_a_code_and_have_no_other_descriptors) {
    EXPECT_EQ(run_script("no program", 0600), "error 5");
    EXPECT_EQ(run_script("no program", 0700), "error 193");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a zombie is left";
    EXPECT_EQ(run_script("#!/bin/sh\nkill -KILL $$"), "exit 137");
    EXPECT_EQ(run_script("#!/bin/sh\nexec ls /proc/self/fd"), "0\n1\n2\n3\nexit 0");
    signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(run_script("#!/bin/sh\nexit 6"), "exit 6");
    signal(SIGCHLD, SIG_DFL);
}

// Masks are in hexadecimal, the lowest bit for signal 1. Timer signals arrive meanwhile.
TEST(starts, children_have_the_mask_and_the_ignored_signals_of_their_parent) {
    sigset_t mask = {}, old_mask;
    sigaddset(&mask, SIGUSR2); // 12
    sigprocmask(SIG_SETMASK, &mask, &old_mask);
    signal(SIGHUP, SIG_IGN); // 1
    signal(SIGALRM, [](int) {});
    ualarm(50, 50);
    for (int i = 0; i < 20; i++) {
        EXPECT_EQ(run_script("#!/bin/sh\nexec grep -E '^Sig(Blk|Ign)' /proc/self/status"),
                  "SigBlk:\t0000000000000800\nSigIgn:\t0000000000000001\nexit 0");
    }
    ualarm(0, 0);
    signal(SIGHUP, SIG_DFL);
    sigprocmask(SIG_SETMASK, &old_mask, &mask);
    EXPECT_TRUE(sigismember(&mask, SIGUSR2) == 1 && sigismember(&mask, SIGINT) == 0);
}

} // namespace
