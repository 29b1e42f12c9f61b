#include "tests/platform/children.h"

#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "platform/received_start.h"

PROCESS_INFORMATION start_command(std::string command_line, DWORD flags) {
    STARTUPINFOA start_up = {};
    start_up.cb = sizeof start_up;
    PROCESS_INFORMATION process = {};
    // Under load Wine fails one start in some thousand.
    for (int tries = 0; tries < 3 && process.hProcess == nullptr; tries++) {
        CreateProcessA(nullptr, command_line.data(), nullptr, nullptr, 0, flags, nullptr, nullptr, &start_up, &process);
    }
    return process;
}

DWORD end_of(const PROCESS_INFORMATION &process) {
    DWORD code = 0;
    EXPECT_EQ(WaitForSingleObject(process.hProcess, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &code));
    EXPECT_TRUE(CloseHandle(process.hThread) && CloseHandle(process.hProcess));
    return code;
}

template <typename starter>
static std::string outcome_of(const starter &start_child, DWORD suspended) {
    fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    const int file = open("output", O_CREAT | O_TRUNC | O_RDWR, 0600);
    dup2(file, STDOUT_FILENO);
    close(file);
    const PROCESS_INFORMATION child = start_child();
    std::string end = "error " + std::to_string(GetLastError());
    if (child.hProcess != nullptr) {
        EXPECT_EQ(ResumeThread(child.hThread), suspended ? 1u : 0u);
        end = "exit " + std::to_string(end_of(child));
    }
    dup2(saved, STDOUT_FILENO);
    close(saved);
    std::istringstream output(read_file("output"));
    std::string result;
    for (std::string line; std::getline(output, line);) {
        if (line.starts_with("arg     ")) {
            result += "[" + line.substr(8) + "]";
        } else if (!line.starts_with("program ") && !line.starts_with("folder ")) {
            result += line + "\n";
        }
    }
    return result + end;
}

std::string run(const std::string &command_line, DWORD flags) {
    return outcome_of([&] { return start_command(command_line, flags); }, flags);
}

std::string run_as_received(const char *command, const char *arguments) {
    const auto start_child = [=] {
        PROCESS_INFORMATION process = {};
        start_as_received(command, arguments, CREATE_SUSPENDED, &process);
        return process;
    };
    return outcome_of(start_child, CREATE_SUSPENDED);
}

table rows(std::initializer_list<std::string> texts, const std::string &tilde) {
    table result;
    for (const std::string &text : texts) {
        const std::string row = replaced(text, "~", tilde);
        const size_t arrow = row.find(" -> ");
        result.emplace_back(row.substr(0, arrow), row.substr(arrow + 4));
    }
    return result;
}

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    make_disk();
    const fs::path folder = on_windows ? fs::path("C:\\qvl_test") : on_disk("C:\\qvl_test");
    fs::remove_all(folder);
    fs::create_directories(folder / "d" / "e");
    fs::copy_file(own_file().parent_path() / "stand_in_java.exe", folder / "prog.exe");
    fs::current_path(folder / "d");
    std::ofstream("g.txt").close();
    const int result = RUN_ALL_TESTS();
    fs::current_path(folder.parent_path());
    fs::remove_all(folder);
    return result;
}
