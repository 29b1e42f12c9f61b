#include "jli/args.h"

#include <array>
#include <cstring>
#include <span>

#include "jli/text.h"

namespace {

constexpr size_t BLOCK_SIZE = 4096;
constexpr size_t PIECES_CAPACITY = 4;

// What a byte can be to the grammar; one bit each, so that classes can be put together.
enum byte_class : unsigned char {
    ORDINARY = 1,
    BLANK = 2,
    LINE_END = 4,
    COMMENT_SIGN = 8,
    BACKSLASH = 16,
    QUOTE = 32,
    NULL_BYTE = 64
};

constexpr std::array<unsigned char, 256> BYTE_CLASSES = [] {
    std::array<unsigned char, 256> classes{};
    classes.fill(ORDINARY);
    classes[' '] = classes['\t'] = classes['\f'] = BLANK;
    classes['\n'] = classes['\r'] = LINE_END;
    classes['#'] = COMMENT_SIGN;
    classes['\\'] = BACKSLASH;
    classes['"'] = classes['\''] = QUOTE;
    classes['\0'] = NULL_BYTE;
    return classes;
}();

// Per state, the bytes that are passed over without a change: runs of them are taken at once.
constexpr unsigned char PASSED_OVER[] = {
    /* FIND_NEXT    */ BLANK | LINE_END,
    /* IN_COMMENT   */ ORDINARY | BLANK | COMMENT_SIGN | BACKSLASH | QUOTE | NULL_BYTE,
    /* IN_QUOTE     */ ORDINARY | BLANK | COMMENT_SIGN,
    /* IN_ESCAPE    */ 0,
    /* SKIP_LEAD_WS */ BLANK | LINE_END,
    /* IN_TOKEN     */ ORDINARY | BACKSLASH,
};

unsigned char class_of(char byte) {
    return BYTE_CLASSES[static_cast<unsigned char>(byte)];
}

// A piece that still lies in the block, or in ESCAPED.
struct piece {
    const char *start;
    size_t length;
};

char *joined(std::span<const piece> pieces) {
    size_t size = 1;
    for (const piece &each : pieces) {
        size += each.length;
    }
    char *text = static_cast<char *>(JLI_MemAlloc(size));
    char *end = text;
    for (const piece &each : pieces) {
        memcpy(end, each.start, each.length);
        end += each.length;
    }
    *end = '\0';
    return text;
}

// The pieces that a call of nextToken() has completed. Most tokens end in the block in which they
// begin, so that nothing but the token itself has to go to the heap.
struct new_pieces {
    piece pieces[64];
    size_t count = 0;
    // A piece is a C string, which a null byte ends.
    bool null_byte_seen = false;
};

// A few pieces go to the heap one by one; many as one string, or a long token that is full of
// escapes would take thirty times its size.
void keep(JLI_List kept, new_pieces &fresh) {
    constexpr size_t FEW = 16;
    const std::span<const piece> pieces(fresh.pieces, fresh.count);
    if (pieces.size() > FEW) {
        JLI_List_add(kept, joined(pieces));
    } else {
        for (const piece &each : pieces) {
            JLI_List_addSubstring(kept, each.start, each.length);
        }
    }
    fresh.count = 0;
}

void complete(JLI_List kept, new_pieces &fresh, const char *start, const char *end) {
    if (fresh.count == std::size(fresh.pieces)) {
        keep(kept, fresh);
    }
    size_t length = static_cast<size_t>(end - start);
    if (fresh.null_byte_seen) {
        length = strnlen(start, length);
    }
    fresh.pieces[fresh.count++] = {start, length};
}

void drop_kept(ArgFileContext *context) {
    if (context->pieces->size > 0) {
        JLI_List_free(context->pieces);
        context->pieces = JLI_List_new(PIECES_CAPACITY);
    }
}

char *combine_token(ArgFileContext *context, new_pieces &fresh, const char *anchor,
                    const char *nextc) {
    if (fresh.count == 0 && context->pieces->size == 0) {
        return clone_substring(anchor, static_cast<size_t>(nextc - anchor));
    }
    complete(context->pieces, fresh, anchor, nextc);
    if (context->pieces->size == 0) {
        return joined({fresh.pieces, fresh.count});
    }
    keep(context->pieces, fresh);
    char *token = JLI_List_combine(context->pieces);
    drop_kept(context);
    return token;
}

// Ends the token at `nextc`, which is consumed.
char *end_token(ArgFileContext *context, new_pieces &fresh, const char *anchor, const char *nextc) {
    context->cursor = nextc + 1;
    context->state = FIND_NEXT;
    return combine_token(context, fresh, anchor, nextc);
}

// What an escaped byte stands for: a text of one byte.
const char *escaped(const char *byte) {
    switch (*byte) {
    case 'n':
        return "\n";
    case 'r':
        return "\r";
    case 't':
        return "\t";
    case 'f':
        return "\f";
    default:
        return byte;
    }
}

} // namespace

