// The yardstick: the least that starts a program in a job and returns its exit code.

#include <cstring>

#include "platform/windows_services.h"

int main(int argc, char **argv) {
    static char line[32768];
    for (int i = 1; i < argc; i++) {
        strcat(strcat(line, argv[i]), " ");
    }
    HANDLE job = CreateJobObjectA(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    STARTUPINFOA start_up = {};
    start_up.cb = sizeof start_up;
    PROCESS_INFORMATION child = {};
    if (!CreateProcessA(nullptr, line, nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr, nullptr,
                        &start_up, &child)) {
        return 1;
    }
    AssignProcessToJobObject(job, child.hProcess);
    ResumeThread(child.hThread);
    WaitForSingleObject(child.hProcess, INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(child.hProcess, &code);
    return static_cast<int>(code);
}
