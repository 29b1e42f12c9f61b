#include "jli/ending.h"

#include <cstdlib>

void (*end_listener)(const char *message, int status) = nullptr;

void end_process(int status, const char *message) {
    // A listener that comes here again is not told a second time.
    void (*const listener)(const char *, int) = end_listener;
    end_listener = nullptr;
    if (listener != nullptr) {
        listener(message, status);
    }
    exit(status);
}
