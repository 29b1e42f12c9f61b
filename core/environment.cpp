#include "core/environment.h"

#include "platform/windows_services.h"

text_ptr read_environment(const char *name) {
    DWORD size = GetEnvironmentVariableA(name, nullptr, 0);
    while (size != 0) {
        text_ptr value(static_cast<char *>(JLI_MemAlloc(size)));
        const DWORD length = GetEnvironmentVariableA(name, value.get(), size);
        if (length < size) {
            return length == 0 ? nullptr : std::move(value);
        }
        size = length;
    }
    return nullptr;
}
