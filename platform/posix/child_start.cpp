#include "platform/posix/child_start.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr int TRACING_REFUSED = 0; // in the place of an errno
constexpr size_t KERNEL_SIGNAL_SET = 64 / CHAR_BIT;

struct child_plan {
    program_start start;
    sigset_t mask;
    pid_t parent;
    int report;
};

void report(const child_plan &plan, int error) {
    [[maybe_unused]] ssize_t written = write(plan.report, &error, sizeof error);
}

// What execve() would do, done before the mask is lifted: no handler of the parent's may run here.
void restore_signals(const child_plan &plan) {
    for (int number = 1; number < NSIG; number++) {
        struct sigaction action;
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN &&
            action.sa_handler != SIG_DFL) {
            action = {};
            action.sa_handler = SIG_DFL;
            sigaction(number, &action, nullptr);
        }
    }
    sigprocmask(SIG_SETMASK, &plan.mask, nullptr);
}

// Runs in the vfork child. Tracing starts last: a traced child stops at any signal, and its parent
// cannot continue it before execve().
[[noreturn]] void become_program(const child_plan &plan) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != plan.parent) {
        _exit(EXIT_FAILURE);
    }
    if (!plan.start.hands_on_descriptors) {
        close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
    }
    if (!plan.start.suspended) {
        restore_signals(plan);
    } else if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
        report(plan, TRACING_REFUSED);
        restore_signals(plan);
    }
    execve(plan.start.program, plan.start.arguments, plan.start.environment);
    report(plan, errno);
    _exit(EXIT_FAILURE);
}

// What the child reports until its program runs: the errno of execve(), or 0.
int read_reports(int descriptor, bool *traced) {
    int error = 0;
    int number;
    while (TEMP_FAILURE_RETRY(read(descriptor, &number, sizeof number)) == sizeof number) {
        if (number == TRACING_REFUSED) {
            *traced = false;
        } else {
            error = number;
        }
    }
    return error;
}

void reap(pid_t pid) {
    TEMP_FAILURE_RETRY(waitpid(pid, nullptr, 0));
}

// Waits until a traced child stands at the first instruction of its program and gives it back its
// signal mask. From here on its parent's death kills it, however it stands.
int wait_for_program(pid_t pid, const sigset_t &mask) {
    int status;
    while (TEMP_FAILURE_RETRY(waitpid(pid, &status, 0)) == pid && WIFSTOPPED(status)) {
        if (WSTOPSIG(status) != SIGTRAP) {
            ptrace(PTRACE_CONT, pid, nullptr, static_cast<intptr_t>(WSTOPSIG(status)));
            continue;
        }
        if (ptrace(PTRACE_SETOPTIONS, pid, nullptr, static_cast<intptr_t>(PTRACE_O_EXITKILL)) ==
                0 &&
            ptrace(PTRACE_SETSIGMASK, pid, KERNEL_SIGNAL_SET, &mask) == 0) {
            return 0;
        }
        int error = errno;
        kill(pid, SIGKILL);
        reap(pid);
        return error;
    }
    return ECHILD;
}

int finish_start(const child_plan &plan, int reports, started_child *child) {
    bool traced = plan.start.suspended;
    int error = read_reports(reports, &traced);
    if (error != 0) {
        reap(child->pid);
        return error;
    }
    if (!plan.start.suspended) {
        child->held = hold::none;
        return 0;
    }
    child->held = traced ? hold::traced : hold::stopped;
    if (traced) {
        return wait_for_program(child->pid, plan.mask);
    }
    kill(child->pid, SIGSTOP);
    return 0;
}

} // namespace

int start_child(const program_start &start, started_child *child) {
    int reports[2];
    if (pipe2(reports, O_CLOEXEC) != 0) {
        return errno;
    }
    child_plan plan = {start, {}, getpid(), reports[1]};
    // SIGTRAP stays open: it is how a traced child says that its program has been loaded.
    sigset_t all_but_trap;
    sigfillset(&all_but_trap);
    sigdelset(&all_but_trap, SIGTRAP);
    sigprocmask(SIG_SETMASK, &all_but_trap, &plan.mask);
    child->pid = vfork();
    if (child->pid == 0) {
        become_program(plan);
    }
    int error = child->pid < 0 ? errno : 0;
    close(reports[1]);
    if (error == 0) {
        error = finish_start(plan, reports[0], child);
    }
    close(reports[0]);
    sigprocmask(SIG_SETMASK, &plan.mask, nullptr);
    return error;
}

bool let_run(const started_child &child) {
    if (child.held == hold::traced) {
        return ptrace(PTRACE_DETACH, child.pid, nullptr, nullptr) == 0;
    }
    return child.held == hold::none || kill(child.pid, SIGCONT) == 0;
}
