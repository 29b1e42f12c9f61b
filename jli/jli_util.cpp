#include "jli/jli_util.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <strings.h>

#include "jli/option_names.h"
#include "jli/text.h"

namespace {

// OPTIONS, each as its packed name and its classes.
constexpr auto PACKED_OPTIONS = [] {
    constexpr size_t SIZE = [] {
        size_t size = 1;
        for (const classed_option &option : OPTIONS) {
            size += 1 + option.name.size() + 1;
        }
        return size;
    }();
    std::array<char, SIZE> bytes{};
    char *end = bytes.data();
    for (const classed_option &option : OPTIONS) {
        end = pack(end, option.name);
        *end++ = static_cast<char>(option.classes);
    }
    return bytes;
}();

constexpr size_t LONGEST_OPTION =
    std::ranges::max_element(OPTIONS, {}, [](const classed_option &option) {
        return option.name.size();
    })->name.size();

char *joined(JLI_List list, std::string_view separator) {
    size_t size = 1;
    for (size_t i = 0; i < list->size; i++) {
        size += strlen(list->elements[i]) + separator.size();
    }
    char *text = static_cast<char *>(JLI_MemAlloc(size));
    char *end = text;
    for (size_t i = 0; i < list->size; i++) {
        end = put_text(end, i > 0 ? separator : "");
        end = put_text(end, list->elements[i]);
    }
    *end = '\0';
    return text;
}

} // namespace

JLI_List JLI_List_new(size_t capacity) {
    JLI_List list = static_cast<JLI_List>(JLI_MemAlloc(sizeof(JLI_List_)));
    list->elements = static_cast<char **>(JLI_MemAlloc(capacity * sizeof(char *)));
    list->size = 0;
    list->capacity = capacity;
    return list;
}

void JLI_List_free(JLI_List list) {
    if (list == nullptr) {
        return;
    }
    if (list->elements != nullptr) {
        for (size_t i = 0; i < list->size; i++) {
            JLI_MemFree(list->elements[i]);
        }
        JLI_MemFree(list->elements);
    }
    JLI_MemFree(list);
}

void JLI_List_ensureCapacity(JLI_List list, size_t needed) {
    if (list->capacity >= needed) {
        return;
    }
    while (list->capacity < needed) {
        list->capacity *= 2;
    }
    list->elements =
        static_cast<char **>(JLI_MemRealloc(list->elements, list->capacity * sizeof(char *)));
}

void JLI_List_add(JLI_List list, char *text) {
    JLI_List_ensureCapacity(list, list->size + 1);
    list->elements[list->size++] = text;
}

void JLI_List_addSubstring(JLI_List list, const char *start, size_t length) {
    JLI_List_add(list, copy_text({start, length}).release());
}

char *JLI_List_combine(JLI_List list) {
    return joined(list, "");
}

char *JLI_List_join(JLI_List list, char separator) {
    return joined(list, {&separator, 1});
}

JLI_List JLI_List_split(const char *text, char separator) {
    size_t pieces = 1;
    for (const char *at = text; *at != '\0'; at++) {
        pieces += *at == separator;
    }
    JLI_List list = JLI_List_new(pieces);
    const char *start = text;
    for (const char *at = text;; at++) {
        if (*at != '\0' && *at != separator) {
            continue;
        }
        JLI_List_addSubstring(list, start, static_cast<size_t>(at - start));
        if (*at == '\0') {
            return list;
        }
        start = at + 1;
    }
}

int JLI_StrCCmp(const char *text, const char *prefix) {
    return strncmp(text, prefix, strlen(prefix));
}

int JLI_HasSuffix(const char *text, const char *suffix) {
    const char *dot = strrchr(text, '.');
    return dot != nullptr && strcasecmp(dot, suffix) == 0;
}

int classes_of(const char *arg) {
    const size_t length = strnlen(arg, LONGEST_OPTION + 1);
    if (length > LONGEST_OPTION) {
        return 0; // most arguments are longer
    }
    const char *option = PACKED_OPTIONS.data();
    while (const size_t option_length = static_cast<unsigned char>(*option++)) {
        const char *classes = option + option_length;
        if (option_length == length && memcmp(option, arg, length) == 0) {
            return *classes;
        }
        option = classes + 1;
    }
    return 0;
}

int IsClassPathOption(const char *arg) {
    return (classes_of(arg) & CLASS_PATH_OPTION) != 0;
}

int IsLauncherMainOption(const char *arg) {
    return (classes_of(arg) & LAUNCHER_MAIN_OPTION) != 0;
}

int IsLauncherOption(const char *arg) {
    return (classes_of(arg) & LAUNCHER_OPTION) != 0;
}

int IsModuleOption(const char *arg) {
    return (classes_of(arg) & MODULE_OPTION) != 0;
}

int IsLongFormModuleOption(const char *arg) {
    return begins_with_one_of(arg, LONG_FORM_MODULE_PREFIXES.data());
}

int IsWhiteSpaceOption(const char *arg) {
    return (classes_of(arg) & WHITE_SPACE_OPTION) != 0;
}
