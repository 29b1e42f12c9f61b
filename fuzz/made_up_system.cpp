#include "fuzz/made_up_system.h"

#include <cstring>
#include <string_view>

#include "core/jlp_vars.h"
#include "fuzz/product_run.h"

made_up_system made_up;

namespace {

char job, process, thread; // their addresses are the handles
PHANDLER_ROUTINE console_handler = nullptr;

bool child(child_bit bit) {
    return (made_up.child_bits & bit) != 0;
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
    if (child(NOT_CREATED)) {
        return FALSE;
    }
    *information = {&process, &thread, 4711, 4712};
    made_up.open_handles.insert({&process, &thread});
    made_up.state = SUSPENDED;
    return TRUE;
}

WRAP(BOOL, AssignProcessToJobObject, (HANDLE job_handle, HANDLE handle)) {
    assert(handle == &process && made_up.state == SUSPENDED);
    assert(launch_mode == nullptr && processedArgCount == 0 && new_mem_val_as_str != nullptr);
    const bool assigned = job_handle == &job && !child(NOT_ASSIGNED);
    made_up.may_run = assigned || (job_handle == &job && child(ACCESS_DENIED));
    made_up.last_error = made_up.may_run ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE;
    return assigned;
}

WRAP(DWORD, ResumeThread, (HANDLE handle)) {
    assert(handle == &thread && made_up.state == SUSPENDED && made_up.may_run);
    made_up.state = child(NOT_RESUMED) ? SUSPENDED : RUNNING;
    return child(NOT_RESUMED) ? static_cast<DWORD>(-1) : 1;
}

WRAP(DWORD, WaitForSingleObject, (HANDLE handle, DWORD milliseconds)) {
    assert(handle == &process && milliseconds == INFINITE && made_up.state == RUNNING);
    assert(console_handler(CTRL_C_EVENT) && console_handler(CTRL_BREAK_EVENT) && !console_handler(2));
    made_up.state = ENDED;
    return WAIT_OBJECT_0;
}

WRAP(BOOL, GetExitCodeProcess, (HANDLE handle, DWORD *code)) {
    assert(handle == &process && made_up.state == ENDED);
    *code = made_up.exit_code;
    made_up.last_error = ERROR_GEN_FAILURE;
    made_up.status = child(NO_EXIT_CODE) ? made_up.last_error : made_up.exit_code;
    return !child(NO_EXIT_CODE);
}

WRAP(BOOL, TerminateProcess, (HANDLE handle, UINT code)) {
    assert(handle == &process && code == 0 && made_up.state == SUSPENDED);
    assert(!made_up.may_run || child(NOT_RESUMED));
    made_up.state = ENDED;
    return TRUE;
}

WRAP(BOOL, CloseHandle, (HANDLE handle)) {
    assert(made_up.open_handles.erase(handle) == (handle != nullptr));
    return TRUE;
}

WRAP(BOOL, SetConsoleCtrlHandler, (PHANDLER_ROUTINE handler, BOOL add)) {
    assert(add && !handler(CTRL_C_EVENT) && !handler(CTRL_BREAK_EVENT));
    console_handler = handler;
    assert(made_up.command_line.empty());
    return TRUE;
}
