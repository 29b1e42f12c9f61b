#include "tests/rewriting/disk_queries.h"

#include "platform/files.h"

disk_queries asked;

// The linker hands the product's calls of kind_of() and current_directory() to these.
extern "C" {
entry_kind __real__Z7kind_ofPKc(const char *path);
entry_kind __wrap__Z7kind_ofPKc(const char *path);
char *__real__Z17current_directoryv();
char *__wrap__Z17current_directoryv();
}

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    asked.paths.push_back(path);
    return __real__Z7kind_ofPKc(path);
}

char *__wrap__Z17current_directoryv() {
    asked.current_directory++;
    return __real__Z17current_directoryv();
}
