#include "platform/command_line.h"

#include <cstring>

namespace {

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

char *put_backslashes(char *to, size_t count) {
    memset(to, '\\', count);
    return to + count;
}

} // namespace

//   a\\b -> a\\b    "a b\\" -> a b\    a\"b -> a"b    "a""b c" -> a"b c    """a""" -> "a"
const char *take_argument(const char *from, char **to) {
    char *out = *to;
    bool in_quotes = false;
    while (*from != '\0' && (in_quotes || !is_blank(*from))) {
        const size_t backslashes = strspn(from, "\\");
        from += backslashes;
        const bool before_quote = *from == '"';
        out = put_backslashes(out, before_quote ? backslashes / 2 : backslashes);
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

void take_arguments(const char *text, char **list, char *room) {
    while (*(text += strspn(text, " \t")) != '\0') {
        *list++ = room;
        text = take_argument(text, &room);
    }
    *list = nullptr;
}

// Each argument takes at least one byte and, but for the last, a blank.
size_t argument_slots(const char *text) {
    return (strlen(text) + 1) / 2 + 1;
}

// A run of backslashes is doubled where a quote follows it, one of the argument's own or the
// closing one:   a b\ -> "a b\\"    a\"b -> "a\\\"b"
char *quote_argument(const char *argument, char *to) {
    if (*argument != '\0' && strpbrk(argument, " \t\"*?") == nullptr) {
        const size_t length = strlen(argument);
        memcpy(to, argument, length);
        return to + length;
    }
    *to++ = '"';
    while (true) {
        const size_t backslashes = strspn(argument, "\\");
        argument += backslashes;
        const bool before_quote = *argument == '"' || *argument == '\0';
        to = put_backslashes(to, before_quote ? 2 * backslashes : backslashes);
        if (*argument == '\0') {
            break;
        }
        if (*argument == '"') {
            *to++ = '\\';
        }
        *to++ = *argument++;
    }
    *to++ = '"';
    return to;
}
