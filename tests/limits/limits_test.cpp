// Every way in which a text or a list enters the core, and what becomes of a long one.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "core/environment.h"
#include "core/jlp_utils.h"
#include "core/rewriting/java_options.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"
#include "tests/support/programs.h"
#include "tests/support/trace.h"

extern "C" int __wrap_JLI_IsTraceLauncher();

// The dump of a configuration and the reports ask for it; what is traced goes to traced_by().
static bool is_tracing = false;

int __wrap_JLI_IsTraceLauncher() {
    return is_tracing;
}

namespace {

using testing::Eq;
using testing::ExitedWithCode;
using text = const std::string &;

constexpr size_t ANY = 1 << 20;
constexpr size_t LONGEST_PATH = on_windows ? 259 : 32766; // Wine's service for narrow paths takes less
constexpr size_t LONGEST_VALUE = on_windows ? 32766 : ANY;

// What printf could make something of, each byte from 128 on, and as many more as it takes; it ends like a heap size.
std::string text_of(size_t length) {
    std::string result = "%s%n%d%100000d%%%";
    for (int byte = 128; byte < 256; byte++) {
        result += static_cast<char>(byte);
    }
    result.resize(length, 'x');
    std::fill_n(result.rbegin(), length > 0, 'm');
    return result;
}

// `t` for each "*".
std::string filled(text line, text t) {
    std::string result;
    for (const char c : line) {
        result += c == '*' ? t : std::string(1, c);
    }
    return result;
}

// What follows `before`; empty when the entry begins otherwise.
std::string after(text before, const char *entry) {
    return entry != nullptr && strncmp(entry, before.c_str(), before.size()) == 0 ? entry + before.size() : "";
}

bool is_placed(text arg) {
    const auto is_arg = [&](const char *entry) { return arg == entry; };
    return std::any_of(lhs, lhs + lhs_count, is_arg) || std::any_of(rhs, rhs + rhs_count, is_arg);
}

std::string put_in_buffer(void (*put)(const char *, char *), text t) {
    const text_ptr output(new_state_text());
    put(t.c_str(), output.get());
    return output.get();
}

enum fate { cut, dropped, not_tried }; // of a text that is longer than the longest

void expect_arrival(text name, const std::function<std::string(text)> &arrived, size_t longest, fate of_longer) {
    for (const size_t length :
         {size_t{0}, size_t{145}, size_t{99999}, size_t{100000}, size_t{100001}, longest, longest + 1}) {
        if (length < ANY && (length <= longest || of_longer != not_tried)) {
            const std::string t = text_of(length);
            const std::string expected = length > longest && of_longer == dropped ? "" : t.substr(0, longest);
            std::string result;
            const std::string trace = traced_by([&] { result = arrived(t); });
            EXPECT_TRUE(result == expected) << name << ' ' << length << ": " << result.size() << " bytes";
            EXPECT_TRUE(trace.empty() || trace.find(expected) != std::string::npos) << name << ' ' << length;
        }
    }
}

class limits : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        put_file("C:\\Q\\quorvel.dll", "");
    }
};

} // namespace

TEST_F(limits, of_the_configuration) {
    const std::string home = here("C:\\L\\");
    const struct {
        const char *line;
        char **setting;
        std::string before;
    } rows[] = {
        {"CONTAINER_HOME=*", &container_home, home},
        {"JVM_HOME=*", &jvm_home, home},
        {"QUORVEL_HOME=*", &quorvel_home, home},
        {"RULE_FILE=*", &rule_file_arg, "-Dcom.quorvel.rules.local=" + home},
        {"QUORVEL_PROPERTIES_FILE=*", &quorvel_properties_arg, "-Dcom.quorvel.QuorvelProperties=" + home},
        {"QUORVEL_NATIVE_AGENT=*", &quorvel_library_path, home},
        {"NON_PATH_OPTIONS=*", non_path_options_array, ""},
        {"ALLOW_VM_OPTIONS=*", allow_vm_properties_array, ""},
        {"ALLOW_VM_OPTIONS=*", &allow_vm_properties_option, "-Dcom.quorvel.AllowVMProperties="},
        {"IGNORE_OPTIONS=*", ignore_properties_array, ""},
        {"JVM_OPTIONS=\"*\"", jvm_options_array, ""},
        {"CONTAINER_OPTIONS=\"*\"", container_options_array, ""},
        {"LAUNCH_MODE=ri*", &launch_mode, "ri"},
    };
    is_tracing = true;
    for (const auto &row : rows) {
        const auto arrived = [&](text t) {
            start("ri 8 8", filled(row.line, t));
            return after(row.before, *row.setting);
        };
        if (row.before.ends_with(home)) { // what has no full path leaves the setting as it was
            expect_arrival(row.line, arrived, LONGEST_PATH - home.size(), dropped);
        } else { // the rest of a long line is another line
            expect_arrival(row.line, arrived, TEXT_SIZE - strlen(row.line), cut);
        }
    }
    is_tracing = false;
}

