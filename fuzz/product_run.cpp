#include "fuzz/product_run.h"

// The trace switch is nobody else's.
#include "jli/jli_util.cpp"

#include <algorithm>
#include <csetjmp>
#include <unordered_set>

#include "core/jlp_vars.h"

namespace {

bool running = false;
jmp_buf after_run;
int exit_status = 0;
size_t allocations_to_failure = 0;

std::unordered_set<void *> blocks; // of this run, and not given back
std::unordered_set<FILE *> streams;

bool allocation_fails() {
    return running && allocations_to_failure > 0 && --allocations_to_failure == 0;
}

template <typename Block>
Block *note(Block *block) {
    if (running && block != nullptr) {
        blocks.insert(block);
    }
    return block;
}

std::string &text_of(FILE *stream) {
    if (stream == stdout) {
        return printed.shown;
    }
    assert(stream == stderr || streams.count(stream) == 1);
    return stream == stderr ? printed.complained : printed.logged;
}

} // namespace

product_output printed;

extern "C" {
[[noreturn]] void __real_exit(int status);
void *__real_malloc(size_t size);
void *__real_realloc(void *block, size_t size);
char *__real_strdup(const char *text);
void __real_free(void *block);
int __real_fclose(FILE *stream);
int __real_fputs(const char *text, FILE *stream);
void __real_perror(const char *text);

[[noreturn]] void __wrap_exit(int status);
void *__wrap_malloc(size_t size);
void *__wrap_realloc(void *block, size_t size);
char *__wrap_strdup(const char *text);
void __wrap_free(void *block);
int __wrap_fclose(FILE *stream);
int __wrap_fputs(const char *text, FILE *stream);
void __wrap_perror(const char *text);

void __wrap_exit(int status) {
    if (!running) {
        __real_exit(status);
    }
    exit_status = status;
    longjmp(after_run, 1);
}

void *__wrap_malloc(size_t size) {
    return allocation_fails() ? nullptr : note(__real_malloc(size));
}

void *__wrap_realloc(void *block, size_t size) {
    if (allocation_fails()) {
        return nullptr;
    }
    blocks.erase(block);
    return note(__real_realloc(block, size));
}

char *__wrap_strdup(const char *text) {
    return allocation_fails() ? nullptr : note(__real_strdup(text));
}

void __wrap_free(void *block) {
    blocks.erase(block);
    __real_free(block);
}

int __wrap_fclose(FILE *stream) {
    assert(!running || streams.erase(stream) == 1);
    return __real_fclose(stream);
}

int __wrap_fputs(const char *text, FILE *stream) {
    if (!running) {
        return __real_fputs(text, stream);
    }
    text_of(stream) += text;
    return 0;
}

void __wrap_perror(const char *text) {
    if (!running) {
        __real_perror(text);
    } else {
        printed.complained += std::string(text) + ": failed\n";
    }
}
}

void start_product() {
    _launcher_debug = 0;
    printed = {};
    allocations_to_failure = 0;
    LOG_FILE_FD = nullptr;
    os_name = nullptr;
    is_native_invocation = is_host_java_9_plus = is_guest_java_9_plus = 0;
    native_jvm_bits = -1;
    use_advanced_launch_mode = 1;
    for (char **text :
         {&executable_dir, &bin_dir, &launcher_home, &container_home, &jvm_home, &quorvel_home, &launch_mode,
          &launcher_path_arg, &rule_file, &rule_file_arg, &quorvel_properties_file, &quorvel_properties_arg,
          &quorvel_library_path, &allow_vm_properties_option, &new_mem_val_as_str}) {
        *text = nullptr;
    }
    for (int *count : {&non_path_options_count, &allow_vm_properties_count, &ignore_properties_count,
                       &jvm_options_count, &container_options_count, &processedArgCount, &lhs_count, &rhs_count,
                       &newPathListCount, &updated_options_for_var_count, &options_for_quorvel_guest_var_count}) {
        *count = 0;
    }
}

product_end run_product(const std::function<void()> &run) {
    static bool by_exit;
    by_exit = setjmp(after_run) != 0;
    if (!by_exit) {
        running = true;
        run();
    }
    running = false;
    return {by_exit, exit_status};
}

void release_product() {
    for (FILE *stream : streams) {
        __real_fclose(stream);
    }
    streams.clear();
    for (void *block : blocks) {
        __real_free(block);
    }
    blocks.clear();
}

bool in_product() {
    return running;
}

void outside_product(const std::function<void()> &work) {
    const bool was_running = running;
    running = false;
    work();
    running = was_running;
}

void fail_allocation(size_t number) {
    allocations_to_failure = number;
}

FILE *opened(FILE *stream) {
    if (running && stream != nullptr) {
        streams.insert(stream);
    }
    return stream;
}

FILE *open_content(std::string &content) {
    content += '\n';
    return opened(fmemopen(content.data(), content.size(), "r"));
}

size_t open_streams() {
    return streams.size();
}

std::vector<std::string> split_input(const uint8_t *data, size_t size, size_t count) {
    std::vector<std::string> parts(1);
    for (size_t i = 0; i < size; i++) {
        if (data[i] == '\0' && parts.size() < count) {
            parts.emplace_back();
        } else {
            parts.back() += static_cast<char>(data[i]);
        }
    }
    parts.resize(count);
    return parts;
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

bool is_possible_path(std::string_view path) {
    return std::none_of(path.begin(), path.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' || std::string_view("\"<>|?*").find(c) != std::string_view::npos;
    });
}

bool names_file(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('\\') + 1);
    return name.find('.') != std::string_view::npos && name.find_first_not_of('.') != std::string_view::npos;
}
