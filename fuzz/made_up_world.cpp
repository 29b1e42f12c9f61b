#include "fuzz/made_up_world.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#include "platform/environment.h"
#include "platform/files.h"
#include "tests/support/state.h"

made_up_world world;

namespace {

// The product is compiled with exceptions here (CMakeLists.txt), so that its own texts are released on the way.
struct process_end {
    int status;
};

void keep_text(FILE *stream, const char *text) {
    (stream == stdout ? world.shown : stream == stderr ? world.complained : world.logged) += text;
}

} // namespace

// What the linker hands the product's calls of these functions to.
extern "C" {
char *__real_getenv(const char *name);

char *__wrap_getenv(const char *name) {
    const auto variable = world.variables.find(name);
    return variable == world.variables.end() ? __real_getenv(name) : variable->second.data();
}

bool __wrap_get_environment_value(const char *name, char **found) {
    const std::string &value = world.variables[name];
    *found = value.empty() ? nullptr : strdup(value.c_str());
    return true;
}

entry_kind __wrap_kind_of(const char *path) {
    const bool is_possible = *path != '\0' && strpbrk(path, "\"<>|?*") == nullptr;
    if (!is_possible || (!world.missing.empty() && strstr(path, world.missing.c_str()) != nullptr)) {
        return entry_kind::missing;
    }
    const char *separator = strrchr(path, '\\');
    const std::string_view name = separator == nullptr ? path : separator + 1;
    return name.find('.') == std::string::npos || name.ends_with('.') ? entry_kind::directory : entry_kind::file;
}

FILE *__wrap_open_text_file(const char *path, const char *mode) {
    if (*mode == 'w') {
        return strchr(path, '!') != nullptr ? nullptr : fopen("/dev/null", mode);
    }
    std::string &content = std::string_view(path).ends_with("\\launcher.cfg") ? world.config : world.content;
    content += '\n';
    return __wrap_kind_of(path) == entry_kind::file ? fmemopen(content.data(), content.size(), mode) : nullptr;
}

// What the product's own frees do not reach when a run is left is no fault.
const char *__asan_default_options() {
    return "detect_leaks=0";
}
}

void run_product(const std::function<void()> &run) {
    setenv("QVL_HOST_DRIVE_C", "/tmp", 1);
    if (LOG_FILE_FD != nullptr) {
        fclose(LOG_FILE_FD);
    }
    forget_state();
    text_writer = keep_text;
    set_jlp_end_listener([](const char *, int status) { throw process_end{status}; });
    try {
        run();
    } catch (const process_end &end) {
        world.status = end.status;
    }
}

std::vector<std::string> split_input(const uint8_t *data, size_t size, size_t wanted) {
    std::vector<std::string> parts;
    std::istringstream input({data, data + size});
    for (std::string part; std::getline(input, part, '|');) {
        parts.emplace_back(part.c_str());
    }
    parts.resize(std::max(parts.size(), wanted));
    return parts;
}
