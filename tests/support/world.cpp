#include "tests/support/world.h"

#include <regex>

namespace {

void put_program(const char *built, const std::string &windows_path) {
    const fs::path target = on_disk(windows_path);
    fs::create_directories(target.parent_path());
    fs::copy_file(own_file().parent_path() / built, target);
}

} // namespace

void put_launcher(const std::string &windows_path) {
    put_program("java.exe", windows_path);
}

void put_java(const std::string &windows_path) {
    put_program("stand_in_java.exe", windows_path);
}

void launcher::SetUp() {
    make_disk();
    put_launcher("C:\\L\\bin\\java.exe");
    put_java("C:\\C\\bin\\java.exe");
    put_java("C:\\J\\bin\\java.exe");
    put_file("C:\\Q\\quorvel.jar", "");
    put_folder("C:\\work");
    put_folder("C:\\empty");
    for (const char *name : {"CONTAINER_HOME", "JVM_HOME", "QUORVEL_HOME"}) {
        set_environment(name, "");
    }
}

uint32_t start_launcher(const std::string &windows_path, const std::vector<std::string> &arguments) {
    return start({on_disk(windows_path), arguments, on_disk("C:\\work")});
}

// Wine fails one start in some thousand, and the launcher's own of its child is no exception.
outcome run_launcher(const std::string &windows_path, const std::vector<std::string> &arguments) {
    outcome result = {};
    for (int tries = 0; tries < (on_windows ? 2 : 1); tries++) {
        result.process_id = start_launcher(windows_path, arguments);
        EXPECT_NE(result.process_id, 0u) << windows_path;
        result.status = result.process_id == 0 ? 0 : wait_for_end(result.process_id);
        result.output = read_file(on_disk("C:\\work\\out"));
        result.errors = read_file(on_disk("C:\\work\\err"));
        if (result.status != 1 || result.output.find("program ") != std::string::npos) {
            break;
        }
    }
    return result;
}

std::string report(const std::string &windows_path, const std::vector<std::string> &arguments) {
    std::string text = "program " + to_text(on_disk(windows_path)) + "\n";
    text += "folder  " + to_text(on_disk("C:\\work")) + "\n";
    for (const std::string &argument : arguments) {
        text += "arg     " + argument + "\n";
    }
    return text;
}

std::string after_banner(const outcome &result) {
    const size_t end = result.output.find("LAUNCHER CONFIGURATION LOADED\n");
    if (end == std::string::npos) {
        ADD_FAILURE() << "no trace in: " << result.output << result.errors;
        return {};
    }
    const std::string head = result.output.substr(0, end);
    const std::regex form(R"((?:WARNING: LAUNCH_MODE .+\n)?(?:.+\n){4}\n\w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\n)"
                          R"(Launcher PID = (\d+)\n\n)");
    std::smatch match;
    EXPECT_TRUE(std::regex_match(head, match, form)) << head;
    EXPECT_EQ(match.str(1), std::to_string(result.process_id));
    return result.output.substr(end);
}
