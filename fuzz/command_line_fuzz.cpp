// A whole command line: the configuration is loaded, the arguments are rewritten, and for a native
// host a second time. Null bytes part the input into
//     bits of the launch mode and the Java versions, and which change of a variable fails; launcher.cfg;
//     what every argument file holds; the option variables; CLASSPATH; the arguments, a line each
// No entry of the made-up disk holds "?" in its path, nor both "~" and "windows-" or "module_patch"; a path with "%"
// has no full path, and one with "&" has a longer one.
//
// The bookkeeping of the arguments seen and the guard against taking the container options again are
// reset for each run, and to this end their sources are compiled in.

#include "core/rewriting/advanced_mode.cpp"
#include "jli/args.cpp"

#include <string>
#include <vector>

#include "core/jlp_utils.h"
#include "fuzz/product_run.h"
#include "platform/windows_services.h"

namespace {

std::vector<std::string> parts;
unsigned changes_to_failure;

enum part { BITS, CONFIG, FILE_CONTENT, VARIABLES, CLASS_PATH = VARIABLES + 4, ARGS, PARTS };
constexpr const char *NAMES[] = {"JDK_JAVA_OPTIONS", "JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS",
                                 "QUORVEL_GUEST__JAVA_OPTIONS", "CLASSPATH"};
constexpr const char *MODES[] = {"advanced", "legacy", "patch", "secure", "ri"};

} // namespace

extern "C" {
char *__real_getenv(const char *name);
BOOL __real_SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
DWORD __real_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part);

char *__wrap_getenv(const char *name);
BOOL __wrap_SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
DWORD __wrap_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part);
void __wrap_JLI_TraceLauncher(const char *format, ...) JLI_PRINTF_LIKE(1, 2);
entry_kind __wrap__Z7kind_ofPKc(const char *path);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);

char *__wrap_getenv(const char *name) {
    for (size_t i = 0; in_product() && i < std::size(NAMES); i++) {
        std::string &value = parts[VARIABLES + i];
        if (strcmp(name, NAMES[i]) == 0) {
            return value.empty() ? nullptr : value.data();
        }
    }
    return __real_getenv(name);
}

// The environment outlives the run.
BOOL __wrap_SetEnvironmentVariableA(LPCSTR name, LPCSTR value) {
    if (in_product() && --changes_to_failure == 0) {
        return FALSE;
    }
    BOOL done = FALSE;
    outside_product([&] { done = __real_SetEnvironmentVariableA(name, value); });
    return done;
}

DWORD __wrap_GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part) {
    constexpr DWORD ADDED = 20;
    if (strchr(path, '%') != nullptr) {
        return 0;
    }
    const DWORD length = __real_GetFullPathNameA(path, size, buffer, file_part);
    if (strchr(path, '&') == nullptr || length == 0 || length >= size) {
        return length;
    }
    if (length + ADDED >= size) {
        return length + ADDED + 1;
    }
    memset(buffer + length, 'n', ADDED);
    buffer[length + ADDED] = '\0';
    return length + ADDED;
}

// Nothing is shown, but everything that would be is formatted.
void __wrap_JLI_TraceLauncher(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    format_text_list(format, arguments);
    va_end(arguments);
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    const bool is_optional = strstr(path, "\\windows-") != nullptr || strstr(path, "module_patch") != nullptr;
    if (strchr(path, '?') != nullptr || (strchr(path, '~') != nullptr && is_optional)) {
        return entry_kind::missing;
    }
    return strchr(path, '.') != nullptr ? entry_kind::file : entry_kind::directory;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode) {
    if (*mode == 'w' || strchr(path, '?') != nullptr) {
        return nullptr;
    }
    const bool is_config = std::string_view(path).ends_with("\\launcher.cfg");
    return open_content(parts[is_config ? CONFIG : FILE_CONTENT]);
}
}

namespace {

// The state of a new process, its variables set.
void start_process() {
    start_product();
    firstAppArgIndex = -1;
    argsCount = 1;
    expectingNoDashArg = false;
    stopExpansion = false;
    is_taking_container_options = false;
    SetEnvironmentVariableA("CLASSPATH", parts[CLASS_PATH].c_str());
    SetEnvironmentVariableA("Path", "C:\\w;C:\\w\\windows-i586;C:\\w\\windows-x64");
}

void load_configuration() {
    const unsigned bits = static_cast<unsigned char>(parts[BITS][0]);
    changes_to_failure = bits / 64;
    is_native_invocation = bits % 8 == 7;
    parts[CONFIG] = std::string("LAUNCH_MODE=") + MODES[bits % 8 % std::size(MODES)] + "\n" + parts[CONFIG];
    assign_text(&launcher_home, "C:\\L");
    load_config_file();
    is_host_java_9_plus = (bits & 8) != 0;
    is_guest_java_9_plus = (bits & 16) != 0;
    native_jvm_bits = (bits & 32) != 0 ? 32 : 64;
}

// Every slot below a count holds a text, and an advanced command line runs the container.
void check_lists() {
    size_t length = 0;
    for (int i = 0; i < lhs_count; i++) {
        length += strlen(lhs[i]);
    }
    for (int i = 0; i < rhs_count; i++) {
        length += strlen(rhs[i]);
    }
    assert(length > 0 || use_advanced_launch_mode == 0);
    assert(use_advanced_launch_mode == 0 || strcmp(lhs[lhs_count - 1], "quorvel.Container") == 0);
}

void run_engine(std::vector<std::string> args) {
    std::vector<char *> argv;
    for (std::string &arg : args) {
        argv.push_back(arg.data());
    }
    const product_end end = run_product([&] {
        load_configuration();
        for (int i = 0; i <= is_native_invocation; i++) {
            parse_arguments(static_cast<int>(argv.size()), argv.data());
            check_lists();
            reset_jlp_for_native_invocation();
        }
    });
    assert(!end.by_exit || end.status == 1 || end.status == -1);
    // A run that has ended on its way has left the shared queries standing.
    run_product([] { shared_disk_queries(); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // The host keeps what it has found out about its drives.
    static const bool drives_are_known = [] {
        setenv("QVL_HOST_DRIVE_C", "/tmp", 1);
        free(current_directory());
        return true;
    }();
    assert(drives_are_known);
    parts = split_input(data, size, PARTS);
    parts[BITS].resize(1);
    start_process();
    run_engine(lines_of(parts[ARGS]));
    release_product();
    return 0;
}
