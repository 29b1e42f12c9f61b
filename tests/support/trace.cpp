#include "tests/support/trace.h"

#include "jli/jli_util.h"
#include "jli/text.h"

extern "C" {
void __real_JLI_TraceLauncher(const char *format, ...);
void __wrap_JLI_TraceLauncher(const char *format, ...) JLI_PRINTF_LIKE(1, 2);
}

namespace {

std::string *caught = nullptr;

} // namespace

void __wrap_JLI_TraceLauncher(const char *format, ...) {
    if (caught == nullptr && JLI_IsTraceLauncher() == 0) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    const text_ptr message = format_text_list(format, arguments);
    va_end(arguments);
    if (caught != nullptr) {
        *caught += message.get();
    } else {
        __real_JLI_TraceLauncher("%s", message.get());
    }
}

std::string traced_by(const std::function<void()> &body) {
    std::string trace;
    caught = &trace;
    body();
    caught = nullptr;
    return trace;
}
