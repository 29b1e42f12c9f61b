#include "core/rewriting/path_rewriting.h"

#include <cstring>
#include <new>

#include "core/config_text.h"
#include "core/jlp_vars.h"
#include "core/rewriting/path_prefixes.h"
#include "core/rewriting/shared_disk_queries.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "jli/text_buffer.h"
#include "platform/files.h"

namespace {

// What the paths of a list have in common, or of all lists of a command line.
struct path_list_walk {
    text_ptr current_dir{current_directory()};
    path_prefixes known;
    text_buffer query;
    text_buffer absolute; // holds the components while they are shown
    text_buffer resolved;
    int component_count = 0;

    ~path_list_walk() { forget_components(); }

    void forget_components() {
        while (component_count > 0) {
            path_component[--component_count] = nullptr;
        }
    }
};

path_list_walk *shared_walk = nullptr;

// "C:" of a path with a drive, else empty.
std::string_view drive_of(std::string_view path) {
    return path.size() >= 2 && path[1] == ':' ? std::string_view(path.data(), 2)
                                              : std::string_view();
}

bool is_same_drive(std::string_view a, std::string_view b) {
    constexpr int letter_case = 'a' ^ 'A';
    return a.size() == b.size() && (a.empty() || (a[0] | letter_case) == (b[0] | letter_case));
}

std::string_view current_drive(const path_list_walk &walk) {
    return drive_of(walk.current_dir == nullptr ? "" : walk.current_dir.get());
}

void make_absolute(path_list_walk &walk, const char *path) {
    clear(walk.absolute);
    if (is_path_relative(path)) {
        const char *directory = walk.current_dir == nullptr ? "" : walk.current_dir.get();
        JLI_TraceLauncher("   cwd = %s\n", directory);
        append(walk.absolute, directory);
        append(walk.absolute, file_separator);
    }
    append(walk.absolute, path);
}

void show_component(path_list_walk &walk, char *component) {
    if (walk.component_count >= COMPONENT_SLOTS) {
        refuse_entry("components of a path", COMPONENT_SLOTS);
    }
    const int number = walk.component_count++;
    path_component[number] = component;
    JLI_TraceLauncher("   path_component[%d] = %s\n", number, component);
}

// Replaces the prefix by its full path name if it exists; one without a drive is on the current
// drive.
bool resolve_prefix(path_list_walk &walk, text_buffer &prefix) {
    std::string_view query = prefix.view();
    if (query.starts_with(file_separator)) {
        clear(walk.query);
        append(walk.query, current_drive(walk));
        append(walk.query, query);
        query = walk.query.view();
    }
    const char *full_path = existing_full_path(walk.known, query);
    if (full_path == nullptr) {
        return false;
    }
    if (prefix.view() != full_path) {
        clear(prefix);
        append(prefix, full_path);
    }
    JLI_TraceLauncher("       path_prefix_resolved = %s\n", full_path);
    return true;
}

// Windows ignores one trailing separator, not two, except after a drive: such a prefix never
// exists, but a longer path may.
bool has_surplus_separator(std::string_view prefix) {
    return prefix.size() > strlen("C:\\\\") && prefix.ends_with("\\\\");
}

// Cuts walk.absolute into its components.
void walk_components(path_list_walk &walk, text_buffer &result) {
    const std::string_view drive = drive_of(walk.absolute.view());
    char *separator = strchr(walk.absolute.text.get(), file_separator);
    bool exists = true;
    while (separator != nullptr) {
        char *component = separator + 1;
        separator = strchr(component, file_separator);
        if (separator != nullptr) {
            *separator = '\0';
        }
        show_component(walk, component);
        if (walk.component_count == 1 && !is_same_drive(drive, current_drive(walk))) {
            append(result, drive);
        }
        append(result, file_separator);
        append(result, component);
        JLI_TraceLauncher("       path_prefix = %s\n", result.c_str());
        // Below what is missing there is nothing, but "." and ".." lead back.
        const bool may_exist =
            exists || strcmp(component, ".") == 0 || strcmp(component, "..") == 0;
        if (may_exist && !has_surplus_separator(result.view())) {
            exists = resolve_prefix(walk, result);
        }
    }
}

// Leaves the absolute form in walk.resolved.
void resolve(path_list_walk &walk, const char *old_path) {
    JLI_TraceLauncher("RESOLVE PATH:\n"
                      "-------------\n"
                      "   old_path: %s\n",
                      old_path);
    text_ptr copy;
    if (strchr(old_path, '/') != nullptr) {
        copy = copy_text(old_path);
        JLI_TraceLauncher("   old_path_copy contains forward slashes:      %s\n", copy.get());
        replace_char(copy.get(), '/', file_separator);
        JLI_TraceLauncher("   old_path_copy with forward slashes replaced: %s\n", copy.get());
    }
    make_absolute(walk, copy == nullptr ? old_path : copy.get());
    clear(walk.resolved);
    walk_components(walk, walk.resolved);
    JLI_TraceLauncher("   old_path_abs: %s\n\n", walk.resolved.c_str());
    walk.forget_components();
}

bool lies_below(std::string_view path, std::string_view home) {
    return path.starts_with(home) &&
           (path.size() == home.size() || path[home.size()] == file_separator);
}

void rewrite_path(path_list_walk &walk, const text_ptr &path, std::string_view old_home,
                  const char *new_home, text_buffer &list) {
    resolve(walk, path.get());
    const char *absolute = walk.resolved.c_str();
    if (!lies_below(absolute, old_home)) {
        JLI_TraceLauncher("NOT TRANSFORMING PATH:\n"
                          "----------------------\n"
                          "   old_path: %s\n"
                          "   new_path: %s\n\n",
                          path.get(), path.get());
        append(list, path.get());
        return;
    }
    const size_t start = list.length;
    append(list, new_home);
    append(list, absolute + old_home.size());
    JLI_TraceLauncher("TRANSFORMING PATH:\n"
                      "------------------\n"
                      "   old_path_abs: %s\n"
                      "   new_path: %s\n\n",
                      absolute, list.c_str() + start);
}

void rewrite_list(std::string_view paths, std::string_view old_home, const char *new_home,
                  text_buffer &list) {
    const bool has_commas_alone = paths.find(path_separator) == std::string_view::npos;
    const char separator = has_commas_alone ? ',' : path_separator;
    const shared_disk_queries shared;
    path_list_walk &walk = *shared_walk;
    while (true) {
        const size_t length = paths.find(separator);
        const bool is_last = length == std::string_view::npos;
        const std::string_view path(paths.data(), is_last ? paths.size() : length);
        rewrite_path(walk, copy_text(path), old_home, new_home, list);
        if (is_last) {
            return;
        }
        append(list, separator);
        paths.remove_prefix(length + 1);
    }
}

} // namespace

