#include "platform/posix/command_line.h"

#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/files.h"
#include "platform/posix/last_error.h"
#include "platform/posix/paths.h"

namespace {

constexpr char EXTENSION[] = ".exe";

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

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

// Reads one argument at `from`, writes it to *to with its terminator and returns where it ends.
// A backslash is special before a quote only: 2n of them make n and the quote is one of syntax,
// 2n+1 make n and a quote as such. Within quotes a doubled quote is a quote as such, too:
//   a\\b -> a\\b    "a b\\" -> a b\    a\"b -> a"b    "a""b c" -> a"b c    """a""" -> "a"
const char *take_argument(const char *from, char **to) {
    char *out = *to;
    bool in_quotes = false;
    while (*from != '\0' && (in_quotes || !is_blank(*from))) {
        size_t backslashes = strspn(from, "\\");
        from += backslashes;
        bool before_quote = *from == '"';
        size_t kept = before_quote ? backslashes / 2 : backslashes;
        memset(out, '\\', kept);
        out += kept;
        if (!before_quote) {
            if (backslashes == 0) {
                *out++ = *from++;
            }
        } else if (backslashes % 2 == 1) {
            *out++ = *from++;
        } else if (in_quotes && from[1] == '"') {
            *out++ = '"';
            from += 2;
        } else {
            in_quotes = !in_quotes;
            from++;
        }
    }
    *out++ = '\0';
    *to = out;
    return from;
}

// The program's own name knows no escapes: quotes come and go, all else stays.
const char *take_program(const char *from, size_t length, char **to) {
    char *out = *to;
    if (*from != '"') {
        memcpy(out, from, length);
        out += length;
        from += length;
    } else {
        bool in_quotes = false;
        for (; *from != '\0' && (in_quotes || !is_blank(*from)); from++) {
            if (*from == '"') {
                in_quotes = !in_quotes;
            } else {
                *out++ = *from;
            }
        }
    }
    *out++ = '\0';
    *to = out;
    return from;
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
    // Each argument takes at least one byte and a blank.
    size_t size = strlen(command_line) + 2;
    size_t list_size = (size / 2 + 2) * sizeof(char *);
    char **arguments = static_cast<char **>(malloc(list_size + size));
    if (arguments == nullptr) {
        return nullptr;
    }
    char *text = reinterpret_cast<char *>(arguments) + list_size;
    size_t count = 0;
    arguments[count++] = text;
    const char *rest = take_program(command_line, program_length, &text);
    while (*(rest += strspn(rest, " \t")) != '\0') {
        arguments[count++] = text;
        rest = take_argument(rest, &text);
    }
    arguments[count] = nullptr;
    return arguments;
}
