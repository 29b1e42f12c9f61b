#include "platform/windows/wide_text.h"

#include <cstdlib>

#include "platform/windows_services.h"

namespace {

template <typename character>
character *new_text(int length) {
    void *text =
        length < 0 ? nullptr : malloc((static_cast<size_t>(length) + 1) * sizeof(character));
    if (text == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    }
    return static_cast<character *>(text);
}

} // namespace

wchar_t *wide_text(const char *text) {
    const int size = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0); // with the terminator
    wchar_t *wide = new_text<wchar_t>(size - 1);
    if (wide != nullptr) {
        MultiByteToWideChar(CP_ACP, 0, text, -1, wide, size);
    }
    return wide;
}

// A length of 0 is refused by the service, as is a text that fills more than an int can say.
char *narrow_text(const wchar_t *text, int length) {
    int size = WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    if (size == 0 && length != 0) {
        size = -1;
    }
    char *narrow = new_text<char>(size);
    if (narrow != nullptr) {
        WideCharToMultiByte(CP_ACP, 0, text, length, narrow, size, nullptr, nullptr);
        narrow[size] = '\0';
    }
    return narrow;
}
