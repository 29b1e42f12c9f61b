#include "platform/posix/command_line.h"

#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/command_line.h"
#include "platform/files.h"
#include "platform/posix/last_error.h"
#include "platform/posix/paths.h"

namespace {

constexpr char EXTENSION[] = ".exe";

bool has_dot(std::string_view name) {
    size_t dot = name.rfind('.');
    size_t separator = name.find_last_of("\\/");
    return dot != std::string_view::npos &&
           (separator == std::string_view::npos || dot > separator);
}

// Looks for the file that the first `length` bytes of the buffer name. The buffer has room for the
// extension; what stands behind the name is lost.
bool names_program(char *name, size_t length, std::span<char> path) {
    name[length] = '\0';
    if (is_file(name)) {
        return unix_path(name, path) > 0;
    }
    if (length == 0 || has_dot(name)) {
        return false;
    }
    memcpy(name + length, EXTENSION, sizeof EXTENSION);
    return is_file(name) && unix_path(name, path) > 0;
}

size_t find_quoted(const char *line, char *name, std::span<char> path) {
    const char *end = strchr(line + 1, '"');
    if (end == nullptr) {
        return 0;
    }
    size_t length = static_cast<size_t>(end - line) - 1;
    memcpy(name, line + 1, length);
    return names_program(name, length, path) ? length + 2 : 0;
}

size_t find_unquoted(const char *line, char *name, std::span<char> path) {
    size_t length = 0;
    do {
        length += strcspn(line + length, " \t");
        memcpy(name, line, length);
        if (names_program(name, length, path)) {
            return length;
        }
    } while (line[length++] != '\0');
    return 0;
}

// The program's own name: its quotes go, all else stays.
const char *take_program(const char *from, size_t length, char **to) {
    char *out = *to;
    const char *end = *from == '"' ? end_of_program_name(from) : from + length;
    for (; from < end; from++) {
        if (*from != '"') {
            *out++ = *from;
        }
    }
    *out++ = '\0';
    *to = out;
    return end;
}

} // namespace

size_t find_program(const char *command_line, std::span<char> unix_path) {
    char *name = static_cast<char *>(malloc(strlen(command_line) + sizeof EXTENSION));
    if (name == nullptr) {
        fail_with(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    size_t length = *command_line == '"' ? find_quoted(command_line, name, unix_path)
                                         : find_unquoted(command_line, name, unix_path);
    free(name);
    if (length == 0) {
        fail_with(ERROR_FILE_NOT_FOUND);
    }
    return length;
}

char **split_command_line(const char *command_line, size_t program_length) {
    const size_t list_size = (1 + argument_slots(command_line)) * sizeof(char *);
    char **arguments = static_cast<char **>(malloc(list_size + strlen(command_line) + 2));
    if (arguments == nullptr) {
        return nullptr;
    }
    char *text = reinterpret_cast<char *>(arguments) + list_size;
    arguments[0] = text;
    const char *rest = take_program(command_line, program_length, &text);
    take_arguments(rest, arguments + 1, text);
    return arguments;
}
