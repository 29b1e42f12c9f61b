// A whole start of the launcher, with a disk, a module and a child that are made up: main itself, or what a
// bundle's front end calls in its place. The parts of the input are
//     bits of the start and the child, the number of the allocation that fails, the child's exit code; the launcher's
//     own path; what is missing on the disk; what is turned on it; CONTAINER_HOME, JVM_HOME and QUORVEL_HOME of the
//     environment; launcher.cfg; the arguments
// In the environment, launcher.cfg and the first argument the byte 1 stands for a text that no buffer holds, and 2 for
// more list entries than an array has slots; the first of each counts.

#define main launcher_main
#include "launcher/boiler_plate_exe.cpp"
#undef main

#include <algorithm>
#include <sstream>

#include "core/banner.h"
#include "core/state_text.h"
#include "fuzz/made_up_system.h"
#include "fuzz/product_run.h"

namespace {

enum part { BITS, OWN_PATH, MISSING, TURNED, HOMES, CONFIG = HOMES + 3, ARGS };
enum bits_byte { START, FAILED_ALLOCATION, EXIT_CODE, BIT_BYTES };
constexpr int IN_BUNDLE = 64; // of START; the lower ones are the child's

std::vector<std::string> args;
bool is_in_bundle;
size_t failing_allocation; // 0: none

// Views: strings would be lost when the product exits.
std::string_view own_folder() {
    return std::string_view(made_up.own_path).substr(0, made_up.own_path.rfind('\\'));
}

std::string_view bin_folder() {
    for (const std::string_view folder : {"\\jre\\bin", "\\bin"}) {
        if (own_folder().ends_with(folder)) {
            return folder;
        }
    }
    return "";
}

// The first `sign` in the text stands for many texts.
void grow(std::string &text, char sign, const char *repeated, int times) {
    const size_t at = text.find(sign);
    if (at == std::string::npos) {
        return;
    }
    std::string grown;
    for (int i = 0; i < times; i++) {
        grown += repeated;
    }
    text.replace(at, 1, grown);
}

// The lines that may begin so, in the order of a run. Values have no line ends.
constexpr std::string_view TRACED[] = {"WARNING: ",
                                       "  ___  _",
                                       " / _ \\| |",
                                       "| (_) |",
                                       " \\__\\_\\",
                                       "Launcher PID = ",
                                       "LAUNCHER CONFIGURATION LOADED",
                                       "INPUT COMMAND:",
                                       "KEY DIRECTORIES:",
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
    const bool is_time = line.size() == 24 && line[13] == ':';
    const bool is_command = title == "OUTPUT COMMAND:" && (line == made_up.command_line || failing_allocation > 0);
    return line.empty() || line.starts_with("   ") || line.starts_with("---") || is_time || is_command;
}

void check_trace(const std::string &trace) {
    const std::string_view *last = TRACED;
    assert(trace.empty() || trace.ends_with('\n') || failing_allocation > 0);
    std::istringstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        const auto *known = std::find_if(last, std::end(TRACED), [&](auto form) { return line.starts_with(form); });
        assert(known != std::end(TRACED) || is_in_block(*last, line));
        last = known != std::end(TRACED) ? known : last;
    }
}

// What is shown and not traced is `message` and stands at the end; the log has the rest.
void check_output(const std::string &message) {
    assert(product.shown.ends_with(message));
    const std::string trace = product.shown.substr(0, product.shown.size() - message.size());
    check_trace(trace);
    assert(JLI_IsTraceLauncher() || trace.empty());
    assert(world.has_log ? product.logged.starts_with(trace) : product.logged.empty());
}

// Returned is the path of the program that was started.
std::string check_child() {
    const std::string target = world.last_home + made_up.own_path.substr(own_folder().size() - bin_folder().size());
    assert(target == world.last_file && target != made_up.own_path);
    std::string expected = target.find(' ') == std::string::npos ? target : '"' + target + '"';
    for (size_t i = 1; i < args.size(); i++) {
        expected += ' ' + args[i];
    }
    assert(made_up.command_line == expected);
    assert(made_up.state == NO_CHILD || made_up.state == ENDED);
    assert(made_up.open_handles.empty() && product.streams.empty());
    assert(processedArgCount == 0 && non_path_options_count == 0 && container_home == nullptr);
    return target;
}

