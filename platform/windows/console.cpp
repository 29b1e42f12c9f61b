#include "platform/console.h"

#include <io.h>

#include <cstdlib>
#include <cwchar>

#include "platform/windows/wide_text.h"

namespace {

// Older consoles refuse more than 64 KiB at once.
constexpr size_t PIECE = 8192;

// An event that ends the child may be seen here while the child is on its way out: off the console
// already, but not yet ended.
constexpr DWORD MILLISECONDS_TO_END = 500;

bool is_high_surrogate(wchar_t c) {
    return c >= 0xD800 && c < 0xDC00;
}

void write_wide(HANDLE console, const wchar_t *text, size_t length) {
    DWORD written = 0;
    while (length > 0) {
        size_t piece = length < PIECE ? length : PIECE;
        if (piece < length && is_high_surrogate(text[piece - 1])) {
            piece--;
        }
        if (!WriteConsoleW(console, text, static_cast<DWORD>(piece), &written, nullptr)) {
            return;
        }
        text += piece;
        length -= piece;
    }
}

// Line ends as the runtime's text mode writes them.
void write_lines(HANDLE console, const wchar_t *text) {
    while (*text != L'\0') {
        const size_t length = wcscspn(text, L"\n");
        write_wide(console, text, length);
        text += length;
        if (*text == L'\n') {
            write_wide(console, L"\r\n", 2);
            text++;
        }
    }
}

// The console behind the stream, or null. The runtime knows of each descriptor whether it is a
// device, so that only these are looked at: NUL is one, too.
HANDLE console_of(FILE *stream) {
    const int descriptor = _fileno(stream);
    DWORD mode;
    if (!_isatty(descriptor)) {
        return nullptr;
    }
    HANDLE console = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    return GetConsoleMode(console, &mode) ? console : nullptr;
}

bool is_on_own_console(DWORD process_id) {
    DWORD *list = nullptr;
    DWORD count = 16;
    DWORD size;
    do {
        size = count;
        free(list);
        list = static_cast<DWORD *>(malloc(size * sizeof *list));
        count = list == nullptr ? 0 : GetConsoleProcessList(list, size);
    } while (count > size);
    bool found = list == nullptr; // rather wait for the child than leave it alone
    for (DWORD i = 0; i < count; i++) {
        found = found || list[i] == process_id;
    }
    free(list);
    return found;
}

} // namespace

void write_text(FILE *stream, const char *text) {
    HANDLE console = console_of(stream);
    wchar_t *wide = console == nullptr ? nullptr : wide_text(text);
    if (wide == nullptr) {
        fputs(text, stream);
        fflush(stream);
        return;
    }
    fflush(stream);
    write_lines(console, wide);
    free(wide);
}

BOOL gets_interrupts(HANDLE child) {
    return child != nullptr && (is_on_own_console(GetProcessId(child)) ||
                                WaitForSingleObject(child, MILLISECONDS_TO_END) != WAIT_TIMEOUT);
}
