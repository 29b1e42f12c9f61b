#include "core/environment.h"

#include "platform/environment.h"

text_ptr read_environment(const char *name) {
    char *value;
    if (!get_environment_value(name, &value)) {
        end_without_memory("malloc");
    }
    return text_ptr(value);
}
