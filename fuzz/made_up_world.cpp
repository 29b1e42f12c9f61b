// The disk and the environment of a run, as product_run.h tells of them.

#include "fuzz/product_run.h"

#include <cstring>

#include "core/jlp_vars.h"
#include "core/state_text.h"
#include "platform/environment.h"
#include "platform/windows_services.h"

made_up_world world;

namespace {

bool is_named(const char *path, const std::string &name) {
    return !name.empty() && strstr(path, name.c_str()) != nullptr;
}

bool is_possible(const char *path) {
    return *path != '\0' && strpbrk(path, "\"<>|?*") == nullptr;
}

// "." and ".." are directories.
bool names_file(std::string_view path) {
    const size_t dot = path.find('.', path.rfind('\\') + 1);
    return dot != std::string_view::npos && path.back() != '.';
}

} // namespace

// kind_of
WRAP(entry_kind, kind_of, (const char *path)) {
    if (!is_possible(path) || is_named(path, world.missing)) {
        return entry_kind::missing;
    }
    if (names_file(path) == is_named(path, world.turned)) {
        return entry_kind::directory;
    }
    world.last_file = path;
    const std::string_view mode = launch_mode == nullptr ? "" : launch_mode;
    const char *home = mode.starts_with("advanced") || mode.starts_with("legacy") ? container_home : jvm_home;
    world.last_home = home == nullptr ? "" : home;
    return entry_kind::file;
}

// open_text_file
WRAP(FILE *, open_text_file, (const char *path, const char *mode)) {
    const bool is_accessible = strchr(path, '!') == nullptr;
    if (*mode == 'w') {
        world.has_log = is_accessible && is_possible(path);
        return world.has_log ? opened(fopen("/dev/null", mode)) : nullptr;
    }
    if (kind_of(path) != entry_kind::file) {
        return nullptr;
    }
    if (!is_accessible) {
        return opened(fopen("/dev/null", "w"));
    }
    world.last_read = path;
    std::string &content = std::string_view(path).ends_with("\\launcher.cfg") ? world.config : world.content;
    content += '\n';
    return opened(fmemopen(content.data(), content.size(), mode));
}

// Long paths are known, as on a system that is set up for them: Linux knows none.
WRAP(DWORD, GetFullPathNameA, (LPCSTR path, DWORD size, LPSTR buffer, LPSTR *file_part)) {
    static char native_buffer[TEXT_SIZE];
    std::string full = path;
    if (full.size() <= LONGEST_PATH) {
        full.assign(native_buffer, __real_GetFullPathNameA(path, TEXT_SIZE, native_buffer, file_part));
    }
    if (full.find('&') != std::string::npos) {
        full += "and a longer name";
    }
    if (full.empty() || full.find('%') != std::string::npos) {
        return 0;
    }
    const DWORD length = static_cast<DWORD>(full.size());
    if (length >= size) {
        return length + 1;
    }
    memcpy(buffer, full.c_str(), full.size() + 1);
    return length;
}

WRAP(char *, getenv, (const char *name)) {
    if (!product.is_going_on) {
        return __real_getenv(name);
    }
    const auto variable = world.variables.find(name);
    return variable == world.variables.end() ? nullptr : variable->second.data();
}

// get_environment_value
WRAP(bool, get_environment_value, (const char *name, char **found)) {
    const std::string &value = world.changes.count(name) == 1 ? world.changes[name] : world.variables[name];
    *found = value.empty() ? nullptr : strdup(value.c_str());
    return true;
}

WRAP(BOOL, SetEnvironmentVariableA, (LPCSTR name, LPCSTR value)) {
    world.changes[name] = value;
    return --world.changes_to_failure != 0;
}
