#ifndef CORE_REWRITING_JAVA_OPTIONS_H
#define CORE_REWRITING_JAVA_OPTIONS_H

// What the launch modes share: the classes of options that their tables speak of, and how an
// argument is placed in a list. All but the constants read the launcher state.

// One of the two lists that a command line is split into.
struct argument_list {
    char **entries;
    int *count;
};

// Appends the command-line form of `arg`, a copy of processArg's. A full list ends the process with
// status 1.
void place(const argument_list &list, const char *arg);

// Appends a constant text itself.
void place_constant(const argument_list &list, const char *text);

// "-cp" and "-classpath", whatever follows, and with a Java 9 or later host "--class-path": the
// value is the next argument.
bool is_class_path_option(const char *arg);

// "--class-path=" with its value, with a Java 9 or later host.
bool is_class_path_assignment(const char *arg);

// The options on modules whose value is the next argument, with a Java 9 or later host.
bool is_module_value_option(const char *arg);

// "-jar", the main class or the main module: what follows belongs to the application.
bool ends_options(const char *arg);

// An "-Xmx" argument in megabytes.
bool is_heap_size_in_megabytes(const char *arg);

// Places such an argument: the constant "-Xmx256m" when its value is at most 255, since a Java with
// agents does not start in less. Leaves the value in new_mem_val_as_str when it fits there.
void place_heap_size(const argument_list &list, const char *arg);

// Places the "-agentlib:" form of an "-Xrun" argument.
void place_agent_library(const argument_list &list, const char *xrun_arg);

// Places a rules property of the user's; a configured rule file takes its place and is noted in
// *added.
void place_rules_property(const argument_list &list, const char *arg, int *added);

// `arg` with its paths moved from the launcher home to `home`; the text belongs to newPathList.
const char *moved_value(const char *arg, const char *home);      // the whole argument is the list
const char *moved_assignment(const char *arg, const char *home); // the list follows the first "="
const char *moved_property(const char *arg, const char *home);   // as it has a "=" or not
const char *moved_boot_class_path(const char *arg,
                                  const char *home); // the list follows the first ":"

// Places "--class-path=" and its moved value; as "-cp" and the value where `as_cp` is set.
void place_class_path_assignment(const argument_list &list, const char *arg, const char *home,
                                 bool as_cp);

#endif
