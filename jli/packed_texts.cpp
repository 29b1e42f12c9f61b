#include "jli/packed_texts.h"

bool is_one_of(const char *packed_texts, const char *text, bool with_more_behind_it) {
    while (const char length = *packed_texts++) {
        const char *const end = packed_texts + length;
        const char *at = text;
        while (packed_texts != end && *at == *packed_texts) {
            at++;
            packed_texts++;
        }
        if (packed_texts == end && (with_more_behind_it || *at == '\0')) {
            return true;
        }
        packed_texts = end;
    }
    return false;
}
