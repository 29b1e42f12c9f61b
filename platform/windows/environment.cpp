#include "platform/environment.h"

#include <cstdint>
#include <cstdlib>

#include "platform/windows_services.h"

namespace {

// The value as bytes, of which the terminator is the last.
size_t convert_value(const wchar_t *wide, DWORD length, char *buffer, size_t size) {
    const int bytes = WideCharToMultiByte(CP_ACP, 0, wide, static_cast<int>(length), nullptr, 0,
                                          nullptr, nullptr);
    if (bytes <= 0) {
        return SIZE_MAX;
    }
    const size_t needed = static_cast<size_t>(bytes) + 1;
    if (needed > size) {
        return needed;
    }
    WideCharToMultiByte(CP_ACP, 0, wide, static_cast<int>(length), buffer, bytes, nullptr, nullptr);
    buffer[bytes] = '\0';
    return static_cast<size_t>(bytes);
}

} // namespace

// By way of the wide service: Wine's narrow one cuts a value that has more bytes than characters.
size_t get_environment_value(const char *name, char *buffer, size_t size) {
    wchar_t wide_name[64];
    if (MultiByteToWideChar(CP_ACP, 0, name, -1, wide_name, 64) == 0) {
        return 0;
    }
    const DWORD room = GetEnvironmentVariableW(wide_name, nullptr, 0);
    if (room <= 1) {
        return 0;
    }
    wchar_t *wide = static_cast<wchar_t *>(malloc(room * sizeof(wchar_t)));
    if (wide == nullptr) {
        return SIZE_MAX;
    }
    const DWORD length = GetEnvironmentVariableW(wide_name, wide, room);
    const size_t result = length < room ? convert_value(wide, length, buffer, size) : SIZE_MAX;
    free(wide);
    return result;
}