TEST_F(limits, of_the_environment) {
    const std::pair<std::string, char **> rows[] = {{"CONTAINER_HOME", &container_home},
                                                    {"JVM_HOME", &jvm_home},
                                                    {"QUORVEL_HOME", &quorvel_home},
                                                    {"JDK_JAVA_OPTIONS", nullptr},
                                                    {"JAVA_TOOL_OPTIONS", nullptr},
                                                    {"_JAVA_OPTIONS", nullptr},
                                                    {"QUORVEL_GUEST_JDK_JAVA_OPTIONS", rhs},
                                                    {"QUORVEL_GUEST_JAVA_TOOL_OPTIONS", rhs},
                                                    {"QUORVEL_GUEST__JAVA_OPTIONS", rhs},
                                                    {"CLASSPATH", nullptr},
                                                    {"PATH", nullptr}};
    for (const auto &[name, setting] : rows) {
        const std::string before = name.ends_with("OPTIONS") ? "-Y" : "";
        const std::string agents = name == "PATH" ? here("C:\\Q;C:\\Q\\windows-i586;C:\\Q\\windows-x64;") : before;
        const auto arrived = [&](text t) {
            start("advanced 8 8");
            set_variable(name, before + t);
            if (name.ends_with("_HOME")) {
                assign_text(setting, "");
                fall_back_on_env_vars();
            } else {
                rewrite("Main");
            }
            return after(agents, setting == nullptr ? read_environment(name.c_str()).get() : *setting);
        };
        const text_ptr old_value = read_environment(name.c_str());
        expect_arrival(name, arrived, LONGEST_VALUE - agents.size(), not_tried);
        set_variable(name, after("", old_value.get()));
    }
}

TEST_F(limits, of_the_command_line) {
    const std::string options =
        "-Y*|-XX:+*|-XX:*|-version*|-javaagent:*|-agentlib:*|-agentpath:*|-Xmx999*m|--add-opens|*|--patch-module=*|"
        "--patch-module|*|-Dcom.quorvel.a=*|-Dfile.encoding=*|-D*|-Da=*|-cp*|-cp|*|--class-path|*|--class-path=*|"
        "-Xbootclasspath:*|-Xbootclasspath/a:*|Main|*";
    for (const char *how : {"advanced 9 9", "legacy 9 9", "patch 9 9", "ri 9 9", "native 9 9"}) {
        for (text line : {options, {"-jar|*"}, {"*|*"}, {"--module|*"}, {"--module=*"}, {"-Xrun*"}}) {
            const auto arrived = [&](text t) {
                bool is_whole = true;
                start(how);
                rewrite(filled(line, t));
                for (text arg : entries_of(line)) {
                    const bool is_converted = arg == "-Xrun*" && how[0] != 'r';
                    is_whole = is_whole && is_placed(filled(is_converted ? "-agentlib:*" : arg, t));
                }
                return is_whole ? t : "";
            };
            expect_arrival(how + line, arrived, ANY, not_tried);
        }
    }
}

TEST_F(limits, of_path_lists) {
    const std::string classpath(std::min<size_t>(LONGEST_VALUE, 100000), ';');
    set_variable("CLASSPATH", classpath);
    for (const char *how : {"advanced 9 9", "ri 9 9"}) {
        for (const char separator : {';', ','}) {
            const std::string list(100000, separator);
            start(how);
            rewrite(filled("-Da=*|-D*|-cp|*|--class-path=*|-Xbootclasspath:*|Main", list));
            for (text arg : entries_of("-Da=*|-D*|*|--class-path=*|-Xbootclasspath:*")) {
                EXPECT_TRUE(is_placed(filled(arg, list))) << how << separator << arg;
            }
        }
    }
    EXPECT_EQ(read_environment("CLASSPATH").get(), classpath);
    set_variable("CLASSPATH", "");
    const std::string path = "Q:" + std::string(COMPONENT_SLOTS, '\\');
    EXPECT_EQ(replaceLauncherHomeWithRIHome(path.c_str(), "R", "", 0, '='), path);
    EXPECT_EXIT(resolve_path((path + '\\').c_str(), nullptr), ExitedWithCode(1),
                Eq("Error: too many components of a path (at most 100000)\n"));
}

