// Paths, text files, command lines, the environment, and children: started as this process was, held, ended, in jobs.

#include <cerrno>
#include <fstream>
#include <memory>
#include <unistd.h>

#include "platform/command_line.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/system_error.h"
#include "tests/platform/children.h"

namespace {

TEST(full_path, is_made_of_the_text_alone) {
    const table paths =
        rows({"a\\ -> ~\\a\\", "a//b/\\ -> ~\\a\\b\\", ".\\ -> ~\\", ".\\a\\.\\b -> ~\\a\\b", "a\\. -> ~\\a",
              "a\\.. -> ~", "a\\b\\..\\..\\c -> ~\\c", ".. -> C:\\qvl_test", "..\\..\\..\\x -> C:\\x", " a -> ~\\ a",
              "ab:c -> ~\\ab:c", "\xC3\xA9\xE6\x97\xA5 -> ~\\\xC3\xA9\xE6\x97\xA5",
              // Dots and blanks at the end of a component and of the path.
              "a. . . -> ~\\a", "a. \\b  -> ~\\a. \\b", "a.\\b -> ~\\a\\b", "a\\... -> ~\\a\\", "a\\  -> ~\\a\\",
              "C:\\a\\..  -> C:\\a\\", "C:\\  -> C:\\", "C:  -> ~\\", ".a -> ~\\.a", "C:\\.. \\x -> C:\\.. \\x",
              // Drives and roots.
              "c:\\A\\b -> c:\\A\\b", "C:\\\\a -> C:\\a", "C:\\a\\..\\..\\b -> C:\\b", "C:\\. -> C:\\", "C: -> ~\\",
              "C:. -> ~", "c:.. -> C:\\qvl_test", "c:foo -> ~\\foo", "C:a\\ -> ~\\a\\", "q: -> q:\\",
              "Q:..\\foo -> Q:\\foo", "\\ -> C:\\", "\\..\\x -> C:\\x",
              // Shares and nothing.
              "\\\\s\\h -> \\\\s\\h", "//s/h/x//y -> \\\\s\\h\\x\\y", "\\\\s\\h\\..\\..\\x -> \\\\s\\h\\x",
              "\\\\s\\h\\.. -> \\\\s\\h\\", "\\\\s.\\h. -> \\\\s.\\h.", "\\\\?\\C:\\x\\..\\y -> \\\\?\\C:\\y", " -> ",
              "   -> "},
             "C:\\qvl_test\\d");
    for (const auto &[path, expected] : paths) {
        char buffer[300];
        const DWORD length = GetFullPathNameA(path.c_str(), sizeof buffer, buffer, nullptr);
        EXPECT_EQ(std::string(buffer, length), expected) << path;
    }
}

TEST(kind_of, resolves_by_text_and_forgives_one_separator) {
    const std::pair<entry_kind, std::vector<std::string>> table[] = {
        {entry_kind::missing,
         {"", " ", "C:", "\\\\", "e\\\\", "e/\\", "e\\..\\\\", "g.txt\\\\", "g.txt\\x", "g.txt:", "missing\\.", "e\\*",
          "\\\\s\\h\\x", "1:", std::string(5000, 'x')}},
        {entry_kind::directory,
         {"C:/", "C:\\\\", "\\", "C:e", ".", "./", "..", "e\\", "e \\", "g.txt\\..", "missing\\..", "c:\\qvl_test",
          "..\\..\\..\\qvl_test", "C:\\\\qvl_test\\\\d//e"}},
        {entry_kind::file,
         {"g.txt", "g.txt\\", "g.txt/", "g.txt. .", "missing\\..\\g.txt", "C:g.txt", "C:\\..\\qvl_test\\prog.exe"}}};
    for (const auto &[kind, paths] : table) {
        for (const std::string &path : paths) {
            EXPECT_EQ(kind_of(path.c_str()), kind) << path;
        }
    }
}

TEST(text_file, reads_as_the_windows_runtime) {
    for (const auto &[bytes, text] :
         rows({" -> ", "a\r\nb -> a\nb", "a\rb\r\rc -> a\rb\r\rc", "a\r\r\nb -> a\r\nb", "\n\r\n\r -> \n\n\r",
               "\r -> \r", "a\x1A\r\nb -> a", "\x1A -> ", "a\r\x1A\n -> a\r", "\xFF\r\n -> \xFF\n", "~x\r\ny -> ~x\ny",
               "~xx\r\ny -> ~xx\ny", "~\r\r\r\ny\r -> ~\r\r\ny\r", "~x\ry -> ~x\ry", "~x\r -> ~x\r",
               "~x\r\x1Ay -> ~x\r", "~~\x1Ay -> ~~"},
              std::string(4094, 'x'))) {
        std::ofstream("t", std::ios::binary) << bytes;
        for (size_t block : {1u, 2u, 3u, 4096u}) {
            FILE *file = open_text_file("C:t", "r");
            char buffer[4096];
            setvbuf(file, buffer, _IOFBF, block);
            std::string read;
            for (int c; (c = getc(file)) != EOF;) {
                read += static_cast<char>(c);
            }
            EXPECT_EQ(read, text) << testing::PrintToString(bytes) << " by " << block;
            EXPECT_TRUE(feof(file) && getc(file) == EOF && !ferror(file));
            fclose(file);
        }
    }
}

TEST(text_file, cannot_be_opened) {
    for (const char *path : {"", "missing\\x", "1:\\x", "e", ".."}) {
        for (const char *mode : {"r", "w+"}) {
            errno = 0;
            EXPECT_EQ(open_text_file(path, mode), nullptr) << path;
            EXPECT_EQ(errno, is_directory(path) ? EACCES : ENOENT) << path;
        }
    }
}

std::string as_written(const std::string &argument) {
    std::string text(2 * argument.size() + QUOTING_BYTES, '#');
    text.resize(static_cast<size_t>(quote_argument(argument.c_str(), text.data()) - text.data()));
    return text;
}

TEST(command_line, is_split_and_made_of_quoted_arguments) {
    for (const auto &[text, arguments] :
         rows({" \t  -> ", "1\t2 \t 3 @f ' ' \"\" x  -> [1][2][3][@f][']['][][x]",
               R"("a b" c" "d "e f -> [a b][c d][e f])", R"(a\b a\\b \ \\ \\s\h\ -> [a\b][a\\b][\][\\][\\s\h\])",
               R"(a\"b \"r s\" a\\"b c" a\\\"b -> [a"b]["r][s"][a\b c][a\"b])",
               R"("a\" b" "a\\" c "C:\d\" x -> [a" b][a\][c][C:\d" x])",
               R"("a""b c" """x""" e """" f -> [a"b c]["x"][e]["][f])",
               R"(g a""b c a"""b c""" d -> [g][ab][c][a"b c"][d])", R"("unfinished \ -> [unfinished \])"},
              "")) {
        EXPECT_EQ(run("..\\prog " + text), arguments + "exit 0") << text;
    }
    for (const auto &[argument, text] : rows({R"( -> "")", R"(a\b\ -> a\b\)", R"(a b\ -> "a b\\")",
                                              R"(\\" -> "\\\\\"")", R"(~\" -> "~\\\"")", R"(* -> "*")", R"(? -> "?")"},
                                             "\t")) {
        EXPECT_EQ(as_written(argument), text);
    }
    for (const auto &[line, rest] :
         rows({"a -> ", " a ->  a", "a~b -> ~b", R"("a b"c" "d e ->  e)", R"(a\"b c" d ->  d)"}, "\t")) {
        EXPECT_EQ(end_of_program_name(line.c_str()), rest);
    }
}

TEST(received_start, keeps_what_is_open_and_says_why_there_is_no_child) {
    const std::string much(32766 - sizeof "..\\prog.exe", 'x');
    EXPECT_EQ(run_as_received("..\\prog.exe", (" " + much).c_str()), "[" + much + "]exit 0");
    EXPECT_EQ(run_as_received("..\\prog.exe", (" x" + much).c_str()), "error 206");
    EXPECT_EQ(run_as_received("..\\missing.exe", ""), "error 2");
    FILE *log = open_text_file("log", "w+");
    const std::string order = "handle=" + std::to_string(handle_of(log));
    EXPECT_EQ(run_as_received("..\\prog.exe", (" " + order).c_str()), "[" + order + "]refused\nexit 0");
    fclose(log);
    for (const DWORD error : {5, 999999}) {
        const std::unique_ptr<char, decltype(&free)> text(system_error_text(error, "it"), free);
        const std::string words = text.get(), number = "error " + std::to_string(error);
        EXPECT_TRUE(error == 5 ? words.ends_with("d (" + number + ")") : words == number) << words;
    }
}

TEST(environment, goes_to_children_by_names_without_letter_case_in_any_length) {
    const std::string received = getenv("PATH");
    SetEnvironmentVariableA("Path", std::string(20000, 'v').c_str());
    EXPECT_TRUE(SetEnvironmentVariableA("path", "changed"));
    EXPECT_TRUE(SetEnvironmentVariableA("QVL", "") && SetEnvironmentVariableA("qvL", "a b=c"));
    EXPECT_EQ(run("..\\prog env=QVL env=PATH env=QV"), "[env=QVL][env=PATH][env=QV]env     QVL=a b=c\n"
                                                       "env     PATH=changed\nenv     QV is unset\nexit 0");
    EXPECT_TRUE(getenv("QVL") == nullptr && getenv("PATH") == received);
    SetEnvironmentVariableA("PATH", received.c_str());
    char buffer[] = "#######";
    EXPECT_EQ(GetEnvironmentVariableA("Qvl", buffer, 5), 6u);
    EXPECT_EQ(GetEnvironmentVariableA("Qvl", buffer, 6), 5u);
    EXPECT_STREQ(buffer, "a b=c");
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
