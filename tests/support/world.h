#ifndef TESTS_SUPPORT_WORLD_H
#define TESTS_SUPPORT_WORLD_H

// A disk made anew for each test, with the launcher in its place and stand-ins for the runtimes:
//   C:\L\bin\java.exe   the launcher       C:\C\bin\java.exe, C:\J\bin\java.exe   stand-ins
//   C:\Q\quorvel.jar    the agent          C:\work, C:\empty                      empty folders
// The launch mode is ri, the JVM home C:\J.

#include <gtest/gtest.h>

#include "tests/support/programs.h"

constexpr const char *LAUNCHER = "C:\\L\\bin\\java.exe";
constexpr const char *JAVA = "C:\\J\\bin\\java.exe"; // what it starts

using texts = std::vector<std::string>;

struct outcome {
    uint32_t status;
    std::string output, errors; // with LF alone
    uint32_t process_id;
};

class launcher : public testing::Test {
protected:
    void SetUp() override;
};

// Puts a program of this build in a place: any, the launcher, a stand-in.
void put_program(const std::string &built, const std::string &windows_path);
inline void put_launcher(const std::string &windows_path) {
    put_program("java.exe", windows_path);
}
inline void put_java(const std::string &windows_path) {
    put_program("stand_in_java.exe", windows_path);
}

// Writes C:\L\launcher.cfg.
void configure(const std::string &text);

// Starts the program in C:\work; end_of_launcher waits for it. run_launcher does both.
uint32_t start_launcher(const std::string &windows_path, const texts &arguments, const manner &how = {});
outcome end_of_launcher(uint32_t process_id);
outcome run_launcher(const std::string &windows_path, const texts &arguments, const manner &how = {});

// What the stand-in at this path reports when it is started with these arguments.
std::string report(const std::string &windows_path, const texts &arguments);

// The line of a launcher whose child did not end with 0.
std::string invalid_command(const std::string &target);

// The line of a transparent launcher that the system gives this error for its child.
std::string could_not_start(const std::string &target, uint32_t error);

// The process id that a stand-in has written to the file; 0 while there is none.
uint32_t process_id_in(const std::string &windows_path);

// The line with the child's process id may follow what the child reports, and differs from start to start.
std::string without_child_id(const std::string &trace);

// Checks banner, time and process id at the start of a trace and returns what follows them.
std::string after_banner(const outcome &result);

#endif
