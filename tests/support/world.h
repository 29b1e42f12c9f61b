#ifndef TESTS_SUPPORT_WORLD_H
#define TESTS_SUPPORT_WORLD_H

// A disk made anew for each test, with the launcher in its place and stand-ins for the runtimes:
//   C:\L\bin\java.exe   the launcher       C:\C\bin\java.exe, C:\J\bin\java.exe   stand-ins
//   C:\Q\quorvel.jar    the agent          C:\work, C:\empty                      empty folders

#include <gtest/gtest.h>

#include "tests/support/programs.h"

struct outcome {
    uint32_t status;
    std::string output, errors; // with LF alone
    uint32_t process_id;
};

class launcher : public testing::Test {
protected:
    void SetUp() override;
};

void put_launcher(const std::string &windows_path);
void put_java(const std::string &windows_path);

// Starts the program in C:\work.
uint32_t start_launcher(const std::string &windows_path, const std::vector<std::string> &arguments);
outcome run_launcher(const std::string &windows_path, const std::vector<std::string> &arguments);

// What the stand-in at this path reports when it is started in C:\work with these arguments.
std::string report(const std::string &windows_path, const std::vector<std::string> &arguments);

// Checks banner, time and process id at the start of a trace and returns what follows them.
std::string after_banner(const outcome &result);

#endif
