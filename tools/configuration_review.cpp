#include "tools/configuration_review.h"

#include <algorithm>
#include <cstring>

#include "core/jlp_vars.h"
#include "core/settings.h"
#include "jli/text.h"
#include "platform/files.h"
#include "platform/inspection.h"
#include "tools/findings.h"
#include "tools/launch.h"
#include "tools/likeness.h"
#include "tools/line_review.h"

namespace {

constexpr char NAME[] = "launcher.cfg";
int setting_count = -1;

bool is_utf_8(std::string_view text) {
    int more = 0;
    for (const char c : text) {
        const unsigned byte = static_cast<unsigned char>(c);
        if (more > 0) {
            more = (byte & 0xC0) == 0x80 ? more - 1 : -1;
        } else {
            more = byte < 0x80   ? 0
                   : byte < 0xC2 ? -1
                   : byte < 0xE0 ? 1
                   : byte < 0xF0 ? 2
                   : byte < 0xF5 ? 3
                                 : -1;
        }
        if (more < 0) {
            return false;
        }
    }
    return more == 0;
}

// Without its mark every other byte of plain text is zero.
bool is_utf_16(std::string_view content) {
    return content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF") ||
           memchr(content.data(), '\0', std::min<size_t>(content.size(), 200)) != nullptr;
}

struct search {
    const char *folder;
    text_ptr found;
};

// Names that begin or are nearly like the right one, and other endings of its kind.
bool is_likely_name(const char *name) {
    constexpr const char *OTHERS[] = {"launcher.conf", "launcher.config", "launcher.ini",
                                      "launcher.txt"};
    return strcmp(name, NAME) != 0 &&
           (strncasecmp(name, NAME, strlen(NAME)) == 0 || unlikeness(name, NAME) <= LIKE ||
            std::ranges::any_of(OTHERS,
                                [&](const char *each) { return strcasecmp(name, each) == 0; }));
}

void take_likely_name(void *context, const char *name) {
    search &looked_for = *static_cast<search *>(context);
    text_ptr path = format_text("%s\\%s", looked_for.folder, name);
    if (is_likely_name(name) && is_file(path.get())) {
        looked_for.found = std::move(path);
    }
}

text_ptr file_that_was_meant(const char *home) {
    for (const char *folder : {"\\bin", "\\jre\\bin", "\\jre", "\\conf", "\\lib"}) {
        text_ptr path = format_text("%s%s\\%s", home, folder, NAME);
        if (is_file(path.get())) {
            return path;
        }
    }
    search looked_for = {home, nullptr};
    list_folder(home, take_likely_name, &looked_for);
    return std::move(looked_for.found);
}

void review_missing_file(const char *home, const char *path) {
    if (is_directory(path)) {
        add_finding(cause::file, nullptr,
                    format_text("%s is a folder: a file of this name is needed.", path));
        return;
    }
    const text_ptr meant = file_that_was_meant(home);
    if (meant != nullptr) {
        add_finding(cause::file, nullptr,
                    format_text("There is no %s, but %s, which is not read: rename or move it.",
                                path, meant.get()));
    } else {
        add_finding(
            cause::file, nullptr,
            format_text("There is no %s, so nothing is configured: write one, with the lines "
                        "%s=true, %s=%s and %s=<a Java home>.",
                        path, key_of(&is_transparent), key_of(&launch_mode), plain_mode(),
                        key_of(&jvm_home)));
    }
}

void review_lines(std::string_view rest, const char *path) {
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    if (rest.starts_with(BYTE_ORDER_MARK)) {
        rest.remove_prefix(BYTE_ORDER_MARK.size());
    }
    for (int number = 1; !rest.empty(); number++) {
        const size_t length = std::min(rest.find('\n'), rest.size());
        std::string_view line(rest.data(), length);
        rest.remove_prefix(std::min(length + 1, rest.size()));
        while (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (review_line(number, line)) {
            setting_count++;
        }
        if (!is_utf_8(line)) {
            add_finding(cause::line, setting_of(line.data()),
                        format_text("Line %d of launcher.cfg holds letters in an old code page: "
                                    "save %s as UTF-8.",
                                    number, path));
        }
    }
}

} // namespace

void review_configuration(const char *home) {
    const text_ptr path = format_text("%s\\%s", home, NAME);
    size_t size = 0;
    const text_ptr bytes(is_file(path.get()) ? bytes_of_file(path.get(), &size) : nullptr);
    const std::string_view content(bytes.get(), size);
    if (bytes == nullptr) {
        review_missing_file(home, path.get());
        return;
    }
    setting_count = 0;
    if (is_utf_16(content)) {
        add_finding(cause::file, nullptr,
                    format_text("%s is written in UTF-16, which is not read: save it as UTF-8.",
                                path.get()));
        return;
    }
    review_lines(content, path.get());
    if (setting_count == 0) {
        add_finding(cause::aside, nullptr,
                    format_text("No line of %s is a setting: write KEY=value, as in %s=C:\\jdk.",
                                path.get(), key_of(&jvm_home)));
    }
}

int setting_lines() {
    return setting_count;
}
