#include "tests/support/world.h"

#include <cstdlib>
#include <regex>

#include "platform/system_error.h"

static const std::regex CHILD_ID(R"(Windows Java PID = \d+\n)");

void put_program(const std::string &built, const std::string &windows_path) {
    const fs::path target = on_disk(windows_path);
    fs::create_directories(target.parent_path());
    fs::remove(target);
    fs::copy_file(own_file().parent_path() / built, target);
}

void configure(const std::string &text) {
    put_file("C:\\L\\launcher.cfg", here(text));
}

void launcher::SetUp() {
    make_disk();
    put_launcher(LAUNCHER);
    put_java("C:\\C\\bin\\java.exe");
    put_java(JAVA);
    configure("LAUNCH_MODE=ri\nJVM_HOME=C:\\J\n");
    put_file("C:\\Q\\quorvel.jar", "");
    put_folder("C:\\work");
    put_folder("C:\\empty");
    for (const char *name : {"CONTAINER_HOME", "JVM_HOME", "QUORVEL_HOME"}) {
        set_environment(name, "");
    }
}

uint32_t start_launcher(const std::string &windows_path, const texts &arguments, const manner &how) {
    const uint32_t process_id = start({on_disk(windows_path), arguments, on_disk("C:\\work"), how});
    EXPECT_NE(process_id, 0u) << windows_path;
    return process_id;
}

outcome end_of_launcher(uint32_t process_id) {
    const uint32_t status = process_id == 0 ? 0 : wait_for_end(process_id);
    return {status, read_file(on_disk("C:\\work\\out")), read_file(on_disk("C:\\work\\err")), process_id};
}

// Wine fails one start in some thousand, and the launcher's own of its child is no exception: such a
// start may be tried again.
static bool is_failure_of_wine(const outcome &result) {
    return on_windows && result.status == 1 && result.output.find("program ") == std::string::npos &&
           (result.errors.empty() || result.errors.find("(error 1359)") != std::string::npos);
}

outcome run_launcher(const std::string &windows_path, const texts &arguments, const manner &how) {
    const auto run_once = [&] { return end_of_launcher(start_launcher(windows_path, arguments, how)); };
    const outcome result = run_once();
    return is_failure_of_wine(result) ? run_once() : result;
}

std::string report(const std::string &windows_path, const texts &arguments) {
    std::string text = "program " + to_text(on_disk(windows_path)) + "\nfolder  " + to_text(on_disk("C:\\work")) + "\n";
    for (const std::string &argument : arguments) {
        text += "arg     " + argument + "\n";
    }
    return text;
}

std::string invalid_command(const std::string &target) {
    return here("Error: invalid command: " + target + "\n");
}

std::string could_not_start(const std::string &target, uint32_t error) {
    char *words = system_error_text(error, here(target).c_str());
    const std::string line = here("Error: could not start " + target + ": ") + words + "\n";
    std::free(words);
    return line;
}

uint32_t process_id_in(const std::string &windows_path) {
    const std::string text = read_file(on_disk(windows_path));
    return text.empty() ? 0 : static_cast<uint32_t>(std::stoul(text));
}

std::string without_child_id(const std::string &trace) {
    return std::regex_replace(trace, CHILD_ID, "");
}

std::string after_banner(const outcome &result) {
    static const std::regex form(R"((WARNING: LAUNCH_MODE .+\n)?(.+\n){4}\n)"
                                 R"(\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\nLauncher PID = (\d+)\n\n)");
    const size_t end = std::min(result.output.find("LAUNCHER CONFIGURATION LOADED\n"), result.output.size());
    const std::string head = result.output.substr(0, end);
    std::smatch match;
    EXPECT_TRUE(std::regex_match(head, match, form)) << result.output << result.errors;
    EXPECT_EQ(match.str(3), std::to_string(result.process_id));
    return result.output.substr(end);
}
