// A whole start of the launcher, with a disk, a module and a child that are made up: main itself, or what a
// bundle's front end calls in its place. Null bytes part the input into
//     bits (made_up_system.h); launcher.cfg; the launcher's own path, if it is another than the usual ones;
//     CONTAINER_HOME, JVM_HOME and QUORVEL_HOME of the environment; the arguments, a line each
// In all of them but the path the byte 1 stands for a text that no buffer holds, and 2 for more list entries than
// an array has slots; the first two of these count.

#define main launcher_main
#include "launcher/boiler_plate_exe.cpp"
#undef main

#include <algorithm>

#include "core/banner.h"
#include "fuzz/made_up_system.h"
#include "fuzz/product_run.h"

namespace {

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
