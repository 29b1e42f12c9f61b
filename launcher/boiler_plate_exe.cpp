// The launcher's executable: finds its place and its configuration, settles and checks the homes,
// and runs the java.exe of the chosen home in its stead.

#include <cstdio>
#include <cstdlib>

#include "core/child_arguments.h"
#include "core/child_process.h"
#include "core/configuration.h"
#include "core/home_directories.h"
#include "core/home_faults.h"
#include "core/jlp_vars.h"
#include "core/processed_args.h"
#include "core/start_up.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "platform/command_line.h"

namespace {

void trace_input_command(int argc, char **argv) {
    if (JLI_IsTraceLauncher()) {
        JLI_TraceLauncher("INPUT COMMAND:\n"
                          "--------------\n"
                          "   %s\n\n",
                          joined_arguments(argv, argc).text.get());
    }
}

void trace_key_directories(const char *executable_file_path) {
    JLI_TraceLauncher("KEY DIRECTORIES:\n"
                      "--------------\n"
                      "    executable_file_path = %s\n"
                      "    executable_dir       = %s\n"
                      "    bin_dir              = %s\n"
                      "    launcher_home        = %s\n\n",
                      executable_file_path, executable_dir, bin_dir, launcher_home);
}

text_ptr own_line() {
    text_ptr line(own_arguments_text());
    if (line == nullptr) {
        end_without_memory("malloc");
    }
    return line;
}

// Not traced; standard output is the program's where the start is transparent.
int invalid_command(const char *target, int status) {
    print_text(is_transparent ? stderr : stdout, invalid_command_text(target));
    return status;
}

} // namespace

int main(int argc, char **argv) {
    setbuf(stdout, nullptr);

    text_ptr executable_file_path(get_executable_file_path());
    const std::string_view path(executable_file_path.get());
    const size_t last_separator = path.rfind(file_separator);
    text_ptr executable_name = copy_text(path.data() + last_separator + 1);
    assign_text(&executable_dir, {path.data(), last_separator});
    if (set_bin_dir() == FAILURE) {
        return FAILURE;
    }

    load_config_file();
    trace_input_command(argc, argv);
    trace_key_directories(executable_file_path.get());
    executable_file_path.reset();

    fall_back_on_env_vars();
    release_text(&executable_dir);
    if (validate_directories() == FAILURE) {
        return FAILURE;
    }

    const text_ptr target = target_path(executable_name.get());
    executable_name.reset();
    if (!is_startable(target.get(), nullptr)) {
        return invalid_command(target.get(), FAILURE);
    }
    const char *command = processArg(target.get());
    const text_ptr line = is_transparent ? own_line() : nullptr;
    const child_arguments arguments = arguments_for_child({argc - 1, argv + 1, line.get()});
    release_text(&container_home);
    release_text(&jvm_home);

    leave_interrupts_to_child();
    const int status = run_child(command, arguments);
    release_entries(processedArg, &processedArgCount);
    return status == 0 || is_transparent ? status : invalid_command(target.get(), status);
}
