#ifndef CORE_SETTINGS_H
#define CORE_SETTINGS_H

// The keys of launcher.cfg. What is known about a key stands in its row and nowhere else: the
// presets, the reader, the dump and the limits of the lists walk the rows.

enum class value_kind {
    toggle,      // on when it begins with "true"
    path,        // kept as a full path, a relative one from launcher_home; an empty one is none
    log,         // a path as well, which is not kept
    list,        // entries with "=" between them
    quoted_list, // entries in double quotes, with one blank between them
    mode,        // begins with the name of a launch mode
};

// An array of the launcher state, to which each line appends.
struct option_list {
    char **slots;
    int *count;
    int limit;     // what does not fit ends the process: "too many <key> entries"
    int entry_gap; // blanks between label and entry in the dump
    const char *entry_label;
    // Traces what stands in the dump between the value and the entries.
    void (*dump_more)() = nullptr;
};

// A property that tells Java, made of each value that is not empty; allocated empty.
struct java_property {
    char **argument;
    const char *format;
};

struct setting {
    const char *key; // without the "="
    value_kind kind;
    // The line of the dump. Programs read dumps: every blank counts. A key without a label has no
    // line, and does not count where the dump warns that no property is set.
    int label_width = 38;
    const char *label = nullptr;
    // Where the value is kept: a text of TEXT_SIZE bytes, which each load allocates, empty but for
    // the default mode; a list; a flag, which each load sets to 0, and the last line sets unless a
    // native host starts. Otherwise the value lasts as long as the load.
    char **text = nullptr;
    const java_property *property = nullptr;
    const option_list *list = nullptr;
    int *flag = nullptr;
    // What is special about the key: called for each line, of a toggle each that is on, with the
    // trimmed value, or of a path with the buffer that keeps it; false when the value is refused.
    bool (*apply)(const setting &row, char *value) = nullptr;
};

enum { SETTING_COUNT = 16 };
extern const setting SETTINGS[SETTING_COUNT]; // in the order of the dump

// The row whose key and "=" a line begins with, which a zero byte ends somewhere; null for every
// other line, which is passed over.
const setting *setting_of(const char *line);

// The row whose value is kept in this text or flag of the launcher state; null for another.
const setting *setting_kept_in(const void *place);

// Its key. A home's is the environment variable of the same name, too.
inline const char *key_of(const void *place) {
    return setting_kept_in(place)->key;
}

// Opens LOG_FILE_FD, the trace log, in the place of an open one; false when it cannot be. Who puts
// another function here leaves the disk alone.
extern bool (*open_trace_log)(const char *path);

#endif
