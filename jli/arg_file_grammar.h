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

// How many of the sixteen bytes at `at` come before the first that may be other than ordinary and
// is not `passed_over` either.
inline unsigned count_ordinary(const char *at, unsigned char passed_over) {
    static_assert(std::endian::native == std::endian::little);
    typedef unsigned char sixteen_bytes __attribute__((vector_size(16)));
    sixteen_bytes bytes;
    memcpy(&bytes, at, sizeof bytes);
    const auto suspect = ((bytes < ALL_ORDINARY_FROM) & (bytes != passed_over)) | (bytes == '\\');
    uint64_t halves[2];
    memcpy(halves, &suspect, sizeof halves);
    const int bits =
        halves[0] != 0 ? std::countr_zero(halves[0]) : 64 + std::countr_zero(halves[1]);
    return static_cast<unsigned>(bits) / 8;
}

// The first byte from `at` on that is of none of the classes `passed_over`, or `end`. Most bytes
// are ordinary, or spaces: sixteen of them are passed over at a time.
inline const char *end_of_run(const char *at, const char *end, unsigned char passed_over) {
    const unsigned char space = (passed_over & BLANK) != 0 ? ' ' : 'x'; // "x" is ordinary anyway
    while ((passed_over & ORDINARY) != 0 && end - at >= 16) {
        const unsigned ordinary = count_ordinary(at, space);
        at += ordinary;
        if (ordinary < 16) {
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
