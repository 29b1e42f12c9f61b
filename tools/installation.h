#ifndef TOOLS_INSTALLATION_H
#define TOOLS_INSTALLATION_H

// Which launchers lie in a home, and which of them is explained.

#include "jli/text_buffer.h"
#include "tools/request.h"

struct installation {
    text_ptr home;        // without a trailing separator
    const char *folder;   // \bin or \jre\bin
    text_ptr name;        // of the launcher's file
    text_ptr file;        // its full path
    bool is_launcher;     // the file is there and holds a launcher of any version
    bool is_home_missing; // there is no such folder
};
extern installation the_installation;

// Whether the file holds a launcher of any version.
bool is_launcher_file(const char *file);

// Takes the home that is asked for, or the one that explain_launch lies in (where it lies in no bin
// folder the process ends with status 2), and the launcher in it: java.exe, or what is asked for,
// in bin or else in jre\bin.
void find_installation(const request &asked);

// Adds what is wrong with the launchers to the findings. Needs the homes, as far as they are known.
void review_installation();

// A line for each launcher and each file in the place of one.
void append_installation(text_buffer &report);

#endif
