#include "tools/likeness.h"

#include <algorithm>

namespace {

constexpr size_t LONGEST = 64;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool same(char one, char other) {
    return lower(one) == lower(other);
}

} // namespace

int unlikeness(std::string_view one, std::string_view other) {
    if (one.size() > LONGEST || other.size() > LONGEST) {
        return LIKE + 1;
    }
    int costs[LONGEST + 1][LONGEST + 1]; // of the beginnings of both
    for (size_t i = 0; i <= one.size(); i++) {
        for (size_t j = 0; j <= other.size(); j++) {
            int &cost = costs[i][j];
            cost = static_cast<int>(std::max(i, j));
            if (i == 0 || j == 0) {
                continue;
            }
            cost = std::min({costs[i - 1][j] + 1, costs[i][j - 1] + 1,
                             costs[i - 1][j - 1] + (same(one[i - 1], other[j - 1]) ? 0 : 1)});
            if (i > 1 && j > 1 && same(one[i - 1], other[j - 2]) &&
                same(one[i - 2], other[j - 1])) {
                cost = std::min(cost, costs[i - 2][j - 2] + 1);
            }
        }
    }
    return costs[one.size()][other.size()];
}
