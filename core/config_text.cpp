#include "core/config_text.h"

#include "core/jlp_vars.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "platform/windows_services.h"

int is_space(char c) {
    return is_white_space(c) ? 1 : 0;
}

void trim(const char *text, char *output) {
    append_to_state_text(output, trimmed(text));
}

void split(const char *text, char **array, int *count, const char *lead, const char *tail,
           const char *delimiter) {
    const std::string_view delimiter_view(delimiter);
    const size_t tail_length = std::string_view(tail).size();
    std::string_view rest(text);
    if (rest.size() <= std::string_view(lead).size()) {
        return;
    }
    rest.remove_prefix(std::string_view(lead).size());
    for (bool is_last = false; !is_last;) {
        size_t length = rest.find(delimiter_view);
        is_last = delimiter_view.empty() || length == std::string_view::npos;
        if (is_last) {
            length = rest.size() > tail_length ? rest.size() - tail_length : 0;
        }
        if (length > 0) {
            append_entry(array, count, copy_text({rest.data(), length}).release());
        }
        if (!is_last) {
            rest.remove_prefix(length + delimiter_view.size());
        }
    }
}

int is_path_relative(const char *path) {
    return path[0] != '\0' && path[1] != ':' ? 1 : 0;
}

void prepend_launcher_home_to_relative_path(const char *path, char *output) {
    text_ptr joined;
    if (is_path_relative(path)) {
        joined = format_text("%s%s%s", launcher_home, file_separator_str, path);
        path = joined.get();
    }
    if (GetFullPathNameA(path, TEXT_SIZE, output, nullptr) >= TEXT_SIZE) {
        refuse_long_text(path);
    }
}
