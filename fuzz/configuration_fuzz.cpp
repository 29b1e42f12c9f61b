// A whole start of the launcher, with a disk, a module and a child that are made up: main itself, or what a
// bundle's front end calls in its place. Null bytes part the input into
//     bits (below); launcher.cfg; the launcher's own path, if it is another than the usual ones;
//     CONTAINER_HOME, JVM_HOME and QUORVEL_HOME of the environment; the arguments, a line each
// In all of them but the path the byte 1 stands for a text that no buffer holds, and 2 for more list entries than
// an array has slots; the first two of these count.

#define main launcher_main
#include "launcher/boiler_plate_exe.cpp"
#undef main

#include <cstring>
#include <ctime>

#include "core/banner.h"
#include "core/config_text.h"
#include "fuzz/product_run.h"
#include "platform/environment.h"

namespace {

enum part { BITS, CONFIG, OWN_PATH, HOMES, ARGS = HOMES + 3, PARTS };
std::vector<std::string> parts;

// The bits, byte by byte. Of the last four, no more than seven bits count, so that each can be 0.
enum { HOW, CHILD, EXIT_CODE, MISSING_QUERY, TURNED_QUERY, FAILED_ALLOCATION, BIT_BYTES };
enum how_bit { IN_BUNDLE = 1, IN_JRE = 4, VALUE_GROWS = 8, NO_CONFIG = 16, NO_LOG = 32, NO_TIME = 64, NO_CTIME = 128 };
enum child_bit {
    NO_JOB = 1,
    NOT_CREATED = 2,
    NOT_ASSIGNED = 4,
    ACCESS_DENIED = 8,
    NOT_RESUMED = 16,
    NO_EXIT_CODE = 32,
    LEFT_SUSPENDED = 64
};

constexpr DWORD NO_EXIT_CODE_ERROR = 31;
constexpr size_t LONGEST_PATH = 32766;

// What the launcher has asked of the system so far.
struct {
    int paths_asked;
    std::string last_file;     // the path of the last question that was answered with "file"
    std::string home_to_start; // of the launch mode, when that was asked
    bool created;
    std::string command_line;
    bool assigned, resumed, waited, terminated;
    int processes_closed, threads_closed, jobs_closed;
    DWORD last_error;
} seen;

char job, process, thread; // their addresses are the handles

unsigned bits(int byte) {
    const unsigned value = static_cast<unsigned char>(parts[BITS][static_cast<size_t>(byte)]);
    return byte >= EXIT_CODE ? value % 128 : value;
}

bool how(how_bit bit) {
    return (bits(HOW) & bit) != 0;
}

bool child(child_bit bit) {
    return (bits(CHILD) & bit) != 0;
}

DWORD fail(DWORD error) {
    seen.last_error = error;
    return FALSE;
}

std::string grown(const std::string &text, int *growths) {
    static const std::string long_text(100001, 'x');
    static const std::string many_entries = [] {
        std::string entries;
        for (int i = 0; i <= OPTION_SLOTS; i++) {
            entries += "a=";
        }
        return entries;
    }();
    std::string result;
    for (const char c : text) {
        const bool grows = (c == '\1' || c == '\2') && --*growths >= 0;
        result += grows ? c == '\1' ? long_text : many_entries : std::string(1, c);
    }
    return result;
}

const std::string &own_path() {
    return parts[OWN_PATH];
}

// A view: a string would be lost when the product exits.
std::string_view own_folder() {
    return std::string_view(own_path()).substr(0, own_path().rfind('\\'));
}

std::string bin_folder() {
    return own_folder().ends_with("\\jre\\bin") ? "\\jre\\bin" : "\\bin";
}

std::string own_home() {
    const std::string_view folder = own_folder();
    return std::string(folder.substr(0, folder.size() - (folder.ends_with("\\bin") ? bin_folder().size() : 0)));
}

} // namespace

extern "C" {
time_t __real_time(time_t *now);
char *__real_ctime(const time_t *now);
DWORD __real_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part);

