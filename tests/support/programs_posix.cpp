#include "tests/support/programs.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <malloc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

uint32_t start(const program &what) {
    std::vector<char *> arguments = {const_cast<char *>(what.file.c_str())};
    for (const std::string &argument : what.arguments) {
        arguments.push_back(const_cast<char *>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, what.folder.c_str());
    posix_spawn_file_actions_addopen(&actions, 0, fs::exists(what.folder / "in") ? "in" : "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "out", O_WRONLY | O_CREAT | O_TRUNC, 0666);
    posix_spawn_file_actions_addopen(&actions, 2, "err", O_WRONLY | O_CREAT | O_TRUNC, 0666);
    pid_t id = 0;
    const int failed = posix_spawn(&id, what.file.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failed ? 0 : static_cast<uint32_t>(id);
}

uint32_t wait_for_end(uint32_t process_id) {
    int status = 0;
    waitpid(static_cast<pid_t>(process_id), &status, 0);
    return static_cast<uint32_t>(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
}

void end_by_force(uint32_t process_id) {
    kill(static_cast<pid_t>(process_id), SIGKILL);
}

// A zombie has ended, whether or not somebody has asked for its status.
bool is_running(uint32_t process_id) {
    std::ifstream stat("/proc/" + std::to_string(process_id) + "/stat");
    std::string text;
    std::getline(stat, text);
    return !text.empty() && text[text.rfind(')') + 2] != 'Z';
}

size_t heap_in_use() {
    return mallinfo2().uordblks;
}

void set_environment(const std::string &name, const std::string &value) {
    value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
}

fs::path own_file() {
    return fs::read_symlink("/proc/self/exe");
}

std::string own_start() {
    std::string numbers = "descriptors";
    for (int number = 0; number < 100; number++) {
        numbers += fcntl(number, F_GETFD) < 0 ? "" : " " + std::to_string(number);
    }
    return numbers;
}

uintptr_t handle_of(FILE *file) {
    return static_cast<uintptr_t>(fileno(file));
}

pipe_ends make_pipe() {
    int ends[2] = {-1, -1};
    return pipe(ends) == 0 ? pipe_ends{static_cast<uintptr_t>(ends[0]), static_cast<uintptr_t>(ends[1])} : pipe_ends{};
}

bool write_to(uintptr_t handle, const std::string &text) {
    return write(static_cast<int>(handle), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

std::string read_and_close(const pipe_ends &pipe) {
    close(static_cast<int>(pipe.writer));
    std::string text(100, ' ');
    text.resize(static_cast<size_t>(std::max<ssize_t>(0, read(static_cast<int>(pipe.reader), text.data(), 100))));
    close(static_cast<int>(pipe.reader));
    return text;
}

void leave_console() {}
