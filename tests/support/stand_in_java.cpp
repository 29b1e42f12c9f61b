// Stands in for a Java runtime: as the java.exe of a home it reports how it was started and does
// what its arguments ask for, in their order:
//   env=NAME        reports the variable
//   stdin           reports what standard input holds
//   bytes           writes each byte there is to both streams
//   start           reports how it was started
//   handle=N        writes to that handle and reports whether it could
//   no_console      leaves its console
//   hold=FILE       writes its process id to FILE and waits until FILE is gone (five minutes at most)
//   run=PROGRAM     starts the program with the arguments that follow, in the folder "run" of its own,
//                   and does hold=run/starter
//   interrupt=FILE  creates FILE, waits for Ctrl-C, takes half a second to clean up, removes FILE
//   end=N           ends with that exit code at once, without a report
//   exit=N          ends with that exit code; 0 without
// Every other argument is only reported.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include "tests/support/programs.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

// Whoever waits for the file finds it complete.
void write_process_id(const fs::path &file) {
    fs::path unfinished = file;
    unfinished += ".tmp";
    std::ofstream(unfinished) << own_process_id();
    fs::rename(unfinished, file);
}

void hold(const fs::path &file) {
    write_process_id(file);
    comes_true([&] { return !fs::exists(file); }, 5);
}

void wait_for_interrupt(const fs::path &file) {
    std::signal(SIGINT, [](int) { interrupted = 1; });
    write_process_id(file);
    if (comes_true([] { return interrupted != 0; })) {
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        fs::remove(file);
    }
}

} // namespace

int main(int argc, char **argv) {
    std::string report = "program " + to_text(own_file()) + "\nfolder  " + to_text(fs::current_path()) + "\n";
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
        } else if (order == "stdin") {
            report += "stdin   " + std::string{std::istreambuf_iterator<char>(std::cin), {}};
        } else if (order == "bytes") {
            std::string bytes;
            for (int byte = 0; byte < 256; byte++) {
                bytes += static_cast<char>(byte);
            }
            std::fwrite(bytes.data(), 1, bytes.size(), stdout);
            std::fwrite(bytes.data(), 1, bytes.size(), stderr);
        } else if (order == "start") {
            report += "start   " + own_start() + "\n";
        } else if (order == "handle") {
            report += write_to(std::stoul(value), "through the handle") ? "written\n" : "refused\n";
        } else if (order == "no_console") {
            leave_console();
        } else if (order == "hold") {
            hold(to_path(value));
        } else if (order == "run") {
            start({to_path(value), {argv + i + 1, argv + argc}, fs::current_path() / "run"});
            hold(fs::current_path() / "run" / "starter");
        } else if (order == "interrupt") {
            wait_for_interrupt(to_path(value));
        } else if (order == "end") {
            return static_cast<int>(std::stoul(value));
        } else if (order == "exit") {
            exit_code = static_cast<uint32_t>(std::stoul(value));
        }
    }
    std::fwrite(report.data(), 1, report.size(), stdout);
    return static_cast<int>(exit_code);
}
