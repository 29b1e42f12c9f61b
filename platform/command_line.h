#ifndef PLATFORM_COMMAND_LINE_H
#define PLATFORM_COMMAND_LINE_H

// Command lines as the Windows runtime reads them, without its expansion of * and ?: the program's
// name, then arguments apart by blanks and tabs. Texts are bytes; what is no UTF-8 stays as it is.

#include <cstddef>

// Where the program's name, the first word of a command line, ends. It knows no escapes: quotes
// come and go, and it lasts to the first blank or tab outside them. A line that begins with a blank
// has an empty name.
template <typename character>
const character *end_of_program_name(const character *command_line) {
    bool in_quotes = false;
    const character *at = command_line;
    for (; *at != '\0' && (in_quotes || (*at != ' ' && *at != '\t')); at++) {
        in_quotes = in_quotes != (*at == '"');
    }
    return at;
}

// Reads the arguments of a text that has no program's name in front: fills the null-terminated
// `list`, which has room for argument_slots() pointers, with texts that it writes to `room`, which
// is as large as the text and its terminator. A backslash is special before a quote only: 2n of
// them make n and the quote is one of syntax, 2n+1 make n and a quote as such. Within quotes a
// doubled quote is a quote as such, too.
extern "C" void take_arguments(const char *text, char **list, char *room);
extern "C" size_t argument_slots(const char *text);

// Reads the one argument that `from` begins with to `*to`, which then stands behind its terminator,
// and returns where it ends in the text.
extern "C" const char *take_argument(const char *from, char **to);

// Writes the argument so that take_arguments() reads it back, whatever it holds, and returns where
// the writing ended; no terminator is written. Quotes are set where a blank, a tab, a quote or
// nothing at all asks for them, and around * and ?, which a runtime may expand outside of quotes.
// `to` has room for QUOTING_BYTES more than twice the argument.
constexpr size_t QUOTING_BYTES = 2;
extern "C" char *quote_argument(const char *argument, char *to);

// What follows the program's name in this process's own command line, with the blanks in front: a
// heap text of the caller's; null when memory is out. On Windows these are the characters that the
// process was started with, which the arguments of main() no longer tell; elsewhere each argument
// of main() behind a blank, quoted where it needs to be.
extern "C" char *own_arguments_text();

#endif
