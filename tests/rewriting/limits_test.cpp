// Long texts arrive whole, and what does not fit ends the process with a message.

#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"

namespace {

using testing::Eq;
using testing::ExitedWithCode;

// What printf could make something of, each byte from 128 on, and as many more as it takes.
std::string text_of(size_t length) {
    std::string result = "%s%n%d%100000d%%%";
    for (int byte = 128; byte < 256; byte++) {
        result += static_cast<char>(byte);
    }
    result.resize(length, 'x');
    return result;
}

// `text` for each "*".
std::string filled(const std::string &line, const std::string &text) {
    std::string result;
    for (const char c : line) {
        result += c == '*' ? text : std::string(1, c);
    }
    return result;
}

class limits : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        put_file("C:\\Q\\quorvel.dll", "");
    }
};

} // namespace

TEST_F(limits, leave_long_texts_whole) {
    const std::string options = "-Y*|-XX:+*|-Dcom.quorvel.a=*|-D*|-Da=*|-cp|*|--class-path=*|-Xbootclasspath:*|Main|*";
    const std::string long_text = text_of(100001), separators(20000, ';');
    for (const char *how : {"advanced 9 9", "patch 9 9", "ri 9 9"}) {
        for (const std::string &text : {long_text, separators}) {
            start(how);
            put_file("C:\\file", filled("-a* '-b*' \"-c*", text));
            const std::string trace = traced_by([&] { rewrite(filled("@C:\\file|" + options, text)); });
            const std::string lists = '|' + host_list() + '|' + guest_list() + '|';
            for (const std::string &arg : entries_of("-a*|-b*|-c*|" + options)) {
                EXPECT_NE(lists.find('|' + filled(arg, text) + '|'), std::string::npos) << how << arg;
            }
            EXPECT_NE(trace.find("   old_paths: " + text + '\n'), std::string::npos);
        }
    }
    start("ri 8 8", "JVM_HOME=" + text_of(33000) + "\nJVM_OPTIONS=\"" + text_of(99000) + '"');
    EXPECT_EQ(jvm_home, here("C:\\J")); // has no full path
    EXPECT_EQ(jvm_options_array[0], text_of(99000));
}

TEST_F(limits, of_texts_end_the_process) {
    const std::string path = "Q:" + std::string(COMPONENT_SLOTS, '\\'), text = text_of(100001);
    EXPECT_EQ(replaceLauncherHomeWithRIHome(path.c_str(), "R", "", 0, '='), path);
    const std::string too_long = "Error: text too long (at most 99999 bytes): ";
    const struct {
        std::string message;
        std::function<void()> enter;
    } rows[] = {
        {"Error: failed to identify launcher_home in library path: *\n",
         [&] { init_launcher_home_from_library_path(text.c_str()); }},
        {"Error: could not open `*'", [&] { _launcher_debug = 1, get_arg_list_from_arg_file(('@' + text).c_str()); }},
        {"Error: Option --module=* is not allowed in environment variable V",
         [&] { _launcher_debug = 1, expand(JLI_List_new(1), ("--module=" + text).c_str(), "V"); }},
        {too_long + text.substr(0, 60) + "...\n", [&] { trim(text.c_str(), new_state_text()); }},
        {too_long + "Q:\\" + text.substr(0, 57) + "...\n",
         [&] { resolve_path(("Q:\\" + text.substr(0, 99997)).c_str(), new_state_text()); }},
        {"Error: too many components of a path (at most 100000)\n",
         [&] { resolve_path((path + '\\').c_str(), nullptr); }},
    };
    for (const auto &row : rows) {
        EXPECT_EXIT(row.enter(), ExitedWithCode(1), Eq(filled(row.message, text)));
    }
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
