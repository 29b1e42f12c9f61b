#ifndef JLI_ARG_FILE_GRAMMAR_H
#define JLI_ARG_FILE_GRAMMAR_H

// The bytes of an argument file: what they are to the grammar, and runs of those that change
// nothing.

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

// One bit each, so that classes can be put together.
enum byte_class : unsigned char {
    ORDINARY = 1,
    BLANK = 2,
    LINE_END = 4,
    COMMENT_SIGN = 8,
    BACKSLASH = 16,
    QUOTE = 32,
    NULL_BYTE = 64
};

// The vertical tab is ordinary here.
constexpr std::array<unsigned char, 256> BYTE_CLASSES = [] {
    std::array<unsigned char, 256> classes{};
    classes.fill(ORDINARY);
    classes[' '] = classes['\t'] = classes['\f'] = BLANK;
    classes['\n'] = classes['\r'] = LINE_END;
    classes['#'] = COMMENT_SIGN;
    classes['\\'] = BACKSLASH;
    classes['"'] = classes['\''] = QUOTE;
    classes['\0'] = NULL_BYTE;
    return classes;
}();

inline unsigned char class_of(char byte) {
    return BYTE_CLASSES[static_cast<unsigned char>(byte)];
}

// Every byte that is not ordinary is below this one, the backslash aside.
constexpr unsigned char ALL_ORDINARY_FROM = '(';

// How many of the eight bytes at `at` come before the first that may be other than ordinary.
inline unsigned count_ordinary(const char *at) {
    static_assert(std::endian::native == std::endian::little);
    constexpr uint64_t EACH = 0x0101010101010101;
    constexpr uint64_t HIGH_BITS = EACH * 0x80;
    uint64_t bytes;
    memcpy(&bytes, at, sizeof bytes);
    // A borrow reaches only bytes above a suspect one, so that the lowest bit is always right.
    const uint64_t low = (bytes - EACH * ALL_ORDINARY_FROM) & ~bytes;
    const uint64_t not_backslash = bytes ^ (EACH * '\\');
    const uint64_t backslash = (not_backslash - EACH) & ~not_backslash;
    return static_cast<unsigned>(std::countr_zero((low | backslash) & HIGH_BITS)) / 8;
}

// The first byte from `at` on that is of none of the classes `passed_over`, or `end`. Most bytes
// are ordinary: eight of them are passed over at a time.
inline const char *end_of_run(const char *at, const char *end, unsigned char passed_over) {
    while ((passed_over & ORDINARY) != 0 && end - at >= 8) {
        const unsigned ordinary = count_ordinary(at);
        at += ordinary;
        if (ordinary < 8) {
            if ((class_of(*at) & passed_over) == 0) {
                return at;
            }
            at++;
        }
    }
    while (at < end && (class_of(*at) & passed_over) != 0) {
        at++;
    }
    return at;
}

#endif
