#include "platform/format.h"

#include <cstdio>

int format_by_runtime(char *buffer, size_t size, const char *format, va_list arguments) {
    return vsnprintf(buffer, size, format, arguments);
}
