#include "support.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

size_t allocations = 0;
bool next_allocation_fails = false;

namespace {

bool is_refused() {
    allocations++;
    if (!next_allocation_fails) {
        return false;
    }
    next_allocation_fails = false;
    errno = ENOMEM;
    return true;
}

} // namespace

extern "C" {
void *__real_malloc(size_t size);
void *__real_realloc(void *block, size_t size);
char *__real_strdup(const char *text);
FILE *__real__Z14open_text_filePKcS0_(const char *path, const char *mode);

void *__wrap_malloc(size_t size);
void *__wrap_realloc(void *block, size_t size);
char *__wrap_strdup(const char *text);
FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode);

void *__wrap_malloc(size_t size) {
    return is_refused() ? nullptr : __real_malloc(size);
}

void *__wrap_realloc(void *block, size_t size) {
    return is_refused() ? nullptr : __real_realloc(block, size);
}

char *__wrap_strdup(const char *text) {
    return is_refused() ? nullptr : __real_strdup(text);
}

FILE *__wrap__Z14open_text_filePKcS0_(const char *path, const char *mode) {
    const bool readable = strcmp(path, UNREADABLE_PATH) != 0;
    return readable ? __real__Z14open_text_filePKcS0_(path, mode) : fopen(path, "w");
}
}

strings strings_of(JLI_List list) {
    return {list->elements, list->elements + list->size};
}

void write_file(const char *path, const std::string &content) {
    FILE *file = fopen(path, "wb");
    ASSERT_NE(file, nullptr) << path;
    EXPECT_EQ(fwrite(content.data(), 1, content.size(), file), content.size());
    fclose(file);
}

std::string content_of(const char *path) {
    std::string content;
    if (FILE *file = fopen(path, "rb")) {
        char block[4096];
        while (const size_t size = fread(block, 1, sizeof block, file)) {
            content.append(block, size);
        }
        fclose(file);
    }
    return content;
}

void trace_to_log() {
    JLI_SetTraceLauncher();
    LOG_FILE_FD = fopen(LOG_PATH, "wb");
}

// The bookkeeping and the trace switch last as long as the process: a child of a test has to start
// anew, not as a copy of this one.
int main(int argc, char **argv) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
