#include "fuzz/made_up_system.h"

#include <cstring>
#include <string_view>

#include "core/jlp_vars.h"
#include "fuzz/product_run.h"

made_up_system made_up;

namespace {

char job, process, thread; // their addresses are the handles

bool child(child_bit bit) {
    return (made_up.child_bits & bit) != 0;
}

BOOL fail(DWORD error) {
    made_up.last_error = error;
    return FALSE;
}

} // namespace

WRAP(DWORD, GetModuleFileNameA, (HMODULE, LPSTR buffer, DWORD size)) {
    assert(made_up.own_path.size() < size);
    strcpy(buffer, made_up.own_path.c_str());
    return static_cast<DWORD>(made_up.own_path.size());
}

WRAP(DWORD, GetLastError, ()) {
    return made_up.last_error;
}

WRAP(HANDLE, CreateJobObjectA, (LPSECURITY_ATTRIBUTES, LPCSTR name)) {
    assert(std::string_view(name).starts_with("pid_"));
    return child(NO_JOB) ? nullptr : *made_up.open_handles.insert(&job).first;
}

WRAP(BOOL, SetInformationJobObject, (HANDLE handle, JOBOBJECTINFOCLASS, LPVOID info, DWORD size)) {
    const auto *limits = static_cast<const JOBOBJECT_EXTENDED_LIMIT_INFORMATION *>(info);
    assert(size == sizeof *limits && limits->BasicLimitInformation.LimitFlags == 0x3800);
    return handle == &job;
}

WRAP(BOOL, CreateProcessA,
     (LPCSTR application, LPSTR command_line, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL inherit_handles,
      DWORD flags, LPVOID environment, LPCSTR directory, LPSTARTUPINFOA start_up, LPPROCESS_INFORMATION information)) {
    assert(made_up.command_line.empty());
    assert(application == nullptr && environment == nullptr && directory == nullptr && !inherit_handles);
    assert(flags == CREATE_SUSPENDED && start_up->cb == sizeof *start_up);
    made_up.command_line = command_line;
    made_up.status = 1;
    made_up.created = !child(NOT_CREATED);
    if (made_up.created) {
        *information = {&process, &thread, 4711, 4712};
        made_up.open_handles.insert({&process, &thread});
    }
    return made_up.created;
}

WRAP(BOOL, AssignProcessToJobObject, (HANDLE job_handle, HANDLE handle)) {
    assert(made_up.created && handle == &process);
    assert(launch_mode == nullptr && processedArgCount == 0 && new_mem_val_as_str != nullptr);
    const bool assigned = job_handle == &job && !child(NOT_ASSIGNED);
    made_up.may_run = assigned || (job_handle == &job && child(ACCESS_DENIED));
    return assigned || fail(made_up.may_run ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE);
}

WRAP(DWORD, ResumeThread, (HANDLE handle)) {
    assert(handle == &thread && made_up.may_run && !made_up.terminated);
    made_up.resumed = !child(NOT_RESUMED);
    return made_up.resumed ? 1 : static_cast<DWORD>(-1);
}

WRAP(DWORD, WaitForSingleObject, (HANDLE handle, DWORD milliseconds)) {
    assert(handle == &process && milliseconds == INFINITE && made_up.resumed);
    made_up.waited = true;
    return WAIT_OBJECT_0;
}

WRAP(BOOL, GetExitCodeProcess, (HANDLE handle, DWORD *code)) {
    assert(handle == &process && made_up.waited);
    *code = made_up.exit_code;
    made_up.status = child(NO_EXIT_CODE) ? ERROR_GEN_FAILURE : made_up.exit_code;
    return !child(NO_EXIT_CODE) || fail(ERROR_GEN_FAILURE);
}

WRAP(BOOL, TerminateProcess, (HANDLE handle, UINT code)) {
    assert(handle == &process && code == 0 && (!made_up.may_run || child(NOT_RESUMED)));
    made_up.terminated = true;
    return TRUE;
}

WRAP(BOOL, CloseHandle, (HANDLE handle)) {
    assert(made_up.open_handles.erase(handle) == (handle != nullptr));
    return TRUE;
}

WRAP(BOOL, SetConsoleCtrlHandler, (PHANDLER_ROUTINE handler, BOOL add)) {
    assert(add && handler(CTRL_C_EVENT) && handler(CTRL_BREAK_EVENT) && !handler(2));
    assert(made_up.command_line.empty());
    return TRUE;
}
