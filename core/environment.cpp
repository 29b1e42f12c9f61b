#include "core/environment.h"

#include "platform/environment.h"

text_ptr read_environment(const char *name) {
    size_t size = get_environment_value(name, nullptr, 0);
    while (size != 0) {
        text_ptr value(static_cast<char *>(JLI_MemAlloc(size)));
        const size_t length = get_environment_value(name, value.get(), size);
        if (length < size) {
            return length == 0 ? nullptr : std::move(value);
        }
        size = length;
    }
    return nullptr;
}
