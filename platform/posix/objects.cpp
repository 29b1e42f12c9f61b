#include "platform/posix/objects.h"

#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "platform/posix/last_error.h"

namespace {

kernel_object *objects = nullptr;

// Once its job is closed, a child that the kill-on-close flag spares is like any other.
void dissolve_job(kernel_object *job) {
    child_process *child = job->members;
    while (child != nullptr) {
        child_process *next = child->next_in_job;
        child->job = nullptr;
        if ((job->limits & JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE) != 0) {
            terminate_child(child, 0);
        }
        release_child(child);
        child = next;
    }
}

DWORD exit_code_of(const child_process &child, int status) {
    if (WIFEXITED(status)) {
        return static_cast<DWORD>(WEXITSTATUS(status));
    }
    if (child.was_terminated && WTERMSIG(status) == SIGKILL) {
        return child.exit_code;
    }
    return static_cast<DWORD>(128 + WTERMSIG(status));
}

} // namespace

kernel_object *new_object(object_kind kind, child_process *child) {
    kernel_object *object = static_cast<kernel_object *>(malloc(sizeof(kernel_object)));
    if (object == nullptr) {
        fail_with(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    *object = {kind, child, nullptr, 0, objects};
    if (child != nullptr) {
        child->references++;
    }
    objects = object;
    return object;
}

kernel_object *find_object(HANDLE handle, object_kind kind) {
    for (kernel_object *object = objects; object != nullptr; object = object->next) {
        if (object == handle && object->kind == kind) {
            return object;
        }
    }
    fail_with(ERROR_INVALID_HANDLE);
    return nullptr;
}

void watch_child(child_process *child, bool wait) {
    while (!child->has_ended) {
        int status = 0;
        pid_t pid = waitpid(child->start.pid, &status, wait ? 0 : WNOHANG);
        if (pid == 0) {
            return;
        }
        if (pid < 0 && errno != EINTR) { // someone else has waited for it
            child->has_ended = true;
        } else if (pid > 0 && (WIFEXITED(status) || WIFSIGNALED(status))) {
            child->has_ended = true;
            child->exit_code = exit_code_of(*child, status);
        }
    }
}

bool terminate_child(child_process *child, DWORD code) {
    watch_child(child, false);
    if (child->has_ended || kill(child->start.pid, SIGKILL) != 0) {
        return false;
    }
    if (!child->was_terminated) {
        child->was_terminated = true;
        child->exit_code = code;
    }
    return true;
}

void release_child(child_process *child) {
    if (--child->references == 0) {
        watch_child(child, false);
        free(child);
    }
}

BOOL CloseHandle(HANDLE handle) {
    for (kernel_object **link = &objects; *link != nullptr; link = &(*link)->next) {
        kernel_object *object = *link;
        if (object == handle) {
            *link = object->next;
            if (object->kind == object_kind::job) {
                dissolve_job(object);
            } else {
                release_child(object->child);
            }
            free(object);
            return TRUE;
        }
    }
    return fail_with(ERROR_INVALID_HANDLE);
}
