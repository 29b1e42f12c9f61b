#ifndef TESTS_REWRITING_PLAIN_WALK_H
#define TESTS_REWRITING_PLAIN_WALK_H

// The yardstick for the path rewriting: a walk along one path that remembers nothing and asks the
// disk for every prefix.

#include <set>
#include <string>

struct plain_walk {
    std::string trace;
    std::string absolute;
    std::set<std::string> existing; // the prefixes that exist, as they were asked for
    size_t queries = 0;
};

plain_walk walk_plainly(const std::string &old_path);

#endif
