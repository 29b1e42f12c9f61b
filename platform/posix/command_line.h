#ifndef PLATFORM_POSIX_COMMAND_LINE_H
#define PLATFORM_POSIX_COMMAND_LINE_H

#include <cstddef>
#include <span>

// Finds the program that a command line names first: the text in double quotes that it begins with,
// or else the first of the texts up to a blank, up to the next blank and so on that names a file,
// as it stands or (its last component without a dot) with ".exe". Writes its Unix path and returns
// how many bytes of the command line name it, quotes included; 0 when there is no such file, with
// the last error set.
size_t find_program(const char *command_line, std::span<char> unix_path);

// The arguments that the Windows runtime makes of a command line whose first `program_length` bytes
// name the program: a null-terminated list in one heap block of the caller's, texts included; null
// when memory is out.
char **split_command_line(const char *command_line, size_t program_length);

#endif
