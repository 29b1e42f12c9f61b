#include "platform/system_error.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/windows/wide_text.h"

namespace {

constexpr DWORD LONGEST = 1024;

// All inserts of a text are answered by the same name: one that asks for a number shows an address.
DWORD find_words(DWORD error, wchar_t *name, wchar_t *words) {
    DWORD_PTR inserts[16];
    for (DWORD_PTR &insert : inserts) {
        insert = reinterpret_cast<DWORD_PTR>(name);
    }
    DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ARGUMENT_ARRAY | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, error, 0, words, LONGEST, reinterpret_cast<va_list *>(inserts));
    while (length > 0 && wcschr(L" \r\n.", words[length - 1]) != nullptr) {
        length--;
    }
    return length;
}

} // namespace

char *system_error_text(DWORD error, const char *name) {
    wchar_t words[LONGEST];
    wchar_t *wide_name = wide_text(name);
    const DWORD length = wide_name == nullptr ? 0 : find_words(error, wide_name, words);
    free(wide_name);
    char *narrow = narrow_text(words, static_cast<int>(length));
    const size_t size = (narrow == nullptr ? 0 : strlen(narrow)) + sizeof " (error 4294967295)";
    char *text = narrow == nullptr ? nullptr : static_cast<char *>(malloc(size));
    if (text != nullptr) {
        _snprintf(text, size, length == 0 ? "%serror %lu" : "%s (error %lu)", narrow, error);
    }
    free(narrow);
    return text;
}