TEST_F(limits, of_single_calls) {
    const struct {
        const char *name;
        std::string (*arrived)(text t);
        size_t longest = ANY;
        fate of_longer = not_tried;
    } rows[] = {
        {"quoted", [](text t) { return std::string(processArg((' ' + t).c_str()) + 2, t.size()); }},
        {"ignored", [](text t) { return is_ignore_property(("-server" + t).c_str(), 1) ? t : ""; }},
        {"no path", [](text t) { return is_non_path_option(("-Dq" + t).c_str()) ? t : ""; }},
        {"home", [](text t) { return assign_text(&jvm_home, t), validate_directories() == FAILURE ? t : ""; }},
        {"-Xmx",
         [](text t) {
             return place_heap_size({lhs, &lhs_count}, ("-Xmx" + t).c_str()), std::string(new_mem_val_as_str);
         },
         49, dropped},
        {"trim", [](text t) { return put_in_buffer(trim, ' ' + t); }, 99999},
        {"resolve_path", [](text t) { return put_in_buffer(resolve_path, "Q:\\" + t).substr(3); }, 99996},
        {"library path",
         [](text t) {
             init_launcher_home_from_library_path((t + "\\JNI\\qvljni.DLL").c_str());
             return std::string(launcher_home);
         }},
        {"argument file",
         [](text t) {
             put_file("C:\\file", filled("-a* '-b*' \"-c*", t));
             rewrite("@C:\\file");
             return is_placed("-a" + t) && is_placed("-b" + t) && is_placed("-c" + t) ? t : "";
         }},
        {"command line",
         [](text t) {
             std::string arg = t;
             char *const argv[] = {nullptr, arg.data()};
             const int status = execute_command("Q:\\none.exe", argv, 2);
             new_mem_val_as_str = nullptr; // released
             return status == 1 ? t : "";
         }},
    };
    for (const auto &row : rows) {
        const auto arrived = [&](text t) { return start("patch 9 9", "NON_PATH_OPTIONS=q"), row.arrived(t); };
        expect_arrival(row.name, arrived, row.longest, row.of_longer);
    }
}

TEST_F(limits, of_texts_that_end_the_process) {
    const struct {
        size_t length;
        std::string message;
        void (*enter)(text t);
    } rows[] = {
        {145, "Error: failed to identify launcher_home in library path: *\n",
         [](text t) { init_launcher_home_from_library_path(t.c_str()); }},
        {145, "Error: could not open `*'", [](text t) { get_arg_list_from_arg_file(('@' + t).c_str()); }},
        {145, "Error: Option --module=* is not allowed in environment variable V",
         [](text t) { expand(JLI_List_new(1), ("--module=" + t).c_str(), "V"); }},
        {100000, "Error: text too long (at most 99999 bytes): " + text_of(99).substr(0, 60) + "...\n",
         [](text t) { put_in_buffer(trim, t); }},
        {99997, "Error: text too long (at most 99999 bytes): Q:\\" + text_of(99).substr(0, 57) + "...\n",
         [](text t) { put_in_buffer(resolve_path, "Q:\\" + t); }},
    };
    for (const auto &row : rows) {
        for (const size_t length : {row.length, size_t{100001}}) {
            const std::string t = text_of(length);
            EXPECT_EXIT((is_tracing = true, row.enter(t)), ExitedWithCode(1), Eq(filled(row.message, t)));
        }
    }
    const std::string message = "Error! Could not open log_file_path: ";
    EXPECT_EXIT(start("ri 8 8", "LOG_FILE_OR_DIR=none\\" + text_of(145)), ExitedWithCode(STATUS_MINUS_1),
                Eq(message + here("C:\\L\\none\\") + text_of(145) + '\n'));
    EXPECT_EXIT(start("ri 8 8", "LOG_FILE_OR_DIR=" + text_of(99999)), ExitedWithCode(STATUS_MINUS_1),
                Eq(message + '\n'));
}

TEST_F(limits, of_arrays) {
    const struct {
        std::string what;
        char **array;
        int *count, slots = 10000;
    } rows[] = {
        {"NON_PATH_OPTIONS entries", non_path_options_array, &non_path_options_count},
        {"ALLOW_VM_OPTIONS entries", allow_vm_properties_array, &allow_vm_properties_count},
        {"IGNORE_OPTIONS entries", ignore_properties_array, &ignore_properties_count},
        {"JVM_OPTIONS entries", jvm_options_array, &jvm_options_count},
        {"CONTAINER_OPTIONS entries", container_options_array, &container_options_count},
        {"processed arguments", processedArg, &processedArgCount},
        {"rewritten path lists", newPathList, &newPathListCount},
        {"host or leading arguments", lhs, &lhs_count},
        {"guest or trailing arguments", rhs, &rhs_count},
        {"host options of an option variable", updated_options_for_var, &updated_options_for_var_count, 100000},
        {"guest options of an option variable", options_for_quorvel_guest_var, &options_for_quorvel_guest_var_count,
         100000},
    };
    for (const auto &row : rows) {
        const auto fill = [&](int count) {
            std::string config; // lines of a list, or lines that are passed over
            for (int i = 0; i < count; i++) {
                config += row.what.substr(0, row.what.find(' ')) + "=xxx\n";
            }
            for (start("ri 8 8", config); *row.count < count;) {
                append_entry(row.array, row.count, nullptr);
            }
        };
        fill(row.slots);
        EXPECT_EQ(*row.count, row.slots) << row.what;
        EXPECT_EXIT(fill(row.slots + 1), ExitedWithCode(1),
                    Eq("Error: too many " + row.what + " (at most " + std::to_string(row.slots) + ")\n"));
    }
    start("ri 8 8");
}