char *nextToken(ArgFileContext *context) {
    ArgFileState state = context->state;
    const char *nextc = context->cursor;
    const char *anchor = nextc; // where the pending piece starts
    new_pieces fresh;

    for (;;) {
        while (nextc < context->eob && (class_of(*nextc) & PASSED_OVER[state]) != 0) {
            nextc++;
        }
        if (nextc == context->eob) {
            break;
        }
        const unsigned char byte_class = class_of(*nextc);
        fresh.null_byte_seen |= byte_class == NULL_BYTE;
        switch (state) {
        case FIND_NEXT:
            anchor = nextc;
            state = IN_TOKEN;
            continue; // with the same byte
        case SKIP_LEAD_WS:
            anchor = nextc;
            state = IN_QUOTE;
            continue;
        case IN_COMMENT:
            state = FIND_NEXT;
            break;
        case IN_ESCAPE:
            if (byte_class == LINE_END) {
                state = SKIP_LEAD_WS;
            } else {
                const char *text = escaped(nextc);
                complete(context->pieces, fresh, text, text + 1);
                state = IN_QUOTE;
            }
            anchor = nextc + 1;
            break;
        case IN_TOKEN:
            if (byte_class == QUOTE) {
                if (nextc != anchor) {
                    complete(context->pieces, fresh, anchor, nextc);
                }
                context->quote_char = *nextc;
                anchor = nextc + 1;
                state = IN_QUOTE;
            } else if (byte_class == COMMENT_SIGN) {
                fresh.count = 0;
                drop_kept(context);
                state = IN_COMMENT;
            } else if (byte_class != NULL_BYTE) {
                return end_token(context, fresh, anchor, nextc);
            }
            break;
        case IN_QUOTE:
            if (byte_class == BACKSLASH) {
                complete(context->pieces, fresh, anchor, nextc);
                state = IN_ESCAPE;
            } else if (byte_class == LINE_END) {
                return end_token(context, fresh, anchor, nextc);
            } else if (*nextc == context->quote_char) {
                if (nextc != anchor) {
                    complete(context->pieces, fresh, anchor, nextc);
                }
                anchor = nextc + 1;
                state = IN_TOKEN;
            }
            break;
        }
        nextc++;
    }

    if ((state == IN_TOKEN || state == IN_QUOTE) && nextc != anchor) {
        complete(context->pieces, fresh, anchor, nextc);
    }
    keep(context->pieces, fresh);
    context->state = state;
    context->cursor = nextc;
    return nullptr;
}

JLI_List readArgFile(FILE *file) {
    char block[BLOCK_SIZE];
    ArgFileContext context = {FIND_NEXT, block, block, '"', JLI_List_new(PIECES_CAPACITY)};
    JLI_List tokens = JLI_List_new(8);
    const auto add_token = [tokens](char *token) {
        checkArg(token);
        JLI_List_add(tokens, token);
    };
    while (!feof(file)) {
        const size_t size = fread(block, 1, sizeof block, file);
        if (ferror(file)) {
            JLI_List_free(context.pieces);
            JLI_List_free(tokens);
            return nullptr;
        }
        context.cursor = block;
        context.eob = block + size;
        while (char *token = nextToken(&context)) {
            add_token(token);
        }
    }
    if ((context.state == IN_TOKEN || context.state == IN_QUOTE) && context.pieces->size > 0) {
        add_token(JLI_List_combine(context.pieces));
    }
    JLI_List_free(context.pieces);
    return tokens;
}

char *clone_substring(const char *start, size_t length) {
    return copy_text({start, length}).release();
}
