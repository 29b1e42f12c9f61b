// The environment that children receive. Until the first change it is the process's own; from then
// on it is a copy, so that getenv() keeps seeing what the process received.

#include "platform/environment.h"
#include "platform/posix/environment.h"

#include <strings.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "platform/posix/last_error.h"

namespace {

char **changed_environment = nullptr;

char **entries() {
    return changed_environment != nullptr ? changed_environment : environ;
}

bool is_name(const char *name) {
    return name != nullptr && *name != '\0' && strchr(name, '=') == nullptr;
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

const char *find_value(const char *name) {
    const char *value = nullptr;
    for (char **entry = entries(); entry != nullptr && *entry != nullptr && value == nullptr;
         entry++) {
        value = value_in(*entry, name);
    }
    return value;
}

void release_entries(char **list) {
    for (char **entry = list; *entry != nullptr; entry++) {
        free(*entry);
    }
    free(list);
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
            release_entries(copy);
            copy = nullptr;
        }
    }
    changed_environment = copy;
    return copy != nullptr;
}

// Makes room for one more entry, so that what follows cannot fail.
bool reserve_entry() {
    size_t size = (count_entries(changed_environment) + 2) * sizeof *changed_environment;
    void *grown = realloc(changed_environment, size);
    if (grown != nullptr) {
        changed_environment = static_cast<char **>(grown);
    }
    return grown != nullptr;
}

// An entry of the variable; its name is spelt as it is in the environment already.
char *new_entry(const char *name, const char *value) {
    size_t name_length = strlen(name);
    size_t value_length = strlen(value);
    char *entry = static_cast<char *>(malloc(name_length + value_length + 2));
    if (entry == nullptr) {
        return nullptr;
    }
    const char *old_value = find_value(name);
    memcpy(entry, old_value != nullptr ? old_value - name_length - 1 : name, name_length);
    entry[name_length] = '=';
    memcpy(entry + name_length + 1, value, value_length + 1);
    return entry;
}

// Names that differ in their letter case alone are one variable: all of them go.
void remove_entries(const char *name) {
    char **to = changed_environment;
    for (char **from = changed_environment; *from != nullptr; from++) {
        if (value_in(*from, name) == nullptr) {
            *to++ = *from;
        } else {
            free(*from);
        }
    }
    *to = nullptr;
}

void add_entry(char *entry) {
    size_t count = count_entries(changed_environment);
    changed_environment[count] = entry;
    changed_environment[count + 1] = nullptr;
}

} // namespace

char *const *child_environment() {
    return entries();
}

DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size) {
    const char *value = is_name(name) ? find_value(name) : nullptr;
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
    if (!is_name(name)) {
        return fail_with(ERROR_INVALID_PARAMETER);
    }
    if (!copy_environment() || !reserve_entry()) {
        return fail_with(ERROR_NOT_ENOUGH_MEMORY);
    }
    char *entry = value == nullptr ? nullptr : new_entry(name, value);
    if (value != nullptr && entry == nullptr) {
        return fail_with(ERROR_NOT_ENOUGH_MEMORY);
    }
    remove_entries(name);
    if (entry != nullptr) {
        add_entry(entry);
    }
    return TRUE;
}

bool get_environment_value(const char *name, char **value) {
    const char *found = is_name(name) ? find_value(name) : nullptr;
    const bool is_empty = found == nullptr || *found == '\0';
    *value = is_empty ? nullptr : strdup(found);
    return is_empty || *value != nullptr;
}
