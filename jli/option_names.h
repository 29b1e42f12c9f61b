#ifndef JLI_OPTION_NAMES_H
#define JLI_OPTION_NAMES_H

// The options of a Java command line that the toolkit knows, by class, the most frequent ones
// first.

#include "jli/packed_texts.h"

constexpr auto CLASS_PATH_OPTIONS = packed("-cp", "-classpath", "--class-path");

constexpr auto LAUNCHER_MAIN_OPTIONS = packed("--module", "-m");

constexpr auto DESCRIBE_MODULE_OPTIONS = packed("--describe-module", "-d");
constexpr auto SOURCE_OPTIONS = packed("--source");

constexpr auto MODULE_OPTIONS =
    packed("--add-opens", "--add-exports", "--add-modules", "--module-path", "-p",
           "--upgrade-module-path", "--limit-modules", "--add-reads", "--patch-module");

// No entry for --add-opens=: the Java launcher does not know this form as a module option either.
constexpr auto LONG_FORM_MODULE_PREFIXES =
    packed("--module-path=", "--upgrade-module-path=", "--add-modules=", "--limit-modules=",
           "--add-exports=", "--add-reads=", "--patch-module=");

// Options that end argument processing, besides MODULE_PREFIX; indirect sources may not hold them.
constexpr auto TERMINAL_OPTIONS =
    packed("-jar", "-m", "--module", "--dry-run", "-h", "-?", "-help", "--help", "-X",
           "--help-extra", "-version", "--version", "-fullversion", "--full-version");

constexpr char MODULE_PREFIX[] = "--module=";
constexpr char DISABLE_ARG_FILES_OPTION[] = "--disable-@files";

#endif
