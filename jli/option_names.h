#ifndef JLI_OPTION_NAMES_H
#define JLI_OPTION_NAMES_H

// The options of a Java command line that the toolkit knows.

#include "jli/packed_texts.h"

// What an option is; one bit each.
enum option_class : unsigned char {
    CLASS_PATH_OPTION = 1,
    LAUNCHER_MAIN_OPTION = 2,
    DESCRIBE_MODULE_OPTION = 4,
    SOURCE_OPTION = 8,
    MODULE_OPTION = 16,
    // Besides MODULE_PREFIX it ends argument processing; indirect sources may not hold it.
    TERMINAL_OPTION = 32,
    LAUNCHER_OPTION =
        CLASS_PATH_OPTION | LAUNCHER_MAIN_OPTION | DESCRIBE_MODULE_OPTION | SOURCE_OPTION,
    // Its value is the next argument.
    WHITE_SPACE_OPTION = LAUNCHER_OPTION | MODULE_OPTION
};

struct classed_option {
    std::string_view name;
    int classes;
};

// The most frequent ones first.
constexpr classed_option OPTIONS[] = {
    {"-cp", CLASS_PATH_OPTION},
    {"--add-opens", MODULE_OPTION},
    {"--add-exports", MODULE_OPTION},
    {"-classpath", CLASS_PATH_OPTION},
    {"--class-path", CLASS_PATH_OPTION},
    {"--add-modules", MODULE_OPTION},
    {"--module-path", MODULE_OPTION},
    {"-p", MODULE_OPTION},
    {"-jar", TERMINAL_OPTION},
    {"--module", LAUNCHER_MAIN_OPTION | TERMINAL_OPTION},
    {"-m", LAUNCHER_MAIN_OPTION | TERMINAL_OPTION},
    {"--upgrade-module-path", MODULE_OPTION},
    {"--limit-modules", MODULE_OPTION},
    {"--add-reads", MODULE_OPTION},
    {"--patch-module", MODULE_OPTION},
    {"--describe-module", DESCRIBE_MODULE_OPTION},
    {"-d", DESCRIBE_MODULE_OPTION},
    {"--source", SOURCE_OPTION},
    {"-version", TERMINAL_OPTION},
    {"--version", TERMINAL_OPTION},
    {"-fullversion", TERMINAL_OPTION},
    {"--full-version", TERMINAL_OPTION},
    {"-h", TERMINAL_OPTION},
    {"-?", TERMINAL_OPTION},
    {"-help", TERMINAL_OPTION},
    {"--help", TERMINAL_OPTION},
    {"-X", TERMINAL_OPTION},
    {"--help-extra", TERMINAL_OPTION},
    {"--dry-run", TERMINAL_OPTION},
};

// The classes of `arg`, put together; 0 when it is none of these.
int classes_of(const char *arg);

// No entry for --add-opens=: the Java launcher does not know this form as a module option either.
constexpr auto LONG_FORM_MODULE_PREFIXES =
    packed("--module-path=", "--upgrade-module-path=", "--add-modules=", "--limit-modules=",
           "--add-exports=", "--add-reads=", "--patch-module=");

constexpr char MODULE_PREFIX[] = "--module=";
constexpr char DISABLE_ARG_FILES_OPTION[] = "--disable-@files";

#endif