time_t __wrap_time(time_t *now);
char *__wrap_ctime(const time_t *now);
DWORD __wrap_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part);
size_t __wrap__Z21get_environment_valuePKcPcm(const char *name, char *buffer, size_t size);
entry_kind __wrap__Z7kind_ofPKc(const char *path);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);
DWORD __wrap_GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);
DWORD __wrap_GetLastError();
HANDLE __wrap_CreateJobObjectA(LPSECURITY_ATTRIBUTES attributes, LPCSTR name);
BOOL __wrap_SetInformationJobObject(HANDLE handle, JOBOBJECTINFOCLASS info_class, LPVOID info, DWORD size);
BOOL __wrap_CreateProcessA(LPCSTR application, LPSTR command_line, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                           BOOL inherit_handles, DWORD flags, LPVOID environment, LPCSTR directory,
                           LPSTARTUPINFOA start_up, LPPROCESS_INFORMATION information);
BOOL __wrap_AssignProcessToJobObject(HANDLE job_handle, HANDLE handle);
DWORD __wrap_ResumeThread(HANDLE handle);
DWORD __wrap_WaitForSingleObject(HANDLE handle, DWORD milliseconds);
BOOL __wrap_GetExitCodeProcess(HANDLE handle, DWORD *code);
BOOL __wrap_TerminateProcess(HANDLE handle, UINT code);
BOOL __wrap_CloseHandle(HANDLE handle);
BOOL __wrap_SetConsoleCtrlHandler(PHANDLER_ROUTINE handler, BOOL add);

time_t __wrap_time(time_t *now) {
    return in_product() && how(NO_TIME) ? -1 : __real_time(now);
}

char *__wrap_ctime(const time_t *now) {
    return in_product() && how(NO_CTIME) ? nullptr : __real_ctime(now);
}

// As on a system with long paths: the host knows none.
DWORD __wrap_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part) {
    const size_t length = strlen(path);
    if (length <= LONGEST_PATH) {
        return __real_GetFullPathNameA(path, size, buffer, file_part);
    }
    if (length < size) {
        memcpy(buffer, path, length + 1);
    }
    return static_cast<DWORD>(length < size ? length : length + 1);
}

// With VALUE_GROWS another one changes the variable after each question for its length.
size_t __wrap__Z21get_environment_valuePKcPcm(const char *name, char *buffer, size_t size) {
    constexpr const char *NAMES[] = {"CONTAINER_HOME", "JVM_HOME", "QUORVEL_HOME"};
    for (size_t i = 0; i < std::size(NAMES); i++) {
        std::string &value = parts[HOMES + i];
        if (strcmp(name, NAMES[i]) == 0 && !value.empty()) {
            const size_t length = value.size();
            if (length < size) {
                memcpy(buffer, value.c_str(), length + 1);
                return length;
            }
            if (how(VALUE_GROWS) && size == 0) {
                value.resize(length % 3 * length, 'y');
            }
            return length + 1;
        }
    }
    return 0;
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    const unsigned number = static_cast<unsigned>(++seen.paths_asked);
    if (number == bits(MISSING_QUERY) || *path == '\0' || strchr(path, '!') != nullptr || !is_possible_path(path)) {
        return entry_kind::missing;
    }
    if (names_file(path) == (number == bits(TURNED_QUERY))) {
        return entry_kind::directory;
    }
    seen.last_file = path;
    const std::string_view mode = launch_mode == nullptr ? "" : launch_mode;
    const char *home = mode.starts_with("advanced") || mode.starts_with("legacy") ? container_home : jvm_home;
    seen.home_to_start = home == nullptr ? "" : home;
    return entry_kind::file;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode) {
    if (*mode == 'w') {
        return how(NO_LOG) ? nullptr : opened(fopen("/dev/null", mode));
    }
    assert(path == own_home() + "\\launcher.cfg");
    return how(NO_CONFIG) ? nullptr : open_content(parts[CONFIG]);
}

DWORD __wrap_GetModuleFileNameA(HMODULE, LPSTR buffer, DWORD size) {
    assert(own_path().size() < size);
    memcpy(buffer, own_path().c_str(), own_path().size() + 1);
    return static_cast<DWORD>(own_path().size());
}

DWORD __wrap_GetLastError() {
    return seen.last_error;
}

HANDLE __wrap_CreateJobObjectA(LPSECURITY_ATTRIBUTES, LPCSTR name) {
    assert(std::string_view(name).starts_with("pid_"));
    return child(NO_JOB) ? nullptr : &job;
}

