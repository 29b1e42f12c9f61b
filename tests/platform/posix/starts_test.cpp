// What children take over on POSIX, in every way that they are started. What stands for drives.

#include <csignal>
#include <fstream>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"
#include "tests/platform/children.h"

namespace {

// Masks are in hexadecimal, the lowest bit for signal 1. Timer signals arrive meanwhile.
TEST(starts, children_have_the_mask_and_the_ignored_signals_of_their_parent) {
    std::ofstream("script") << "#!/bin/sh\nexec grep -E '^Sig(Blk|Ign)' /proc/self/status";
    chmod("script", 0700);
    sigset_t mask = {}, old_mask;
    sigaddset(&mask, SIGUSR2); // 12
    sigprocmask(SIG_SETMASK, &mask, &old_mask);
    signal(SIGHUP, SIG_IGN); // 1
    signal(SIGALRM, [](int) {});
    ualarm(50, 50);
    for (int i = 0; i < 20; i++) {
        EXPECT_EQ(run("script", i % 2 == 0 ? CREATE_SUSPENDED : 0),
                  "SigBlk:\t0000000000000800\nSigIgn:\t0000000000000001\nexit 0");
    }
    ualarm(0, 0);
    signal(SIGHUP, SIG_DFL);
    sigprocmask(SIG_SETMASK, &old_mask, &mask);
    EXPECT_TRUE(sigismember(&mask, SIGUSR2) == 1 && sigismember(&mask, SIGINT) == 0);
}

TEST(drives, z_is_the_root_until_it_is_set) {
    EXPECT_TRUE(is_directory("Z:\\proc"));
    setenv("QVL_HOST_DRIVE_Z", "/proc", 1);
    const fs::path folder = fs::current_path();
    fs::current_path("/");
    EXPECT_EQ(current_directory(), nullptr);
    fs::current_path("/proc");
    const std::unique_ptr<char, decltype(&free)> shown(current_directory(), free);
    EXPECT_STREQ(shown.get(), "Z:\\");
    fs::current_path(folder);
    unsetenv("QVL_HOST_DRIVE_Z");
}

} // namespace
