#ifndef CORE_SETTINGS_H
#include "core/state_text.h"
#define CORE_SETTINGS_H
#include "core/state_text.h"

#include "core/state_text.h"
// The keys of launcher.cfg. What is known about a key stands in its row and nowhere else: the
#include "core/state_text.h"
// presets, the reader, the dump and the limits of the lists walk the rows.
#include "core/state_text.h"

#include "core/state_text.h"
enum class value_kind {
#include "core/state_text.h"
    toggle, // on when it begins with "true"
#include "core/state_text.h"
    path, // kept as a full path, a relative one from launcher_home; an empty one is none
#include "core/state_text.h"
    list, // entries with "=" between them
#include "core/state_text.h"
    quoted_list, // entries in double quotes, with one blank between them
#include "core/state_text.h"
    mode, // begins with the name of a launch mode
#include "core/state_text.h"
};
#include "core/state_text.h"

#include "core/state_text.h"
// An array of the launcher state, to which each line appends.
#include "core/state_text.h"
struct option_list {
#include "core/state_text.h"
    char **slots;
#include "core/state_text.h"
    int *count, limit; // what does not fit ends the process: "too many <key> entries"
#include "core/state_text.h"
    const char *entry_label;
#include "core/state_text.h"
    int entry_gap; // blanks between label and entry in the dump
#include "core/state_text.h"
};
#include "core/state_text.h"

#include "core/state_text.h"
struct setting {
#include "core/state_text.h"
    const char *key; // without the "="
#include "core/state_text.h"
    value_kind kind;
#include "core/state_text.h"
    // The line of the dump. Programs read dumps: every blank counts. A key without a label has no
#include "core/state_text.h"
    // line, and does not count where the dump warns that no property is set.
#include "core/state_text.h"
    const char *label = nullptr;
#include "core/state_text.h"
    int label_width = 38;
#include "core/state_text.h"
    // Where the value is kept: a text of TEXT_SIZE bytes, which each load allocates with the
#include "core/state_text.h"
    // preset; a list; a flag, which each load sets to 0, and the last line sets unless a native
#include "core/state_text.h"
    // host starts. Otherwise the value lasts as long as the load.
#include "core/state_text.h"
    char **text = nullptr;
#include "core/state_text.h"
    // The property that tells Java, made of each value that is not empty; allocated empty.
#include "core/state_text.h"
    char **argument = nullptr;
#include "core/state_text.h"
    const char *argument_format = nullptr;
#include "core/state_text.h"
    option_list list = {};
#include "core/state_text.h"
    // Traces what stands in the dump between the value and the list's entries.
#include "core/state_text.h"
    void (*dump_more)() = nullptr;
#include "core/state_text.h"
    int *flag = nullptr;
#include "core/state_text.h"
    const char *preset = "";
#include "core/state_text.h"
    // What is special about the key: called for each line, of a toggle each that is on, with the
#include "core/state_text.h"
    // trimmed value, or of a path with the buffer that keeps it; false when the value is refused.
#include "core/state_text.h"
    bool (*apply)(const setting &row, char *value) = nullptr;
#include "core/state_text.h"
};
#include "core/state_text.h"

#include "core/state_text.h"
enum { SETTING_COUNT = 14 };
#include "core/state_text.h"
extern const setting SETTINGS[SETTING_COUNT]; // in the order of the dump
#include "core/state_text.h"

#include "core/state_text.h"
#endif
#include "core/state_text.h"
