#ifndef PLATFORM_POSIX_OBJECTS_H
#define PLATFORM_POSIX_OBJECTS_H

// What handles stand for. A handle is an object's address, but it is looked up before it is used,
// so that any value can be passed to a service.

#include "platform/posix/child_start.h"
#include "platform/posix/windows_services.h"

struct kernel_object;

// A child process. It is referred to by its process handle, its thread handle and its job, and
// forgotten with the last of them.
struct child_process {
    started_child start;
    int references;
    bool has_ended; // and has been waited for: its id may be another's now
    bool was_terminated;
    DWORD exit_code; // once terminated: the code that this asked for
    kernel_object *job;
    child_process *next_in_job;
};

enum class object_kind { process, thread, job };

struct kernel_object {
    object_kind kind;
    child_process *child;   // of a process or thread
    child_process *members; // of a job
    DWORD limits;           // of a job
    kernel_object *next;
};

// Null when memory is out, with the last error set. CloseHandle() releases it.
kernel_object *new_object(object_kind kind, child_process *child);

// The object, or null, with the last error set, when the handle is none of an object of this kind.
kernel_object *find_object(HANDLE handle, object_kind kind);

// Takes note of the child's end if it has come; with `wait`, once it has come.
void watch_child(child_process *child, bool wait);

// Kills a child that has not ended; its exit code will be `code`.
bool terminate_child(child_process *child, DWORD code);

void release_child(child_process *child);

#endif
