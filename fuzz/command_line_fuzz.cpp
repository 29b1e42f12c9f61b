// A whole command line: the configuration is loaded, the arguments are rewritten, and for a native
// host a second time. Null bytes part the input into
//     bits of the launch mode and the Java versions; launcher.cfg; what every argument file holds;
//     the option variables; CLASSPATH; the arguments, a line each
//
// Each run is a process of its own: the bookkeeping of the arguments seen and the guard against
// taking the container options again are reset, and to this end their sources are compiled in. What
// a run leaves on the heap is released, since exit() comes back here and leaves working values
// behind.

#include "core/rewriting/advanced_mode.cpp"
#include "jli/args.cpp"

#include <csetjmp>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/jlp_utils.h"
#include "platform/windows_services.h"

namespace {

bool in_engine = false;
jmp_buf after_engine;
std::unordered_set<void *> blocks; // of this run, and not given back
std::vector<std::string> parts;

enum part { BITS, CONFIG, FILE_CONTENT, VARIABLES, CLASS_PATH = VARIABLES + 4, ARGS, PARTS };
constexpr const char *NAMES[] = {"JDK_JAVA_OPTIONS", "JAVA_TOOL_OPTIONS", "_JAVA_OPTIONS",
                                 "QUORVEL_GUEST__JAVA_OPTIONS", "CLASSPATH"};
constexpr const char *MODES[] = {"advanced", "legacy", "patch", "secure", "ri"};

template <typename Block>
Block *note(Block *block) {
    if (in_engine) {
        blocks.insert(block);
    }
    return block;
}

void require(bool holds) {
    if (!holds) {
        abort();
    }
}

FILE *stream_of(std::string &content) {
    content += '\n';
    return fmemopen(content.data(), content.size(), "r");
}

} // namespace

extern "C" {
[[noreturn]] void __real_exit(int status);
void *__real_malloc(size_t size);
void *__real_realloc(void *block, size_t size);
char *__real_strdup(const char *text);
void __real_free(void *block);
char *__real_getenv(const char *name);
BOOL __real_SetEnvironmentVariableA(LPCSTR name, LPCSTR value);

[[noreturn]] void __wrap_exit(int status);
void *__wrap_malloc(size_t size);
void *__wrap_realloc(void *block, size_t size);
char *__wrap_strdup(const char *text);
void __wrap_free(void *block);
char *__wrap_getenv(const char *name);
BOOL __wrap_SetEnvironmentVariableA(LPCSTR name, LPCSTR value);
void __wrap_JLI_SetTraceLauncher();
void __wrap_JLI_TraceLauncher(const char *format, ...) JLI_PRINTF_LIKE(1, 2);
entry_kind __wrap__Z7kind_ofPKc(const char *path);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);

void __wrap_exit(int status) {
    if (!in_engine) {
        __real_exit(status);
    }
    require(status == 1 || status == -1);
    longjmp(after_engine, 1);
}

void *__wrap_malloc(size_t size) {
    return note(__real_malloc(size));
}

void *__wrap_realloc(void *block, size_t size) {
    blocks.erase(block);
    return note(__real_realloc(block, size));
}

char *__wrap_strdup(const char *text) {
    return note(__real_strdup(text));
}

void __wrap_free(void *block) {
    blocks.erase(block);
    __real_free(block);
}

char *__wrap_getenv(const char *name) {
    for (size_t i = 0; in_engine && i < std::size(NAMES); i++) {
        std::string &value = parts[VARIABLES + i];
        if (strcmp(name, NAMES[i]) == 0) {
            return value.empty() ? nullptr : value.data();
        }
    }
    return __real_getenv(name);
}

// The environment outlives the run.
BOOL __wrap_SetEnvironmentVariableA(LPCSTR name, LPCSTR value) {
    const bool was_in_engine = in_engine;
    in_engine = false;
    const BOOL done = __real_SetEnvironmentVariableA(name, value);
    in_engine = was_in_engine;
    return done;
}

void __wrap_JLI_SetTraceLauncher() {}

// Nothing is shown, but everything that would be is formatted.
void __wrap_JLI_TraceLauncher(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    format_text_list(format, arguments);
    va_end(arguments);
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    if (strchr(path, '?') != nullptr) {
        return entry_kind::missing;
    }
    return strchr(path, '.') != nullptr ? entry_kind::file : entry_kind::directory;
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode) {
    if (*mode == 'w' || strchr(path, '?') != nullptr) {
        return nullptr;
    }
    const bool is_config = std::string_view(path).ends_with("\\launcher.cfg");
    return stream_of(parts[is_config ? CONFIG : FILE_CONTENT]);
}
}

namespace {

void take_parts(const uint8_t *data, size_t size) {
    parts.assign(1, "");
    for (size_t i = 0; i < size; i++) {
        if (data[i] == '\0' && parts.size() < PARTS) {
            parts.emplace_back();
        } else {
            parts.back() += static_cast<char>(data[i]);
        }
    }
    parts.resize(PARTS);
    parts[BITS].resize(1);
}

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

// The state of a new process, its variables set.
void start_process() {
    launcher_home = nullptr;
    LOG_FILE_FD = nullptr;
    is_native_invocation = 0;
    use_advanced_launch_mode = 1;
    for (int *count : {&non_path_options_count, &allow_vm_properties_count, &ignore_properties_count,
                       &jvm_options_count, &container_options_count, &processedArgCount, &newPathListCount, &lhs_count,
                       &rhs_count, &updated_options_for_var_count, &options_for_quorvel_guest_var_count}) {
        *count = 0;
    }
    firstAppArgIndex = -1;
    argsCount = 1;
    expectingNoDashArg = false;
    stopExpansion = false;
    is_taking_container_options = false;
    SetEnvironmentVariableA("CLASSPATH", parts[CLASS_PATH].c_str());
    SetEnvironmentVariableA("Path", "C:\\w");
}

void load_configuration() {
    const unsigned bits = static_cast<unsigned char>(parts[BITS][0]);
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
    require(length > 0 || use_advanced_launch_mode == 0);
    require(use_advanced_launch_mode == 0 || strcmp(lhs[lhs_count - 1], "quorvel.Container") == 0);
}

void run_engine(std::vector<std::string> args) {
    std::vector<char *> argv;
    for (std::string &arg : args) {
        argv.push_back(arg.data());
    }
    if (setjmp(after_engine) == 0) {
        in_engine = true;
        load_configuration();
        for (int i = 0; i <= is_native_invocation; i++) {
            parse_arguments(static_cast<int>(argv.size()), argv.data());
            check_lists();
            reset_jlp_for_native_invocation();
        }
    }
    // A run that has ended on its way has left the shared queries standing.
    shared_disk_queries();
    in_engine = false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // The host keeps what it has found out about its drives.
    static const bool drives_are_known = [] {
        setenv("QVL_HOST_DRIVE_C", "/tmp", 1);
        free(current_directory());
        return true;
    }();
    require(drives_are_known);
    take_parts(data, size);
    start_process();
    run_engine(lines_of(parts[ARGS]));
    for (void *block : blocks) {
        __real_free(block);
    }
    blocks.clear();
    return 0;
}
