// A whole command line: the configuration is loaded, the arguments are rewritten, and for a native host a second time.
// The parts of the input are
//     bits of the launch mode and the Java versions, and which change of a variable fails; what is missing on the disk;
//     what every argument file holds; the option variables and CLASSPATH; launcher.cfg, of which the mode and the homes
//     are there already; the arguments

#include <cstring>

#include "core/jlp_utils.h"
#include "core/state_text.h"
#include "fuzz/product_run.h"

namespace {

enum part { BITS, MISSING, CONTENT, VARIABLES, CONFIG = VARIABLES + 5, ARGS };
constexpr const char *NAMES[] = {"JDK_JAVA_OPTIONS", "JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS",
                                 "QUORVEL_GUEST__JAVA_OPTIONS", "CLASSPATH"};
constexpr const char *MODES[] = {"advanced", "legacy", "patch", "secure", "ri"};

void load_configuration(unsigned bits) {
    is_native_invocation = bits % 8 == 7;
    assign_text(&launcher_home, "C:\\L");
    load_config_file();
    is_host_java_9_plus = (bits & 8) != 0;
    is_guest_java_9_plus = (bits & 16) != 0;
    native_jvm_bits = (bits & 32) != 0 ? 32 : 64;
}

// Every slot below a count holds a text, and an advanced command line runs the container.
void check_lists() {
    std::string texts;
    for (int i = 0; i < lhs_count; i++) {
        texts += lhs[i];
    }
    for (int i = 0; i < rhs_count; i++) {
        texts += rhs[i];
    }
    assert(use_advanced_launch_mode == 0 || strcmp(lhs[lhs_count - 1], "quorvel.Container") == 0);
}

} // namespace

// Nothing is shown, but everything that would be is formatted.
WRAP(void, JLI_TraceLauncher, (const char *format, ...)) {
    va_list arguments;
    va_start(arguments, format);
    format_text_list(format, arguments);
    va_end(arguments);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::vector<std::string> parts = split_input(data, size, ARGS);
    const unsigned bits = parts[BITS].empty() ? 0 : static_cast<unsigned char>(parts[BITS][0]);
    const std::string mode = MODES[bits % 8 % std::size(MODES)];
    world = {};
    world.missing = parts[MISSING];
    world.content = parts[CONTENT];
    world.config =
        "CONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\nQUORVEL_HOME=C:\\Q\nLAUNCH_MODE=" + mode + "\n" + parts[CONFIG];
    world.variables["Path"] = "C:\\w;C:\\w\\windows-i586;C:\\w\\windows-x64";
    for (size_t i = 0; i < std::size(NAMES); i++) {
        if (!parts[VARIABLES + i].empty()) {
            world.variables[NAMES[i]] = parts[VARIABLES + i];
        }
    }
    world.changes_to_failure = bits / 64;
    std::vector<std::string> args(parts.begin() + ARGS, parts.end());
    const std::vector<char *> argv = pointers_to(args);
    const auto run = [&] {
        load_configuration(bits);
        for (int i = 0; i <= is_native_invocation; i++) {
            parse_arguments(static_cast<int>(args.size()), argv.data());
            check_lists();
            reset_jlp_for_native_invocation();
        }
    };
    run_product(run, [] { assert(!product.by_exit || product.status == 1 || product.status == -1); });
    return 0;
}
