#include "platform/system_error.h"

#include <cstdio>
#include <cstring>

#include "platform/posix/last_error.h"

char *system_error_text(DWORD error, const char *) {
    const int number = errno_of(error);
    char *text = nullptr;
    const int length = number == 0 ? asprintf(&text, "error %u", error)
                                   : asprintf(&text, "%s (error %u)", strerror(number), error);
    return length < 0 ? nullptr : text;
}
