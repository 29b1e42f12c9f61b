// Command lines, the environment, and children: held, ended, in jobs.

#include <fstream>
#include <unistd.h>

#include "platform/environment.h"
#include "tests/platform/children.h"

namespace {

void expect_ends(std::initializer_list<std::string> texts) {
    for (const auto &[line, end] : rows(texts, "..\\prog")) {
        EXPECT_EQ(run(line).substr(0, end == "error" ? 5 : std::string::npos), end) << line;
    }
}

TEST(command_line, names_a_program_and_its_arguments) {
    expect_ends({"~ -> exit 0", "~ 1\t2 \t 3 @f ' ' \"\" x  -> [1][2][3][@f][']['][][x]exit 0",
                 R"(~ "a b" c" "d "e f -> [a b][c d][e f]exit 0)", R"(~ " -> []exit 0)",
                 R"(~ a\b a\\b \ \\ \\s\h\ -> [a\b][a\\b][\][\\][\\s\h\]exit 0)",
                 R"(~ a\"b \"r s\" a\\"b c" a\\\"b -> [a"b]["r][s"][a\b c][a\"b]exit 0)",
                 R"(~ "a\" b" "a\\" c "C:\d\" x -> [a" b][a\][c][C:\d" x]exit 0)",
                 R"(~ "a""b c" """x""" e """" f -> [a"b c]["x"][e]["][f]exit 0)",
                 R"(~ "a""" g i a""b c a"""b c""" d -> [a"][g][i][ab][c][a"b c"][d]exit 0)",
                 R"(~ a""""b c "h i""""j k" -> [a"b][c][h i""j k]exit 0)",
                 R"(~ "unfinished \ -> [unfinished \]exit 0)"});
    for (const char *name : {"../p q/x y.exe", "../plain", "../d x.exe", "../a.b"}) {
        fs::create_directories(fs::path(name).parent_path());
        fs::create_hard_link("../prog.exe", name);
    }
    std::ofstream("../plain.exe").close();
    expect_ends({"C:\\qvl_test\\prog.exe\t1 exit=255 -> [1][exit=255]exit 255", R"("C:\qvl_test\prog" 1 -> [1]exit 0)",
                 R"("C:\qvl_test\prog.exe"x" y" z -> [z]exit 0)", R"(C:\qvl_test\p q\x y.exe 1 2 -> [1][2]exit 0)",
                 R"(C:/qvl_test/d/..\p q\x y 1 -> [1]exit 0)", R"("\qvl_test\p q\x y.exe" 1 -> [1]exit 0)",
                 R"(..\plain 1 -> [1]exit 0)", R"(C:\qvl_test\a.b -> exit 0)", R"(C:\qvl_test\d x.exe -> exit 0)",
                 R"(C:\qvl_test\missing.exe 1 -> error 2)", R"("C:\qvl_test\prog.exe 1" -> error 2)",
                 R"(C:\qvl_test\p q\x -> error 2)", " -> error 2", "\"\" -> error", R"(C:\qvl_test\d -> error)",
                 R"(C:\qvl_test\plain.exe -> error)"});
}

TEST(environment, goes_to_children_by_names_without_letter_case_in_any_length) {
    const std::string received = getenv("PATH");
    EXPECT_TRUE(SetEnvironmentVariableA("QVL", "") && SetEnvironmentVariableA("qvL", "a b=c"));
    for (DWORD size : {5, 6}) {
        char buffer[] = "#######";
        EXPECT_EQ(GetEnvironmentVariableA("Qvl", buffer, size), size == 6 ? 5u : 6u);
        EXPECT_STREQ(buffer, size == 6 ? "a b=c" : "#######");
    }
    SetEnvironmentVariableA("Path", std::string(20000, 'v').c_str());
    SetEnvironmentVariableA("path", "changed");
    EXPECT_EQ(run("..\\prog env=QVL env=PATH env=QV"),
              "[env=QVL][env=PATH][env=QV]env     QVL=a b=c\nenv     PATH=changed\n"
              "env     QV is unset\nexit 0");
    EXPECT_TRUE(getenv("QVL") == nullptr && getenv("PATH") == received);
    SetEnvironmentVariableA("PATH", received.c_str());
    std::string longest;
    while (longest.size() < 60000) {
        longest += "大";
    }
    for (const char *value : {longest.c_str(), "größer 大", "", static_cast<const char *>(nullptr)}) {
        EXPECT_TRUE(SetEnvironmentVariableA("QVL", value));
        char *found;
        EXPECT_TRUE(get_environment_value("qvl", &found));
        EXPECT_STREQ(found, value == nullptr || *value == '\0' ? nullptr : value);
        free(found);
        EXPECT_EQ(GetEnvironmentVariableA("qvl", nullptr, 0) == 0, value == nullptr);
    }
}

bool runs_after(int milliseconds, HANDLE process) {
    usleep(static_cast<useconds_t>(milliseconds) * 1000);
    DWORD code = 0;
    return GetExitCodeProcess(process, &code) && code == STILL_ACTIVE;
}

TEST(process, is_held_until_resumed_and_ends_with_a_killing_job_or_its_termination) {
    for (DWORD kill : {DWORD(0), DWORD(JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE)}) {
        HANDLE job = CreateJobObjectA(nullptr, "qvl_platform_test");
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
        limits.BasicLimitInformation.LimitFlags = kill | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK;
        SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
        const PROCESS_INFORMATION child = start_command("..\\prog hold=held", CREATE_SUSPENDED);
        EXPECT_TRUE(AssignProcessToJobObject(job, child.hProcess));
        EXPECT_TRUE(runs_after(200, child.hProcess) && !fs::exists("held"));
        EXPECT_EQ(ResumeThread(child.hThread), 1u);
        ASSERT_TRUE(comes_true([] { return fs::exists("held"); }));
        EXPECT_TRUE(CloseHandle(job));
        if (kill == 0) {
            EXPECT_TRUE(runs_after(200, child.hProcess));
            EXPECT_TRUE(TerminateProcess(child.hProcess, 0xFFFFFFFF));
        }
        EXPECT_EQ(end_of(child), kill == 0 ? 0xFFFFFFFF : 0);
        fs::remove("held");
    }
}

TEST(process, is_refused_by_the_wrong_handle_and_once_it_has_ended) {
    HANDLE job = CreateJobObjectA(nullptr, "qvl_platform_test");
    const PROCESS_INFORMATION child = start_command("..\\prog", CREATE_SUSPENDED);
    DWORD code;
    for (HANDLE handle : {HANDLE(nullptr), reinterpret_cast<HANDLE>(0x1234), job, child.hThread}) {
        EXPECT_FALSE(SetEnvironmentVariableA("a=b", "")); // leaves another error
        EXPECT_FALSE(GetExitCodeProcess(handle, &code));
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_HANDLE));
        EXPECT_FALSE(AssignProcessToJobObject(job, handle) || TerminateProcess(handle, 1));
    }
    EXPECT_FALSE(SetEnvironmentVariableA("", ""));
    EXPECT_FALSE(AssignProcessToJobObject(nullptr, child.hProcess));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_HANDLE));
    EXPECT_EQ(ResumeThread(child.hProcess), DWORD(-1));
    EXPECT_TRUE(TerminateProcess(child.hProcess, 259));
    WaitForSingleObject(child.hProcess, INFINITE);
    EXPECT_FALSE(AssignProcessToJobObject(job, child.hProcess));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_ACCESS_DENIED));
    EXPECT_EQ(end_of(child), 259u);
    EXPECT_TRUE(CloseHandle(job) && !CloseHandle(nullptr));
}

} // namespace
