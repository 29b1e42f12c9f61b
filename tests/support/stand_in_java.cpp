// Stands in for a Java runtime: as the java.exe of a home it reports how it was started and does
// what its arguments ask for, in their order:
//   env=NAME        reports the variable
//   id              reports its process id
//   line            reports the command line as it arrived
//   stdin           reports what standard input holds
//   spawn=FILE      starts a process of its own that does wait=FILE
//   wait=FILE       writes its process id to FILE and waits to be killed (a minute at most)
//   hold=FILE       writes its process id to FILE and waits until FILE is gone (five minutes at most)
//   run=PROGRAM     starts the program with the arguments that follow, in the folder "run" of its own,
//                   and waits to be killed (a minute at most)
//   interrupt=FILE  creates FILE, waits for Ctrl-C, takes half a second to clean up, removes FILE
//   end=N           ends with that exit code at once, without a report
//   exit=N          ends with that exit code; 0 without
// Every other argument is only reported.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <thread>

#include "tests/support/programs.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

void sleep_for(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// Whoever waits for the file finds it complete.
void write_process_id(const fs::path &file) {
    fs::path unfinished = file;
    unfinished += ".tmp";
    std::ofstream(unfinished) << own_process_id();
    fs::rename(unfinished, file);
}

void wait_for_removal(const fs::path &file) {
    write_process_id(file);
    for (int i = 0; i < 6000 && fs::exists(file); i++) {
        sleep_for(50);
    }
}

bool wait_for_interrupt(const fs::path &file) {
    std::signal(SIGINT, [](int) { interrupted = 1; });
    write_process_id(file);
    for (int i = 0; i < 1200 && !interrupted; i++) {
        sleep_for(50);
    }
    sleep_for(500);
    fs::remove(file);
    return interrupted;
}

} // namespace

int main(int argc, char **argv) {
    std::string report = "program " + to_text(own_file()) + "\n";
    report += "folder  " + to_text(fs::current_path()) + "\n";
    for (int i = 1; i < argc; i++) {
        report += std::string("arg     ") + argv[i] + "\n";
    }
    uint32_t exit_code = 0;
    for (int i = 1; i < argc; i++) {
        const std::string argument = argv[i];
        const size_t sign = argument.find('=');
        const std::string order = argument.substr(0, sign);
        const std::string value = sign == std::string::npos ? "" : argument.substr(sign + 1);
        if (order == "env") {
            const char *text = std::getenv(value.c_str());
            report += "env     " + value + (text ? std::string("=") + text : " is unset") + "\n";
        } else if (order == "line") {
            report += "line    " + own_command_line() + "\n";
        } else if (order == "stdin") {
            report += "stdin   " + std::string{std::istreambuf_iterator<char>(std::cin), {}};
        } else if (order == "spawn") {
            start({own_file(), {"wait=" + value}, to_path(value).parent_path()});
        } else if (order == "wait") {
            write_process_id(to_path(value));
            sleep_for(60000);
        } else if (order == "hold") {
            wait_for_removal(to_path(value));
        } else if (order == "run") {
            start({to_path(value), {argv + i + 1, argv + argc}, fs::current_path() / "run"});
            sleep_for(60000);
        } else if (order == "interrupt") {
            if (!wait_for_interrupt(to_path(value))) {
                return 1;
            }
        } else if (order == "id") {
            report += "id      " + std::to_string(own_process_id()) + "\n";
        } else if (order == "end") {
            return static_cast<int>(std::stoul(value));
        } else if (order == "exit") {
            exit_code = static_cast<uint32_t>(std::stoul(value));
        }
    }
    std::fwrite(report.data(), 1, report.size(), stdout);
    return static_cast<int>(exit_code);
}
