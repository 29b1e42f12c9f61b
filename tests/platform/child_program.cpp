#include "tests/platform/child_program.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "platform/files.h"
#include "tests/platform/sandbox.h"

void pause_for(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

std::string own_program() {
    char path[4096];
    GetModuleFileNameA(nullptr, path, sizeof path);
    return '"' + std::string(path) + '"';
}

namespace {

// Adds a byte to a file every 20 ms until there is a file "stop", at most for 20 s.
int beat(const char *path) {
    FILE *file = fopen(path, "wb");
    for (int i = 0; i < 1000 && !is_file("stop"); i++) {
        fputc('.', file);
        fflush(file);
        pause_for(20);
    }
    return fclose(file);
}

// Starts a beating child in a job and waits for it; the child starts one of its own.
int keep_child_in_job() {
    HANDLE job = job_with_limits(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK);
    child started = start_child_as("family", own_program(), CREATE_SUSPENDED);
    if (!started.started || !AssignProcessToJobObject(job, started.process.hProcess)) {
        return EXIT_FAILURE;
    }
    ResumeThread(started.process.hThread);
    return static_cast<int>(end_of(started));
}

int beat_with_child() {
    start_apart("grandchild");
    return beat("child");
}

int print_variables(int argc, char **argv) {
    for (int i = 1; i < argc; i++) {
        char value[100] = "";
        GetEnvironmentVariableA(argv[i], value, sizeof value);
        const char *received = getenv(argv[i]);
        printf("%s=%s,%s ", argv[i], value, received == nullptr ? "(unset)" : received);
    }
    return 0;
}

} // namespace

int play_role(const char *role, int argc, char **argv) {
    if (argc == 2 && strcmp(argv[1], "grandchild") == 0) {
        return beat(argv[1]);
    }
    if (strcmp(role, "arguments") == 0) {
        for (int i = 0; i < argc; i++) {
            printf("[%s]", argv[i]);
        }
    } else if (strcmp(role, "length") == 0) {
        printf("%d:%d ", argc, static_cast<int>(strlen(argv[1])));
    } else if (strcmp(role, "exit") == 0) {
        return atoi(argv[1]);
    } else if (strcmp(role, "variables") == 0) {
        return print_variables(argc, argv);
    } else if (strcmp(role, "create") == 0) {
        write_file(argv[1], "");
    } else if (strcmp(role, "copy") == 0) {
        char line[100];
        fputs(fgets(line, sizeof line, stdin), stdout);
        fputs(line, stderr);
    } else if (strcmp(role, "sleep") == 0) {
        pause_for(20000);
    } else if (strcmp(role, "parent") == 0) {
        return keep_child_in_job();
    } else if (strcmp(role, "family") == 0) {
        return beat_with_child();
    }
    return 0;
}

child start_child_as(const char *role, const std::string &command_line, DWORD flags) {
    constexpr DWORD NOW_AND_THEN_UNDER_WINE = 1359;
    SetEnvironmentVariableA("QVL_CHILD", role);
    child started = {};
    for (int attempt = 0; !started.started && attempt < 3; attempt++) {
        std::string line = command_line;
        STARTUPINFOA start_up = {};
        start_up.cb = sizeof start_up;
        started.started = CreateProcessA(nullptr, line.data(), nullptr, nullptr, 0, flags, nullptr, nullptr, &start_up,
                                         &started.process) != 0;
        started.error = started.started ? DWORD(ERROR_SUCCESS) : GetLastError();
        if (started.error != NOW_AND_THEN_UNDER_WINE) {
            break;
        }
    }
    SetEnvironmentVariableA("QVL_CHILD", nullptr);
    return started;
}

DWORD end_of(const child &started) {
    DWORD code = 0;
    WaitForSingleObject(started.process.hProcess, INFINITE);
    GetExitCodeProcess(started.process.hProcess, &code);
    CloseHandle(started.process.hThread);
    CloseHandle(started.process.hProcess);
    return code;
}

std::string run_as(const char *role, const std::string &command_line) {
    fflush(stdout);
    int saved = dup(STDOUT_FILENO);
    int file = open("output", O_CREAT | O_TRUNC | O_RDWR, 0600);
    dup2(file, STDOUT_FILENO);
    close(file);
    child started = start_child_as(role, command_line);
    std::string result =
        started.started ? "exit " + std::to_string(end_of(started)) : "error " + std::to_string(started.error);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    char output[40000];
    FILE *written = open_text_file("output", "r");
    size_t length = fread(output, 1, sizeof output, written);
    fclose(written);
    return std::string(output, length) + result;
}

HANDLE job_with_limits(DWORD flags) {
    HANDLE job = CreateJobObjectA(nullptr, "qvl_platform_test");
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = flags;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}
