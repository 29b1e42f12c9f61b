#include "tools/value_review.h"

#include <algorithm>
#include <cstring>

#include "core/config_text.h"
#include "core/home_faults.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/state_text.h"
#include "platform/files.h"
#include "platform/inspection.h"
#include "tools/findings.h"
#include "tools/likeness.h"

namespace {

// The last value of each key, and its line.
struct earlier_value {
    text_ptr text;
    int line = 0;
};
earlier_value earlier[SETTING_COUNT];

using review = text_ptr (*)(const char *place, const setting &row, const char *value);

bool has(const char *value, const char *part) {
    return strstr(value, part) != nullptr;
}

// A path without an ending is most likely meant for a folder, in which each start has its own log.
text_ptr folder_fault(const char *place, const char *value) {
    const text_ptr path(new_state_text());
    prepend_launcher_home_to_relative_path(value, path.get());
    const char *name = strrchr(path.get(), file_separator);
    if (name == nullptr || strchr(name, '.') != nullptr ||
        kind_of(path.get()) != entry_kind::missing || !could_be_written(path.get())) {
        return nullptr;
    }
    return format_text(
        "%s: there is no folder %s, so a file of that name becomes the log; make the "
        "folder where each start is to have its own.",
        place, path.get());
}

text_ptr review_path(const char *place, const setting &row, const char *value) {
    text_ptr fault = path_fault(place, value);
    const bool is_home = std::ranges::find(HOMES, row.text) != std::end(HOMES);
    if (fault == nullptr && !is_home && is_set(value) && is_set(*row.text) && !is_file(*row.text)) {
        fault = format_text("%s: there is no file %s; mend the path or take the line out.", place,
                            *row.text);
    }
    return fault;
}

text_ptr review_log(const char *place, const setting &, const char *value) {
    text_ptr fault = path_fault(place, value);
    return fault == nullptr && is_set(value) ? folder_fault(place, value) : std::move(fault);
}

text_ptr review_quoted_list(const char *place, const setting &, const char *value) {
    const size_t length = strlen(value);
    if (length == 0) {
        return nullptr;
    }
    if (length < 2 || value[0] != '"' || value[length - 1] != '"') {
        return format_text("%s: the first and the last letter of %s are cut off; write each option "
                           "in double quotes, as in \"-Xss2m\" \"-Da=b\".",
                           place, value);
    }
    if (has(value, "\"  ") || has(value, "\",") || has(value, "\";") || has(value, "\"\t") ||
        has(value + 1, "\"\"")) {
        return format_text("%s: the options are not told apart; put one blank, and nothing else, "
                           "between their quotes.",
                           place);
    }
    return nullptr;
}

text_ptr review_list(const char *place, const setting &, const char *value) {
    if (has(value, "\"")) {
        return format_text("%s: quotes are not taken off here; take them out.", place);
    }
    if (!has(value, "=") && strpbrk(value, ",; ") != nullptr) {
        return format_text("%s: this is one entry; put = between entries.", place);
    }
    return nullptr;
}

text_ptr review_toggle(const char *place, const setting &, const char *value) {
    if (strncmp(value, "true", 4) == 0 || strcmp(value, "false") == 0) {
        return nullptr;
    }
    return format_text(
        "%s: '%s' means no; write true, in small letters, to switch it on, or false.", place,
        value);
}

text_ptr review_mode(const char *place, const setting &, const char *value) {
    const launch_mode_row &taken = launch_mode_of(value);
    if (strcmp(taken.name, value) == 0) {
        return nullptr;
    }
    if (is_set(taken.name)) {
        return format_text("%s: '%s' only begins like a mode and counts as %s; write one of %s.",
                           place, value, taken.name, launch_mode_names);
    }
    const launch_mode_row *likely = launch_modes;
    while (is_set(likely->name) &&
           unlikeness(likely->name, value) > (strlen(likely->name) > 2 ? LIKE : 0)) {
        likely++;
    }
    return format_text(!is_set(likely->name) ? "%s: '%s' is no mode, so it is %s; write one of %s."
                                             : "%s: '%s' is no mode, so it is %s; write %s.",
                       place, value, DEFAULT_LAUNCH_MODE,
                       !is_set(likely->name) ? launch_mode_names : likely->name);
}

review review_of(value_kind kind) {
    switch (kind) {
    case value_kind::toggle:
        return review_toggle;
    case value_kind::path:
        return review_path;
    case value_kind::log:
        return review_log;
    case value_kind::list:
        return review_list;
    case value_kind::quoted_list:
        return review_quoted_list;
    case value_kind::mode:
        return review_mode;
    }
    return nullptr;
}

// An empty path leaves the one before, and the lines of a list add up.
void review_repetition(int number, const setting &row, const char *value) {
    const earlier_value &before = earlier[&row - SETTINGS];
    const bool keeps = row.kind == value_kind::path && *value == '\0';
    if (before.text == nullptr || row.list != nullptr || strcmp(before.text.get(), value) == 0) {
        return;
    }
    add_finding(cause::line, keeps ? nullptr : &row,
                format_text("Lines %d and %d of launcher.cfg both set %s, and %s counts: take one "
                            "of them out.",
                            before.line, number, row.key,
                            keeps ? "the earlier one, as the other is empty," : "the last one"));
}

} // namespace

text_ptr path_fault(const char *place, std::string_view path) {
    const text_ptr copy = copy_text(path);
    const char *value = copy.get();
    const char *percent = strchr(value, '%');
    if (has(value, "\"") || (*value == '\'')) {
        return format_text("%s: quotes are not taken off; take them out, also where a path has "
                           "blanks.",
                           place);
    }
    if (has(value, " #") || has(value, "\t#") || has(value, " ;") || has(value, " //")) {
        return format_text("%s: a comment behind a value belongs to it; give it a line of its own.",
                           place);
    }
    if (percent != nullptr && strchr(percent + 1, '%') != nullptr) {
        return format_text("%s: %%NAME%% is not replaced here; write the path out.", place);
    }
    if (path.starts_with("\\\\") || path.starts_with("//")) {
        return format_text("%s: a network name counts as a path below the launcher home; give the "
                           "share a drive letter.",
                           place);
    }
    return nullptr;
}

void review_value(int number, const setting &row, text_ptr value) {
    const text_ptr place =
        format_text("Line %d of launcher.cfg, '%s=%s'", number, row.key, value.get());
    text_ptr fault = review_of(row.kind)(place.get(), row, value.get());
    if (fault != nullptr) {
        const bool is_mode = row.kind == value_kind::mode;
        add_finding(is_mode ? cause::mode : cause::line, &row, std::move(fault));
    }
    review_repetition(number, row, value.get());
    if (row.kind != value_kind::path || is_set(value.get())) {
        earlier[&row - SETTINGS] = {std::move(value), number};
    }
}
