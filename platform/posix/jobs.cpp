#include "platform/posix/last_error.h"
#include "platform/posix/objects.h"

HANDLE CreateJobObjectA(LPSECURITY_ATTRIBUTES, LPCSTR) {
    return new_object(object_kind::job, nullptr);
}

BOOL SetInformationJobObject(HANDLE job, JOBOBJECTINFOCLASS info_class, LPVOID info, DWORD size) {
    kernel_object *object = find_object(job, object_kind::job);
    if (object == nullptr) {
        return FALSE;
    }
    if (info_class != JobObjectExtendedLimitInformation || info == nullptr ||
        size != sizeof(JOBOBJECT_EXTENDED_LIMIT_INFORMATION)) {
        return fail_with(ERROR_INVALID_PARAMETER);
    }
    object->limits =
        static_cast<JOBOBJECT_EXTENDED_LIMIT_INFORMATION *>(info)->BasicLimitInformation.LimitFlags;
    return TRUE;
}

BOOL AssignProcessToJobObject(HANDLE job, HANDLE process) {
    kernel_object *group = find_object(job, object_kind::job);
    kernel_object *object = group == nullptr ? nullptr : find_object(process, object_kind::process);
    if (object == nullptr) {
        return FALSE;
    }
    child_process *child = object->child;
    watch_child(child, false);
    if (child->has_ended || (child->job != nullptr && child->job != group)) {
        return fail_with(ERROR_ACCESS_DENIED);
    }
    if (child->job == nullptr) {
        child->job = group;
        child->next_in_job = group->members;
        group->members = child;
        child->references++;
    }
    return TRUE;
}
