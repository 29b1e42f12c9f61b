#ifndef BENCH_ARG_FILE_LINES_H
#define BENCH_ARG_FILE_LINES_H

// Lines of made-up argument files; the number makes a difference between them.

#include <string>

inline std::string plain_option(const std::string &number) {
    return "-Dorg.example.option" + number + "=value" + number + "\n";
}

// Four jars, quoted, with their backslashes escaped.
inline std::string class_path(const std::string &number) {
    std::string line = "-cp \"";
    for (const char *jar : {"lib\\\\one-", "lib\\\\ext\\\\two-", "three-", "plugins\\\\four-"}) {
        line += "C:\\\\Program Files\\\\Example\\\\" + (jar + number) + ".jar;";
    }
    return line + "\"\n";
}

#endif