BOOL __wrap_SetInformationJobObject(HANDLE handle, JOBOBJECTINFOCLASS, LPVOID info, DWORD size) {
    const auto *limits = static_cast<const JOBOBJECT_EXTENDED_LIMIT_INFORMATION *>(info);
    assert(size == sizeof *limits && limits->BasicLimitInformation.LimitFlags == 0x3800);
    return handle == &job;
}

BOOL __wrap_CreateProcessA(LPCSTR application, LPSTR command_line, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES,
                           BOOL inherit_handles, DWORD flags, LPVOID environment, LPCSTR directory,
                           LPSTARTUPINFOA start_up, LPPROCESS_INFORMATION information) {
    assert(seen.command_line.empty());
    assert(application == nullptr && environment == nullptr && directory == nullptr && !inherit_handles);
    assert(flags == CREATE_SUSPENDED && start_up->cb == sizeof *start_up);
    seen.command_line = command_line;
    if (child(NOT_CREATED)) {
        return static_cast<BOOL>(fail(2));
    }
    seen.created = true;
    *information = {&process, &thread, 4711, 4712};
    return TRUE;
}

BOOL __wrap_AssignProcessToJobObject(HANDLE job_handle, HANDLE handle) {
    assert(seen.created && !seen.resumed && handle == &process);
    assert(launch_mode == nullptr && processedArgCount == 0 && new_mem_val_as_str != nullptr);
    seen.assigned = job_handle == &job && !child(NOT_ASSIGNED);
    return seen.assigned ||
           static_cast<BOOL>(fail(job_handle != nullptr && child(ACCESS_DENIED) ? ERROR_ACCESS_DENIED : 6));
}

DWORD __wrap_ResumeThread(HANDLE handle) {
    assert(handle == &thread && !seen.terminated);
    seen.resumed = !child(NOT_RESUMED);
    return seen.resumed ? 1 : static_cast<DWORD>(-1);
}

DWORD __wrap_WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
    assert(handle == &process && milliseconds == INFINITE && seen.resumed);
    seen.waited = true;
    return WAIT_OBJECT_0;
}

BOOL __wrap_GetExitCodeProcess(HANDLE handle, DWORD *code) {
    assert(handle == &process && seen.waited);
    *code = bits(EXIT_CODE) == 127 ? 0xFFFFFFFF : bits(EXIT_CODE);
    return !child(NO_EXIT_CODE) || static_cast<BOOL>(fail(NO_EXIT_CODE_ERROR));
}

BOOL __wrap_TerminateProcess(HANDLE handle, UINT code) {
    assert(handle == &process && code == 0 && !seen.resumed);
    seen.terminated = true;
    return TRUE;
}

BOOL __wrap_CloseHandle(HANDLE handle) {
    seen.processes_closed += handle == &process;
    seen.threads_closed += handle == &thread;
    seen.jobs_closed += handle == &job;
    return TRUE;
}

BOOL __wrap_SetConsoleCtrlHandler(PHANDLER_ROUTINE handler, BOOL add) {
    assert(add && handler(CTRL_C_EVENT) && handler(CTRL_BREAK_EVENT) && !handler(2));
    assert(seen.command_line.empty());
    return TRUE;
}
}

