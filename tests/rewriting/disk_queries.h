#ifndef TESTS_REWRITING_DISK_QUERIES_H
#define TESTS_REWRITING_DISK_QUERIES_H

// What the product has asked the disk for since the last clear(): each path whose kind it wanted to
// know, and how often the current directory.

#include <string>
#include <vector>

struct disk_queries {
    std::vector<std::string> paths;
    int current_directory = 0;

    void clear() { *this = {}; }
};

extern disk_queries asked;

#endif
