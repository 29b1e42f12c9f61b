#include "tests/rewriting/engine.h"

#include <cstdlib>
#include <list>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "platform/windows_services.h"

namespace {

// The opposite of here().
std::string there(std::string text) {
    const std::string folder = on_disk("C:\\").string();
    for (size_t at = 0; on_windows && (at = text.find(folder, at)) != std::string::npos;) {
        text.replace(at, folder.size(), "C:\\");
    }
    return text;
}

void forget_configuration() {
    is_native_invocation = 1; // the reset is for no other
    reset_jlp_for_native_invocation();
    for (char **text : {&rule_file, &rule_file_arg, &quorvel_properties_file, &quorvel_properties_arg,
                        &quorvel_library_path, &allow_vm_properties_option}) {
        release_text(text);
    }
    release_entries(non_path_options_array, &non_path_options_count);
    release_entries(allow_vm_properties_array, &allow_vm_properties_count);
    release_entries(ignore_properties_array, &ignore_properties_count);
    release_entries(jvm_options_array, &jvm_options_count);
    release_entries(container_options_array, &container_options_count);
}

} // namespace

void make_homes() {
    static const fs::path tests_folder = fs::current_path();
    fs::current_path(tests_folder); // Windows does not empty the current directory
    make_disk();
    for (const std::string &file :
         split("Q\\module_patch.jar|Q q\\module_patch.jar|Q\\windows-x64\\quorvel.dll|Q2\\windows-i586\\quorvel.dll|"
               "Q2\\quorvel.dll|folder\\module_patch.jar\\x|L\\lib\\a.jar|L\\lib\\b c.jar|L\\a.jar|L\\jre\\x|"
               "other\\a.jar|other\\L\\x|Lx\\a.jar|C\\lib\\jrt-fs.jar|C\\legal\\java.base\\x|J\\lib\\jrt-fs.jar",
               "|")) {
        put_file("C:\\" + file, "");
    }
}

texts split(const std::string &text, const std::string &separator) {
    texts parts;
    for (size_t start = 0, end = 0; end != std::string::npos; start = end + separator.size()) {
        end = text.find(separator, start);
        parts.push_back(text.substr(start, end - start));
    }
    return parts;
}

std::vector<texts> rows_of(const std::string &table) {
    std::vector<texts> rows;
    for (const std::string &line : split(table, "\n")) {
        for (const std::string &row : split(line, " & ")) {
            rows.push_back(split(row, "->"));
            for (std::string &column : rows.back()) {
                column = trimmed(column);
            }
        }
    }
    std::erase(rows, texts{""});
    return rows;
}

void start(const std::string &how, const std::string &config) {
    const texts words = split(how, " ");
    const std::string homes = "CONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\nQUORVEL_HOME=C:\\Q\n";
    put_file("C:\\L\\launcher.cfg", here(homes + config + "\nLAUNCH_MODE=" + words[0] + '\n'));
    forget_configuration();
    assign_text(&launcher_home, here("C:\\L"));
    is_native_invocation = words[0] == "native";
    load_config_file();
    is_host_java_9_plus = words[1] == "9";
    is_guest_java_9_plus = words[2] == "9";
}

void rewrite(const std::string &args) {
    texts entries = split(here(args), "|");
    std::vector<char *> argv;
    for (std::string &entry : entries) {
        argv.push_back(entry.data());
    }
    parse_arguments(args.empty() ? 0 : static_cast<int>(argv.size()), argv.data());
}

void place_each(const std::string &args) {
    int flags[4] = {};
    for (const std::string &arg : split(here(args), "|")) {
        process_single_arg(arg.c_str(), lhs, &lhs_count, rhs, &rhs_count, &flags[0], &flags[1], &flags[2], &flags[3]);
    }
}

std::string result() {
    std::string text;
    for (int i = 0; i < lhs_count + rhs_count; i++) {
        text += i == lhs_count ? " -> " : i == 0 ? "" : "|";
        text += i < lhs_count ? lhs[i] : rhs[i - lhs_count];
    }
    return there(rhs_count == 0 ? text + " -> " : text);
}

void set_variable(const std::string &name, const std::string &value) {
    static std::list<std::string> kept;
    const bool removed = value.empty() && !on_windows; // there "NAME=" removes, here "NAME"
    kept.push_back(removed ? name : name + '=' + here(value));
    putenv(kept.back().data());
    SetEnvironmentVariableA(name.c_str(), value.empty() ? nullptr : here(value).c_str());
}

std::string child_variable(const std::string &name) {
    std::string value(100000, '\0');
    value.resize(GetEnvironmentVariableA(name.c_str(), value.data(), 100000));
    const bool is_set = GetEnvironmentVariableA(name.c_str(), nullptr, 0) != 0;
    return is_set ? there(value) : "(unset)";
}