namespace {

// The lines that may begin so, in the order of a run. Values have no line ends.
constexpr std::string_view TRACED[] = {"WARNING: Problem loading configuration file: ",
                                       "WARNING: LAUNCH_MODE must be one of the following ",
                                       "  ___  _",
                                       " / _ \\| |",
                                       "| (_) |",
                                       " \\__\\_\\",
                                       "Launcher PID = ",
                                       "LAUNCHER CONFIGURATION LOADED",
                                       "   config_path: ",
                                       "INPUT COMMAND:",
                                       "KEY DIRECTORIES:",
                                       "    executable_file_path = ",
                                       "    launcher_home        = ",
                                       "Get CONTAINER_HOME from environment",
                                       "Get JVM_HOME from environment",
                                       "Get QUORVEL_HOME from environment",
                                       "CONTAINER_HOME set using bundle config: ",
                                       "JVM_HOME set using bundle config: ",
                                       "QUORVEL_HOME set using bundle config: ",
                                       "QUOTING WINDOWS ARG DUE TO SPACES:",
                                       "OUTPUT COMMAND:",
                                       "EXECUTING ",
                                       "Windows Java PID = 4711",
                                       "Error: "};

// A line of a block that `title` begins. The command line may have been traced and not used any more.
bool is_in_block(std::string_view title, const std::string &line) {
    const bool is_time = line == "[FAILED TO GET TIMESTAMP]" || (line.size() == 24 && line[13] == ':');
    const bool is_command = title == "OUTPUT COMMAND:" && (line == seen.command_line || bits(FAILED_ALLOCATION) > 0);
    return line.empty() || line.starts_with("   ") || line.starts_with("---") || is_time || is_command;
}

void check_trace(const std::string &trace) {
    const std::string_view *last = TRACED;
    assert(trace.empty() || trace.ends_with('\n') || bits(FAILED_ALLOCATION) > 0);
    for (const std::string &line : lines_of(trace)) {
        const auto *known = std::find_if(last, std::end(TRACED), [&](auto form) { return line.starts_with(form); });
        assert(known != std::end(TRACED) || is_in_block(*last, line));
        last = known != std::end(TRACED) ? known : last;
    }
}

// What is shown and not traced is `message` and stands at the end; the log has the rest.
void check_output(const std::string &message) {
    assert(printed.shown.ends_with(message));
    const std::string trace = printed.shown.substr(0, printed.shown.size() - message.size());
    check_trace(trace);
    assert(JLI_IsTraceLauncher() || trace.empty());
    assert(printed.logged.empty() || printed.logged.starts_with(trace));
}

// The program that Windows takes from a command line.
std::string program_of(const std::string &command_line) {
    const bool is_quoted = command_line[0] == '"';
    return command_line.substr(is_quoted, command_line.find(is_quoted ? '"' : ' ', 1) - is_quoted);
}

DWORD child_status() {
    if (!seen.created || (!seen.assigned && !child(ACCESS_DENIED)) || (!seen.assigned && child(NO_JOB))) {
        return 1;
    }
    if (child(NOT_RESUMED)) {
        return 1;
    }
    return child(NO_EXIT_CODE) ? NO_EXIT_CODE_ERROR : bits(EXIT_CODE) == 127 ? 0xFFFFFFFF : bits(EXIT_CODE);
}

// Returned is the path of the program that was started.
std::string check_child(const std::vector<std::string> &args) {
    const std::string target = program_of(seen.command_line);
    assert(target == seen.last_file && target != own_path());
    assert(target == seen.home_to_start + bin_folder() + own_path().substr(own_folder().size()));
    std::string expected = target.find(' ') == std::string::npos ? target : '"' + target + '"';
    for (size_t i = 1; i < args.size(); i++) {
        expected += ' ' + std::string(args[i].c_str());
    }
    assert(seen.command_line == expected);
    assert(seen.terminated == (seen.created && !seen.resumed) && seen.waited == seen.resumed);
    assert(seen.processes_closed == seen.created && seen.threads_closed == seen.created);
    assert(seen.jobs_closed == !child(NO_JOB) && open_streams() == 0);
    assert(processedArgCount == 0 && non_path_options_count == 0 && container_home == nullptr);
    return target;
}

void check_return(int status, const std::vector<std::string> &args) {
    assert(printed.complained.empty());
    if (seen.command_line.empty()) {
        const std::vector<std::string> lines = lines_of(printed.shown);
        const bool is_refused = !lines.empty() && lines.back().starts_with("Error: invalid command: ");
        assert(status == -1);
        check_output(is_refused ? lines.back() + "\n" : "");
        return;
    }
    const std::string target = check_child(args);
    assert(static_cast<DWORD>(status) == child_status());
    check_output(status == 0 ? "" : "Error: invalid command: " + target + "\n");
}

void check_exit(int status) {
    const std::string_view complaint = printed.complained;
    assert(seen.command_line.empty() || bits(FAILED_ALLOCATION) > 0);
    assert(complaint.empty() || (complaint.ends_with('\n') && complaint.find('\n') == complaint.size() - 1));
    const bool is_refused = complaint.starts_with("Error: text too long (at most 99999 bytes): ") ||
                            complaint.starts_with("Error: too many ") || complaint.ends_with(": failed\n");
    if (status == 1 && complaint.empty()) {
        const std::string message = "Error: java executable path either doesn't exist or is invalid: \"";
        assert(printed.shown == message + own_path() + "\"\n" && seen.paths_asked <= 1 && printed.logged.empty());
        return;
    }
    if (status == 1) {
        assert(is_refused);
    } else if (status == -1) {
        assert(how(NO_LOG) && complaint.starts_with("Error! Could not open log_file_path: "));
    } else {
        assert(status == 0 && how(IN_BUNDLE) && seen.command_line.empty());
        assert(complaint.empty() || complaint.ends_with("\\quorvel_home doesn't exist\n"));
    }
    check_output("");
}

void check_lists() {
    for (int count : {non_path_options_count, allow_vm_properties_count, ignore_properties_count, jvm_options_count,
                      container_options_count}) {
        assert(count >= 0 && count <= OPTION_SLOTS);
    }
    assert(processedArgCount <= ARGUMENT_SLOTS);
}

// A front end that ships inside a bundle. With LEFT_SUSPENDED it only prepares its child.
int start_in_bundle(char **argv, int argc) {
    assign_text(&executable_dir, own_folder());
    os_name = "Windows";
    set_bin_dir();
    load_config_file();
    just_to_add_version_to_binary();
    fall_back_on_bundle();
    assert(*container_home != '\0' && *jvm_home != '\0' && *quorvel_home != '\0');
    if (validate_directories() == FAILURE) {
        return FAILURE;
    }
    const text_ptr target = target_path(own_path().c_str() + own_folder().size() + 1);
    if (!is_file(target.get()) || is_launcher_itself(target.get())) {
        return FAILURE;
    }
    release_text(&container_home);
    argv[0] = processArg(target.get());
    if (!child(LEFT_SUSPENDED)) {
        return invalid_command(target.get(), execute_command(argv[0], argv, argc));
    }
    STARTUPINFOA start_up = {};
    start_up.cb = sizeof start_up;
    PROCESS_INFORMATION information = {};
    const DWORD status = CreateProcessInJob(&job, nullptr, argv[0], nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr,
                                            nullptr, &start_up, &information);
    assert(!seen.resumed && (information.hProcess != nullptr) == (seen.created && status == 0));
    return static_cast<int>(status);
}

void run_launcher(std::vector<std::string> args) {
    std::vector<char *> argv;
    for (std::string &arg : args) {
        argv.push_back(arg.data());
    }
    argv.push_back(nullptr);
    const int argc = static_cast<int>(args.size());
    int status = 0;
    const product_end end = run_product([&] {
        fail_allocation(bits(FAILED_ALLOCATION));
        status = how(IN_BUNDLE) ? start_in_bundle(argv.data(), argc) : launcher_main(argc, argv.data());
    });
    check_lists();
    if (end.by_exit) {
        check_exit(end.status);
    } else if (!how(IN_BUNDLE)) {
        check_return(status, args);
    }
}

void take_input(const uint8_t *data, size_t size) {
    parts = split_input(data, size, PARTS);
    parts[BITS].resize(BIT_BYTES);
    int growths = 2;
    for (size_t i = CONFIG; i < PARTS; i++) {
        if (i != OWN_PATH) {
            parts[i] = grown(parts[i], &growths);
        }
    }
    if (own_path().empty()) {
        parts[OWN_PATH] = how(IN_JRE) ? "C:\\L\\jre\\bin\\java.exe" : "C:\\L\\bin\\java.exe";
    }
    if (how(IN_BUNDLE) && own_path().find('\\') == std::string::npos) {
        parts[OWN_PATH].insert(0, "C:\\");
    }
    parts[OWN_PATH].resize(std::min(parts[OWN_PATH].size(), LONGEST_PATH));
    for (size_t i = OWN_PATH; i < ARGS; i++) {
        std::erase(parts[i], '\n');
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // The host keeps what it has found out about its drives.
    static const bool drives_are_known = [] {
        setenv("QVL_HOST_DRIVE_C", "/tmp", 1);
        free(current_directory());
        return true;
    }();
    assert(drives_are_known);
    seen = {};
    take_input(data, size);
    start_product();
    std::vector<std::string> args = lines_of(parts[ARGS]);
    args.insert(args.begin(), "java");
    run_launcher(args);
    release_product();
    return 0;
}