void check_return(int status) {
    assert(product.complained.empty());
    if (made_up.command_line.empty()) {
        // It is a line of its own: an argument may read the same.
        const size_t refusal_at = ('\n' + product.shown).rfind("\nError: invalid command: ");
        assert(status == -1);
        check_output(refusal_at == std::string::npos ? "" : product.shown.substr(refusal_at));
        return;
    }
    const std::string target = check_child();
    assert(static_cast<DWORD>(status) == made_up.status);
    check_output(status == 0 ? "" : "Error: invalid command: " + target + "\n");
}

void check_exit(int status) {
    const std::string_view complaint = product.complained;
    assert(made_up.command_line.empty() || failing_allocation > 0);
    assert(complaint.empty() || complaint.find('\n') == complaint.size() - 1);
    std::string message;
    if (status == 1 && complaint.empty()) {
        message = "Error: java executable path either doesn't exist or is invalid: \"" + made_up.own_path + "\"\n";
        assert(product.shown == message);
    } else if (status == 1) {
        assert(complaint.starts_with("Error: text too long (at most 99999 bytes): ") ||
               complaint.starts_with("Error: too many ") || complaint.ends_with(": failed\n"));
    } else if (status == -1) {
        assert(complaint.starts_with("Error! Could not open log_file_path: "));
    } else {
        assert(status == 0 && is_in_bundle);
        assert(complaint.empty() || complaint.ends_with("\\quorvel_home doesn't exist\n"));
    }
    check_output(message);
}

// A front end that ships inside a bundle.
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
    const text_ptr target = target_path(made_up.own_path.c_str() + own_folder().size() + 1);
    if (!is_startable(target.get(), nullptr)) {
        return FAILURE;
    }
    release_text(&container_home);
    argv[0] = processArg(target.get());
    const int status = execute_command(argv[0], argv, argc);
    return status == 0 ? status : invalid_command(target.get(), status);
}

void take_input(const uint8_t *data, size_t size) {
    std::vector<std::string> parts = split_input(data, size, ARGS);
    for (size_t i = OWN_PATH; i < parts.size(); i++) {
        if (i != CONFIG) {
            std::erase(parts[i], '\n');
        }
        if (i >= HOMES && i <= ARGS) {
            grow(parts[i], '\1', "x", 100001);
            grow(parts[i], '\2', "a=", OPTION_SLOTS + 1);
        }
    }
    parts[BITS].resize(BIT_BYTES);
    is_in_bundle = (parts[BITS][START] & IN_BUNDLE) != 0;
    failing_allocation = static_cast<size_t>(parts[BITS][FAILED_ALLOCATION] & 127);
    made_up = {};
    made_up.child_bits = static_cast<unsigned>(parts[BITS][START]);
    made_up.exit_code = static_cast<DWORD>(parts[BITS][EXIT_CODE]);
    const bool is_usual = is_in_bundle ? parts[OWN_PATH].find('\\') == std::string::npos : parts[OWN_PATH].empty();
    made_up.own_path = is_usual ? "C:\\L\\bin\\java.exe" : parts[OWN_PATH].substr(0, LONGEST_PATH);
    world = {};
    world.missing = parts[MISSING];
    world.turned = parts[TURNED];
    world.config = parts[CONFIG];
    world.variables = {
        {"CONTAINER_HOME", parts[HOMES]}, {"JVM_HOME", parts[HOMES + 1]}, {"QUORVEL_HOME", parts[HOMES + 2]}};
    args.assign(parts.begin() + ARGS, parts.end());
    args.insert(args.begin(), "java");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    take_input(data, size);
    std::vector<char *> argv = pointers_to(args);
    const int argc = static_cast<int>(args.size());
    int status = 0;
    const auto start = [&] {
        product.allocations_to_failure = failing_allocation;
        status = is_in_bundle ? start_in_bundle(argv.data(), argc) : launcher_main(argc, argv.data());
    };
    const auto check = [&] {
        const std::string home(own_folder().substr(0, own_folder().size() - bin_folder().size()));
        assert(world.last_read.empty() || world.last_read == home + "\\launcher.cfg");
        if (product.by_exit) {
            check_exit(product.status);
        } else {
            check_return(status);
        }
    };
    run_product(start, check);
    return 0;
}
