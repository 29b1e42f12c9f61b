#include "tools/line_review.h"

#include <cctype>
#include <cstring>

#include "core/settings.h"
#include "jli/text_buffer.h"
#include "tools/findings.h"
#include "tools/likeness.h"
#include "tools/value_review.h"

namespace {

// A line that is passed over, taken apart as it may have been meant.
struct meant_line {
    const setting *row = nullptr; // of the key that is most likely meant
    int unlikeness = LIKE + 1;    // of what is written there
    std::string_view name;
    bool is_indented = false, has_hidden_bytes = false, has_blank = false, has_sign = false;
};

std::string_view beginning(std::string_view text, size_t length) {
    return {text.data(), std::min(length, text.size())};
}

void take_off(std::string_view &text, std::string_view word) {
    if (text.starts_with(word)) {
        text.remove_prefix(word.size());
    }
}

meant_line take_apart(std::string_view line) {
    meant_line meant;
    const std::string_view text = trimmed(line);
    meant.is_indented = !line.empty() && text.data() != line.data();
    std::string_view rest = text;
    while (!rest.empty() && (static_cast<unsigned char>(rest.front()) >= 0x80)) {
        rest.remove_prefix(1);
        meant.has_hidden_bytes = true;
    }
    take_off(rest, "set ");
    take_off(rest, "export ");
    const size_t sign = rest.find('=');
    meant.has_sign = sign != std::string_view::npos;
    const std::string_view name =
        beginning(rest, meant.has_sign ? sign : rest.find_first_of(": \t"));
    meant.name = trimmed(name);
    meant.has_blank = meant.has_sign && meant.name.size() < name.size();
    for (const setting &row : SETTINGS) {
        const int distance = unlikeness(meant.name, row.key);
        if (distance < meant.unlikeness) {
            meant.unlikeness = distance;
            meant.row = &row;
        }
    }
    return meant;
}

void append_mend(text_buffer &mends, bool is_wrong, const text_ptr &mend) {
    if (is_wrong) {
        append(mends, mends.length == 0 ? "" : " and ");
        append(mends, mend.get());
    }
}

// At most as much of a line as is good to read, whole letters alone.
text_ptr shown(std::string_view text) {
    constexpr size_t LONGEST = 100;
    if (text.size() <= LONGEST) {
        return copy_text(text);
    }
    size_t length = LONGEST;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
        length--;
    }
    return format_text("%s...", copy_text({text.data(), length}).get());
}

void review_passed_over(int number, std::string_view line) {
    const meant_line meant = take_apart(line);
    const text_ptr text = shown(line);
    if (meant.row == nullptr) {
        add_finding(cause::line, nullptr,
                    format_text("Line %d of launcher.cfg, '%s', is passed over: %s; take it out or "
                                "put a # before it.",
                                number, text.get(),
                                meant.has_sign ? "there is no such key" : "it sets nothing"));
        return;
    }
    const char *key = meant.row->key;
    text_buffer mends;
    append_mend(mends, meant.is_indented, copy_text("begin it in the first column"));
    append_mend(mends, meant.has_hidden_bytes,
                format_text("take out what stands unseen before %s", key));
    append_mend(mends, meant.name != key,
                meant.unlikeness == 0 ? format_text("write %s in capitals", key)
                                      : format_text("write %s, which is most likely meant", key));
    append_mend(mends, meant.has_blank, copy_text("take out the blank before its ="));
    append_mend(mends, !meant.has_sign, format_text("put a = behind %s", key));
    append_mend(mends, mends.length == 0, format_text("begin it with %s=", key));
    add_finding(cause::line, meant.row,
                format_text("Line %d of launcher.cfg, '%s', is passed over: %s.", number,
                            text.get(), mends.c_str()));
}

// One that sets something is worth a word where that very key is missing.
void review_comment(int number, std::string_view line) {
    line.remove_prefix(1);
    const setting *row = setting_of(trimmed(line).data());
    if (row != nullptr) {
        add_finding(
            cause::hidden, row,
            format_text("Line %d of launcher.cfg sets %s, but is a comment: take out its #.",
                        number, row->key));
    }
}

bool is_remark(std::string_view text) {
    return text.empty() || text.front() == '#' || text.front() == ';' || text.starts_with("//");
}

} // namespace

bool review_line(int number, std::string_view line) {
    const setting *row = setting_of(line.data());
    if (row != nullptr) {
        line.remove_prefix(strlen(row->key) + 1);
        review_value(number, *row, copy_text(trimmed(line)));
    } else if (line.starts_with('#')) {
        review_comment(number, line);
    } else if (!is_remark(trimmed(line))) {
        review_passed_over(number, line);
    }
    return row != nullptr;
}
