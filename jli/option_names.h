#ifndef JLI_OPTION_NAMES_H
#define JLI_OPTION_NAMES_H

// The options of a Java command line that the toolkit knows, by class.

// Each class is one text, a name behind the other: that takes half the room of an array of texts.
constexpr char CLASS_PATH_OPTIONS[] = "-classpath\0-cp\0--class-path\0";

constexpr char LAUNCHER_MAIN_OPTIONS[] = "--module\0-m\0";

constexpr char DESCRIBE_MODULE_OPTIONS[] = "--describe-module\0-d\0";
constexpr char SOURCE_OPTIONS[] = "--source\0";

constexpr char MODULE_OPTIONS[] = "--module-path\0-p\0--upgrade-module-path\0--add-modules\0"
                                  "--limit-modules\0--add-exports\0--add-opens\0--add-reads\0"
                                  "--patch-module\0";

// No entry for --add-opens=: the Java launcher does not know this form as a module option either.
constexpr char LONG_FORM_MODULE_PREFIXES[] =
    "--module-path=\0--upgrade-module-path=\0--add-modules=\0--limit-modules=\0--add-exports=\0"
    "--add-reads=\0--patch-module=\0";

// Options that end argument processing, besides MODULE_PREFIX; indirect sources may not hold them.
constexpr char TERMINAL_OPTIONS[] =
    "-jar\0-m\0--module\0--dry-run\0-h\0-?\0-help\0--help\0-X\0--help-extra\0-version\0--version\0"
    "-fullversion\0--full-version\0";

constexpr char MODULE_PREFIX[] = "--module=";
constexpr char DISABLE_ARG_FILES_OPTION[] = "--disable-@files";

// Whether `arg` is one of the class.
bool is_one_of(const char *names, const char *arg);

#endif
