#include "tests/rewriting/engine.h"

#include <cstdlib>
#include <list>
#include <sstream>

#include "core/state_text.h"
#include "jli/text.h"
#include "platform/windows_services.h"
#include "tests/support/state.h"

namespace {

std::string *caught = nullptr;

// The opposite of here().
std::string there(const std::string &text) {
    return on_windows ? replaced(text, on_disk("C:\\").string(), "C:\\") : text;
}

std::string joined(char *const *entries, int count) {
    std::string text;
    for (int i = 0; i < count; i++) {
        text += (i > 0 ? "|" : "") + std::string(entries[i]);
    }
    return there(text);
}

} // namespace

texts split_at(const std::string &text, const std::string &separator) {
    texts parts;
    for (size_t start = 0, end = 0; end != std::string::npos; start = end + separator.size()) {
        end = text.find(separator, start);
        parts.push_back(text.substr(start, end - start));
    }
    return parts;
}

std::vector<texts> rows_of(const std::string &table) {
    std::vector<texts> rows;
    for (const std::string &line : split_at(table, "\n")) {
        if (!line.empty() && !line.starts_with("//")) {
            rows.push_back(split_at(line, "->"));
            for (std::string &column : rows.back()) {
                column = trimmed(column);
            }
        }
    }
    return rows;
}

texts entries_of(const std::string &list) {
    return list.empty() ? texts() : split_at(list, "|");
}

void forget_configuration() {
    forget_state();
}

void start(const std::string &how, const std::string &config) {
    std::string mode;
    int host = 0;
    int guest = 0;
    std::istringstream(how) >> mode >> host >> guest;
    put_file(
        "C:\\L\\launcher.cfg",
        here("LAUNCH_MODE=" + mode + "\nCONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\nQUORVEL_HOME=C:\\Q\n" + config + '\n'));
    forget_configuration();
    assign_text(&launcher_home, here("C:\\L"));
    is_native_invocation = mode == "native";
    load_config_file();
    is_host_java_9_plus = host >= 9;
    is_guest_java_9_plus = guest >= 9;
}

void rewrite(const std::string &args) {
    texts entries = entries_of(here(args));
    std::vector<char *> argv;
    for (std::string &entry : entries) {
        argv.push_back(entry.data());
    }
    parse_arguments(static_cast<int>(argv.size()), argv.data());
}

std::string host_list() {
    return joined(lhs, lhs_count);
}

std::string guest_list() {
    return joined(rhs, rhs_count);
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

std::string traced_by(const std::function<void()> &body) {
    std::string trace;
    caught = &trace;
    const auto usual_writer = text_writer;
    text_writer = [](FILE *, const char *text) { *caught += text; };
    JLI_SetTraceLauncher();
    body();
    _launcher_debug = 0;
    text_writer = usual_writer;
    return trace;
}
