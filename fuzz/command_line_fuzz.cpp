// A whole command line: the configuration is loaded, the arguments are rewritten, and for a native host a second time.
// The parts of the input are
//     bits of the launch mode and the Java versions; what is missing on the disk; what every argument file holds; the
//     option variables and CLASSPATH; launcher.cfg, of which the mode and the homes are there already; the arguments

#include <cstring>

#include "core/jlp_utils.h"
#include "core/state_text.h"
#include "fuzz/made_up_world.h"

namespace {

enum part { BITS, MISSING, CONTENT, VARIABLES, CONFIG = VARIABLES + 5, ARGS };
constexpr const char *NAMES[] = {"JDK_JAVA_OPTIONS", "JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS",
                                 "QUORVEL_GUEST__JAVA_OPTIONS", "CLASSPATH"};
constexpr const char *MODES[] = {"advanced", "legacy", "patch", "secure", "ri"};

void load_configuration(unsigned bits) {
    JLI_SetTraceLauncher();
    is_native_invocation = bits % 8 == 7;
    assign_text(&launcher_home, "C:\\L");
    load_config_file();
    is_host_java_9_plus = (bits & 8) != 0;
    is_guest_java_9_plus = (bits & 16) != 0;
    native_jvm_bits = (bits & 32) != 0 ? 32 : 64;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::vector<std::string> parts = split_input(data, size, ARGS);
    const unsigned bits = static_cast<unsigned char>(parts[BITS].c_str()[0]);
    world = {.missing = parts[MISSING], .content = parts[CONTENT]};
    world.config = std::string("CONTAINER_HOME=C:\\C\nJVM_HOME=C:\\J\nQUORVEL_HOME=C:\\Q\nLAUNCH_MODE=") +
                   MODES[bits % 8 % std::size(MODES)] + "\n" + parts[CONFIG];
    world.variables["Path"] = "C:\\w;C:\\w\\windows-i586;C:\\w\\windows-x64";
    for (size_t i = 0; i < std::size(NAMES); i++) {
        world.variables[NAMES[i]] = parts[VARIABLES + i];
    }
    std::vector<char *> args;
    for (size_t i = ARGS; i < parts.size(); i++) {
        args.push_back(parts[i].data());
    }
    run_product([&] {
        load_configuration(bits);
        for (int i = 0; i <= is_native_invocation; i++) {
            release_jlp_for_native_invocation();
            parse_arguments(static_cast<int>(args.size()), args.data());
            // An advanced command line runs the container.
            assert(use_advanced_launch_mode == 0 || strcmp(lhs[lhs_count - 1], "quorvel.Container") == 0);
        }
    });
    assert(world.status.value_or(1) == 1 || world.status == -1);
    return 0;
}
