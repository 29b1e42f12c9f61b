// Children: suspended starts, exit codes, jobs and handles.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/files.h"
#include "tests/platform/child_program.h"
#include "tests/platform/sandbox.h"

namespace {

bool comes_true(bool (*condition)()) {
    for (int i = 0; i < 500 && !condition(); i++) {
        pause_for(20);
    }
    return condition();
}

bool grows(const char *path) {
    uintmax_t size = std::filesystem::file_size(path);
    for (int i = 0; i < 50 && std::filesystem::file_size(path) == size; i++) {
        pause_for(10);
    }
    return std::filesystem::file_size(path) > size;
}

TEST(process, exit_codes) {
    for (const char *code : {"0", "7", "255"}) {
        EXPECT_EQ(run_as("exit", own_program() + " " + code), std::string("exit ") + code);
    }
}

TEST(process, has_the_standard_streams_and_the_current_directory) {
    write_file("input", "a line\n");
    int saved[2] = {dup(0), dup(2)};
    int input = open("input", O_RDONLY);
    int error = open("error", O_CREAT | O_TRUNC | O_WRONLY, 0600);
    dup2(input, 0);
    dup2(error, 2);
    close(input);
    close(error);
    std::string result = run_as("copy", own_program());
    dup2(saved[0], 0);
    dup2(saved[1], 2);
    close(saved[0]);
    close(saved[1]);
    EXPECT_EQ(result, "a line\nexit 0");
    FILE *written = open_text_file("error", "r");
    char line[20];
    EXPECT_STREQ(fgets(line, sizeof line, written), "a line\n");
    fclose(written);
    EXPECT_EQ(run_as("create", own_program() + " created"), "exit 0");
    EXPECT_TRUE(is_file("C:\\qvl_test\\d\\created"));
}

TEST(process, stays_suspended_until_resumed) {
    child started = start_child_as("create", own_program() + " resumed", CREATE_SUSPENDED);
    ASSERT_TRUE(started.started);
    DWORD code = 0;
    pause_for(200);
    EXPECT_EQ(WaitForSingleObject(started.process.hProcess, 0), WAIT_TIMEOUT);
    EXPECT_TRUE(GetExitCodeProcess(started.process.hProcess, &code));
    EXPECT_EQ(code, DWORD(STILL_ACTIVE));
    EXPECT_FALSE(is_file("resumed"));
    EXPECT_EQ(ResumeThread(started.process.hThread), 1u);
    EXPECT_EQ(WaitForSingleObject(started.process.hProcess, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(started.process.hProcess, 0), WAIT_OBJECT_0);
    EXPECT_EQ(end_of(started), 0u);
    EXPECT_TRUE(is_file("resumed"));
}

TEST(process, ends_with_the_code_of_its_termination) {
    for (DWORD flags : {DWORD(0), DWORD(CREATE_SUSPENDED)}) {
        for (UINT code : {0u, 259u, 0xFFFFFFFFu}) {
            child started = start_child_as("sleep", own_program(), flags);
            ASSERT_TRUE(started.started);
            EXPECT_TRUE(TerminateProcess(started.process.hProcess, code));
            EXPECT_EQ(end_of(started), code);
        }
    }
}

TEST(job, kills_on_close_where_its_limits_say_so) {
    static constexpr struct {
        DWORD limits;
        DWORD exit_code;
    } ROWS[] = {
        {JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK | JOB_OBJECT_LIMIT_BREAKAWAY_OK, 0},
        {JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK, 5},
    };
    for (const auto &row : ROWS) {
        HANDLE job = job_with_limits(row.limits);
        child started = start_child_as("sleep", own_program(), CREATE_SUSPENDED);
        ASSERT_TRUE(started.started);
        EXPECT_TRUE(AssignProcessToJobObject(job, started.process.hProcess));
        ResumeThread(started.process.hThread);
        EXPECT_TRUE(CloseHandle(job));
        if (row.exit_code != 0) {
            pause_for(300);
            EXPECT_EQ(WaitForSingleObject(started.process.hProcess, 0), WAIT_TIMEOUT);
            TerminateProcess(started.process.hProcess, row.exit_code);
        }
        EXPECT_EQ(end_of(started), row.exit_code);
    }
}

TEST(job, keeps_the_exit_code_of_a_child_that_has_ended) {
    HANDLE job = job_with_limits(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE);
    child started = start_child_as("exit", own_program() + " 9", CREATE_SUSPENDED);
    ASSERT_TRUE(AssignProcessToJobObject(job, started.process.hProcess));
    ResumeThread(started.process.hThread);
    WaitForSingleObject(started.process.hProcess, INFINITE);
    EXPECT_TRUE(CloseHandle(job));
    HANDLE other = job_with_limits(0);
    EXPECT_FALSE(AssignProcessToJobObject(other, started.process.hProcess));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ACCESS_DENIED));
    CloseHandle(other);
    EXPECT_EQ(end_of(started), 9u);
}

TEST(job, ends_its_child_with_a_killed_parent_and_spares_the_grandchild) {
    child parent = start_child_as("parent", own_program());
    ASSERT_TRUE(parent.started);
    ASSERT_TRUE(comes_true([] { return is_file("child") && is_file("grandchild"); }));
    EXPECT_TRUE(grows("child"));
    EXPECT_TRUE(TerminateProcess(parent.process.hProcess, 1));
    EXPECT_EQ(end_of(parent), 1u);
    EXPECT_TRUE(comes_true([] { return !grows("child"); }));
    EXPECT_TRUE(grows("grandchild"));
    write_file("stop", "");
    EXPECT_TRUE(comes_true([] { return !grows("grandchild"); }));
}

TEST(handles, of_another_kind_or_of_nothing_are_refused) {
    HANDLE job = job_with_limits(0);
    child started = start_child_as("sleep", own_program(), CREATE_SUSPENDED);
    ASSERT_TRUE(started.started);
    DWORD code;
    const auto refused = [](auto result) {
        DWORD error = GetLastError();
        SetLastError(ERROR_SUCCESS);
        return result == 0 && error == ERROR_INVALID_HANDLE;
    };
    SetLastError(ERROR_SUCCESS);
    for (HANDLE handle : {HANDLE(nullptr), reinterpret_cast<HANDLE>(0x1234), job}) {
        EXPECT_TRUE(refused(GetExitCodeProcess(handle, &code)));
        EXPECT_TRUE(refused(ResumeThread(handle) + 1));
        EXPECT_TRUE(refused(TerminateProcess(handle, 1)));
        EXPECT_TRUE(refused(AssignProcessToJobObject(job, handle)));
        if (handle != job) {
            EXPECT_TRUE(refused(WaitForSingleObject(handle, 0) - WAIT_FAILED));
            EXPECT_TRUE(refused(AssignProcessToJobObject(handle, started.process.hProcess)));
            EXPECT_TRUE(refused(CloseHandle(handle)));
        }
    }
    EXPECT_TRUE(refused(GetExitCodeProcess(started.process.hThread, &code)));
    EXPECT_TRUE(refused(ResumeThread(started.process.hProcess) + 1));
    EXPECT_TRUE(TerminateProcess(started.process.hProcess, 3));
    EXPECT_EQ(end_of(started), 3u);
    EXPECT_TRUE(CloseHandle(job));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    EXPECT_TRUE(refused(SetInformationJobObject(nullptr, JobObjectExtendedLimitInformation, &limits, sizeof limits)));
}

} // namespace
