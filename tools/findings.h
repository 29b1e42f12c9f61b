#ifndef TOOLS_FINDINGS_H
#define TOOLS_FINDINGS_H

// What is wrong or may be: a sentence each for the cause and its mend.

#include "core/settings.h"
#include "jli/text.h"
#include "jli/text_buffer.h"

// How likely it keeps a launch that fails from going through; what is about the key that the launch
// fails at is likelier than its kind.
enum class cause {
    hidden, // said of that key alone
    aside,  // changes no verdict
    line,   // a line of launcher.cfg
    own,    // the failing test itself
    mode,   // the launch mode asks for more than is there
    key,    // about the key that fails
    file,   // launcher.cfg as a whole
    place,  // the launcher itself
};

// `about` is the setting that it is about, or null.
void add_finding(cause kind, const setting *about, text_ptr text);

// The findings, likeliest first, each behind `lead`; `failing` is the setting that the launch fails
// at, or null. With `first` the likeliest alone, without it all but that. What goes beyond a
// readable number is counted.
void append_first_finding(text_buffer &report, const setting *failing);
void append_findings(text_buffer &report, const setting *failing, bool without_first);

#endif
