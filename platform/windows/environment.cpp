#include "platform/environment.h"

#include <cstdlib>

#include "platform/windows/wide_text.h"
#include "platform/windows_services.h"

// By way of the wide service: Wine's narrow one cuts a value that has more bytes than characters.
bool get_environment_value(const char *name, char **value) {
    *value = nullptr;
    wchar_t *wide_name = wide_text(name);
    const DWORD room = wide_name == nullptr ? 0 : GetEnvironmentVariableW(wide_name, nullptr, 0);
    wchar_t *wide = room <= 1 ? nullptr : static_cast<wchar_t *>(malloc(room * sizeof *wide));
    if (wide != nullptr) {
        const DWORD length = GetEnvironmentVariableW(wide_name, wide, room);
        *value = length < room ? narrow_text(wide, static_cast<int>(length)) : nullptr;
    }
    const bool is_known = wide_name != nullptr && (room <= 1 || *value != nullptr);
    free(wide_name);
    free(wide);
    return is_known;
}
