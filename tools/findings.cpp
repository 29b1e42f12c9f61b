#include "tools/findings.h"

#include <algorithm>

#include "core/jlp_vars.h"

namespace {

struct finding {
    cause kind;
    const setting *about;
    char *text;
};

constexpr int SHOWN = 20;
finding *findings = nullptr;
int count = 0;

// A mode that was not meant asks for homes that the one that was meant does not need.
cause rank_of(const finding &each, const setting *failing) {
    const bool is_about_mode = each.about != nullptr && each.about->kind == value_kind::mode;
    if (is_about_mode && (each.kind == cause::line || each.kind == cause::mode)) {
        const bool asks_for_more =
            failing != nullptr && failing->kind == value_kind::path && failing->text != &jvm_home;
        return asks_for_more ? cause::mode : cause::line;
    }
    const bool is_likelier = each.kind != cause::own && failing != nullptr && each.about == failing;
    return is_likelier ? std::max(each.kind, cause::key) : each.kind;
}

} // namespace

void add_finding(cause kind, const setting *about, text_ptr text) {
    const size_t size = static_cast<size_t>(count + 1) * sizeof(finding);
    findings = static_cast<finding *>(JLI_MemRealloc(findings, size));
    findings[count++] = {kind, about, text.release()};
}

// Calls `take` with each that is shown, in their order.
template <typename taker>
static void in_order(const setting *failing, taker take) {
    for (int rank = static_cast<int>(cause::place); rank > static_cast<int>(cause::hidden);
         rank--) {
        for (int i = 0; i < count; i++) {
            if (static_cast<int>(rank_of(findings[i], failing)) == rank) {
                take(findings[i].text);
            }
        }
    }
}

void append_first_finding(text_buffer &report, const setting *failing) {
    bool is_first = true;
    in_order(failing, [&](const char *text) {
        if (is_first) {
            append(report, text);
        }
        is_first = false;
    });
}

void append_findings(text_buffer &report, const setting *failing, bool without_first) {
    int number = without_first ? -1 : 0;
    in_order(failing, [&](const char *text) {
        if (number >= 0 && number < SHOWN) {
            append(report, "  * ");
            append(report, text);
            append(report, '\n');
        }
        number++;
    });
    if (number > SHOWN) {
        append(report, format_text("  and %d more\n", number - SHOWN).get());
    }
}
