#ifndef JLI_OPTION_NAMES_H
#define JLI_OPTION_NAMES_H

// The options of a Java command line that the toolkit knows, by class.

#include <string_view>

constexpr std::string_view CLASS_PATH_OPTIONS[] = {"-classpath", "-cp", "--class-path"};

constexpr std::string_view LAUNCHER_MAIN_OPTIONS[] = {"--module", "-m"};

constexpr std::string_view DESCRIBE_MODULE_OPTIONS[] = {"--describe-module", "-d"};
constexpr std::string_view SOURCE_OPTIONS[] = {"--source"};

constexpr std::string_view MODULE_OPTIONS[] = {
    "--module-path", "-p",          "--upgrade-module-path", "--add-modules",  "--limit-modules",
    "--add-exports", "--add-opens", "--add-reads",           "--patch-module",
};

// No entry for --add-opens=: the Java launcher does not know this form as a module option either.
constexpr std::string_view LONG_FORM_MODULE_PREFIXES[] = {
    "--module-path=", "--upgrade-module-path=", "--add-modules=",  "--limit-modules=",
    "--add-exports=", "--add-reads=",           "--patch-module=",
};

// Options that end argument processing, besides MODULE_PREFIX; indirect sources may not hold them.
constexpr std::string_view TERMINAL_OPTIONS[] = {
    "-jar",   "-m", "--module",     "--dry-run", "-h",        "-?",           "-help",
    "--help", "-X", "--help-extra", "-version",  "--version", "-fullversion", "--full-version",
};

constexpr char MODULE_PREFIX[] = "--module=";
constexpr char DISABLE_ARG_FILES_OPTION[] = "--disable-@files";

bool is_one_of(const std::string_view *names, size_t count, const std::string_view &arg);

template <size_t count>
bool is_one_of(const std::string_view (&names)[count], const std::string_view &arg) {
    return is_one_of(names, count, arg);
}

#endif
