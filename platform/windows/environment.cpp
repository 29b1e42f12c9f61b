#include "platform/environment.h"

#include "platform/windows_services.h"

// By way of the wide service: Wine's narrow one cuts a value that has more bytes than characters.
size_t get_environment_value(const char *name, char *buffer, size_t size) {
    constexpr int longest = 32768; // the most that Windows has room for
    static wchar_t wide[longest];
    wchar_t wide_name[64];
    if (MultiByteToWideChar(CP_ACP, 0, name, -1, wide_name, 64) == 0 ||
        GetEnvironmentVariableW(wide_name, wide, longest) == 0) {
        return 0;
    }
    const int needed = WideCharToMultiByte(CP_ACP, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (static_cast<size_t>(needed) > size) {
        return static_cast<size_t>(needed);
    }
    WideCharToMultiByte(CP_ACP, 0, wide, -1, buffer, needed, nullptr, nullptr);
    return static_cast<size_t>(needed) - 1;
}
