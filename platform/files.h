#ifndef PLATFORM_FILES_H
#define PLATFORM_FILES_H

// Files and directories by their Windows paths. What the rooms above call has C linkage in this
// folder: a plain name, for which the linker can put in that of a test.

#include <cstdio>

enum class entry_kind { missing, file, directory };

// What stands at `path`: directory, file (anything that is not a directory), or missing when the
// status cannot be read. One trailing separator is ignored, after a file's name too. "." and ".."
// are resolved by text before the file system is asked, so missing\.. exists.
extern "C" entry_kind kind_of(const char *path);

inline bool is_directory(const char *path) {
    return kind_of(path) == entry_kind::directory;
}
inline bool is_file(const char *path) {
    return kind_of(path) == entry_kind::file;
}

// Opens a file in the text mode of the Windows runtime, with fopen's modes "r" and "w+": reading,
// CR LF arrives as LF and Ctrl-Z ends the file; writing, LF becomes the line end of the system.
// Null (errno says why) when it cannot be opened; a directory never can. A stream for reading
// cannot be positioned. The stream is closed with fclose() and is not handed to child processes.
extern "C" FILE *open_text_file(const char *path, const char *mode);

// The current directory as a Windows path, in a new heap text of the caller's; null on failure.
extern "C" char *current_directory();

#endif
