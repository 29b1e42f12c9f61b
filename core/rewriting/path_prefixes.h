#ifndef CORE_REWRITING_PATH_PREFIXES_H
#define CORE_REWRITING_PATH_PREFIXES_H

// What the file system says of the prefixes of paths, asked once for each that exists.

#include <string_view>

#include "jli/text.h"

struct path_prefix {
    text_ptr path;
    text_ptr full_path; // null where it is the path itself
};

// The prefixes known to exist: a hash table with open addressing.
struct path_prefixes {
    path_prefix *slots = nullptr;
    size_t slot_count = 0;
    size_t used = 0;

    path_prefixes() = default;
    path_prefixes(const path_prefixes &) = delete;
    path_prefixes &operator=(const path_prefixes &) = delete;
    ~path_prefixes();
};

// The full path name of what exists at `path`, owned by `known`; null when nothing does.
const char *existing_full_path(path_prefixes &known, std::string_view path);

#endif
