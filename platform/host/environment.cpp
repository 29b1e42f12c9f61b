// The environment that children receive. Until the first change it is the process's own; from then
// on it is a copy, so that getenv() keeps seeing what the process received.

#include "platform/host/environment.h"

#include <strings.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "platform/host/last_error.h"

namespace {

char **changed_environment = nullptr;

char **entries() {
    return changed_environment != nullptr ? changed_environment : environ;
}

size_t count_entries(char **list) {
    size_t count = 0;
    while (list != nullptr && list[count] != nullptr) {
        count++;
    }
    return count;
}

const char *value_in(const char *entry, const char *name) {
    size_t length = strlen(name);
    return strncasecmp(entry, name, length) == 0 && entry[length] == '=' ? entry + length + 1
                                                                         : nullptr;
}

bool copy_environment() {
    if (changed_environment != nullptr) {
        return true;
    }
    size_t count = count_entries(environ);
    char **copy = static_cast<char **>(calloc(count + 1, sizeof *copy));
    for (size_t i = 0; copy != nullptr && i < count; i++) {
        copy[i] = strdup(environ[i]);
        if (copy[i] == nullptr) {
            return false;
        }
    }
    changed_environment = copy;
    return copy != nullptr;
}

// Takes the variable's entries out and returns the first, which is the caller's now, or null.
char *take_entry(const char *name) {
    char *taken = nullptr;
    char **to = changed_environment;
    for (char **from = changed_environment; *from != nullptr; from++) {
        if (value_in(*from, name) == nullptr) {
            *to++ = *from;
        } else if (taken == nullptr) {
            taken = *from;
        } else {
            free(*from);
        }
    }
    *to = nullptr;
    return taken;
}

// The name as `old_entry` spells it, where there is one, with the value.
char *new_entry(const char *name, const char *old_entry, const char *value) {
    size_t name_length = strlen(name);
    size_t value_length = strlen(value);
    char *entry = static_cast<char *>(malloc(name_length + value_length + 2));
    if (entry != nullptr) {
        memcpy(entry, old_entry != nullptr ? old_entry : name, name_length);
        entry[name_length] = '=';
        memcpy(entry + name_length + 1, value, value_length + 1);
    }
    return entry;
}

bool add_entry(char *entry) {
    size_t count = count_entries(changed_environment);
    void *grown = realloc(changed_environment, (count + 2) * sizeof *changed_environment);
    if (entry == nullptr || grown == nullptr) {
        free(entry);
        return false;
    }
    changed_environment = static_cast<char **>(grown);
    changed_environment[count] = entry;
    changed_environment[count + 1] = nullptr;
    return true;
}

} // namespace

char *const *child_environment() {
    return entries();
}

DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size) {
    const char *value = nullptr;
    if (name != nullptr && *name != '\0' && strchr(name, '=') == nullptr) {
        for (char **entry = entries(); entry != nullptr && *entry != nullptr && value == nullptr;
             entry++) {
            value = value_in(*entry, name);
        }
    }
    if (value == nullptr) {
        fail_with(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    size_t length = strlen(value);
    if (length >= size) {
        return static_cast<DWORD>(length + 1);
    }
    memcpy(buffer, value, length + 1);
    return static_cast<DWORD>(length);
}

BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value) {
    if (name == nullptr || *name == '\0' || strchr(name, '=') != nullptr) {
        return fail_with(ERROR_INVALID_PARAMETER);
    }
    if (!copy_environment()) {
        return fail_with(ERROR_NOT_ENOUGH_MEMORY);
    }
    char *old_entry = take_entry(name);
    bool done = value == nullptr || add_entry(new_entry(name, old_entry, value));
    free(old_entry);
    return done ? TRUE : fail_with(ERROR_NOT_ENOUGH_MEMORY);
}
