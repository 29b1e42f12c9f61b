#include "jli/packed_texts.h"

bool begins_with_one_of(const char *text, const char *packed_texts) {
    while (const char length = *packed_texts++) {
        const char *const end = packed_texts + length;
        const char *at = text;
        while (packed_texts != end && *at == *packed_texts) {
            at++;
            packed_texts++;
        }
        if (packed_texts == end) {
            return true;
        }
        packed_texts = end;
    }
    return false;
}
