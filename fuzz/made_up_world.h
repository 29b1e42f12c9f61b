#ifndef FUZZ_MADE_UP_WORLD_H
#define FUZZ_MADE_UP_WORLD_H

// The disk and the environment of a run. Nothing has to be made: an entry with a dot in its name is a file, any
// other a directory. What holds a character that Windows has in no name is missing, and what holds "!" cannot be
// read or written. A path with "%" has no full path, and one with "&" a longer one.

#include <map>
#include <string>

#include "platform/files.h"

constexpr size_t LONGEST_PATH = 32766;

struct made_up_world {
    std::string missing; // what holds this is missing as well
    std::string turned;  // what holds this is a file instead of a directory, or the reverse
    std::string config;  // of every launcher.cfg
    std::string content; // of every other file

    // Variables as the process received them, and as the run changes them. A value with "+" is changed by another
    // program when the run has asked for its size.
    std::map<std::string, std::string> variables, changes;
    unsigned changes_to_failure; // the run's change of this number fails

    // What the run has found out.
    std::string last_file; // found
    std::string last_home; // that of the launch mode, as it was then
    std::string last_read;
    bool has_log;
};
extern made_up_world world;

#endif
