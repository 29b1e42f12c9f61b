#ifndef JLI_PACKED_TEXTS_H
#define JLI_PACKED_TEXTS_H

// Constant texts one behind the other, each behind its length, and a 0 at the end: half the room of
// an array of texts, and quickly gone through.

#include <algorithm>
#include <array>
#include <string_view>

// Puts `text` behind its length; returned is what follows.
constexpr char *pack(char *to, std::string_view text) {
    *to = static_cast<char>(text.size());
    return std::ranges::copy(text, to + 1).out;
}

template <size_t... SIZES>
consteval auto packed(const char (&...entries)[SIZES]) {
    static_assert(((SIZES <= 128) && ...), "a length is one byte");
    std::array<char, (SIZES + ... + 1)> bytes{};
    char *end = bytes.data();
    ((end = pack(end, {entries, SIZES - 1})), ...);
    return bytes;
}

bool begins_with_one_of(const char *text, const char *packed_texts);

#endif
