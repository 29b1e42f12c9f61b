#ifndef JLI_ARG_FILE_GRAMMAR_H
#define JLI_ARG_FILE_GRAMMAR_H

// The bytes of an argument file: what they are to the grammar, and where those are that are more
// than text.

#include <emmintrin.h> // SSE2, which every x86-64 processor has

#include <array>
#include <cstddef>
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

// How many bytes are looked at together.
constexpr ptrdiff_t STEP = sizeof(__m128i);

// A bit for each of the bytes from `at` to `end`, at most STEP, that may be other than ordinary;
// the lowest bit is the first byte's.
inline unsigned stops_among(const char *at, const char *end) {
    char last_bytes[STEP]; // what lies behind those that there are does not count
    unsigned there = 0xFFFF;
    if (const ptrdiff_t missing = STEP - (end - at); missing > 0) {
        at = static_cast<const char *>(memcpy(last_bytes, at, static_cast<size_t>(end - at)));
        there >>= missing;
    }
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(at));
    const __m128i low =
        _mm_cmpeq_epi8(bytes, _mm_min_epu8(bytes, _mm_set1_epi8(ALL_ORDINARY_FROM - 1)));
    const __m128i backslashes = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(low, backslashes))) & there;
}

#endif