char *replaceLauncherHomeWithRIHome(const char *arg, const char *old_home, const char *new_home,
                                    int has_name, char name_delimiter) {
    const char *paths = arg;
    std::string_view trace_label = "-cp or -classpath";
    text_buffer list;
    if (has_name == 1) {
        paths = strchr(arg, name_delimiter) + 1;
        const size_t name_length = static_cast<size_t>(paths - arg) - 1;
        trace_label = {arg, name_length};
        append(list, {arg, name_length + 1});
    }
    JLI_TraceLauncher("TRANSFORMING PATH LIST:\n"
                      "-----------------------\n"
                      "   property:  %.*s\n"
                      "   old_paths: %s\n\n",
                      static_cast<int>(trace_label.size()), trace_label.data(), paths);
    rewrite_list(paths, old_home, new_home, list);
    JLI_TraceLauncher("TRANSFORM PATH LIST END:\n"
                      "------------------------\n"
                      "   newPathList: %s\n\n",
                      list.c_str());
    char *result = copy_text(list.view()).release();
    append_entry(newPathList, &newPathListCount, result);
    return result;
}

void resolve_path(const char *old_path, char *result) {
    const shared_disk_queries shared;
    resolve(*shared_walk, old_path);
    result[0] = '\0';
    append_to_state_text(result, shared_walk->resolved.c_str());
}

char *replace_char(char *text, char from, char to) {
    for (char *c = text; *c != '\0'; c++) {
        if (*c == from) {
            *c = to;
        }
    }
    return text;
}

shared_disk_queries::shared_disk_queries() : is_outermost(shared_walk == nullptr) {
    if (is_outermost) {
        shared_walk = new (JLI_MemAlloc(sizeof(path_list_walk))) path_list_walk;
    }
}

shared_disk_queries::~shared_disk_queries() {
    if (is_outermost) {
        forget();
    }
}

void shared_disk_queries::forget() {
    if (shared_walk != nullptr) {
        shared_walk->~path_list_walk();
        JLI_MemFree(shared_walk);
        shared_walk = nullptr;
    }
}
