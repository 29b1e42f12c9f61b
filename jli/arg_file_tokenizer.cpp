#include "jli/arg_file_tokenizer.h"

#include <cstring>

#include "jli/arg_bookkeeping.h"
#include "jli/arg_file_grammar.h"
#include "jli/text.h"

namespace {

constexpr size_t BLOCK_SIZE = 4096;
constexpr size_t PIECES_CAPACITY = 4;

// Most pieces are short: a copy of this fixed size is several times faster than a call of memcpy().
constexpr ptrdiff_t SHORT_PIECE = 16;

// Per state, the bytes that are passed over: they neither change the state nor end a piece.
constexpr std::array<unsigned char, IN_TOKEN + 1> PASSED_OVER = [] {
    std::array<unsigned char, IN_TOKEN + 1> classes{};
    classes[FIND_NEXT] = classes[SKIP_LEAD_WS] = BLANK | LINE_END;
    classes[IN_COMMENT] = ORDINARY | BLANK | COMMENT_SIGN | BACKSLASH | QUOTE | NULL_BYTE;
    classes[IN_QUOTE] = ORDINARY | BLANK | COMMENT_SIGN;
    classes[IN_ESCAPE] = 0;
    classes[IN_TOKEN] = ORDINARY | BACKSLASH;
    return classes;
}();

// The pieces that one call of nextToken() completes. They are gathered on the stack: most tokens
// end in the block in which they begin, and then nothing but the token itself goes to the heap.
struct new_pieces {
    static constexpr size_t FEW = 16;
    static constexpr size_t MOST_BYTES = 1024;

    // cppcheck-suppress uninitMemberVar ; what there is in the two arrays is counted
    new_pieces(JLI_List context_pieces, const char *eob) : kept(context_pieces), block_end(eob) {}

    JLI_List kept; // where pieces go that outlive the call
    const char *block_end;
    size_t count = 0;
    size_t size = 0;
    bool null_byte_seen = false;
    size_t ends[FEW]; // in `bytes`, of the first pieces
    char bytes[MOST_BYTES + SHORT_PIECE];
};

// Moves the pieces to the heap: a few one by one; many as one string, or a long token that is full
// of escapes would take thirty times its size.
void keep(new_pieces &pieces) {
    if (pieces.count > new_pieces::FEW) {
        JLI_List_addSubstring(pieces.kept, pieces.bytes, pieces.size);
    } else {
        size_t start = 0;
        for (size_t i = 0; i < pieces.count; i++) {
            JLI_List_addSubstring(pieces.kept, pieces.bytes + start, pieces.ends[i] - start);
            start = pieces.ends[i];
        }
    }
    pieces.count = 0;
    pieces.size = 0;
}

inline void end_piece(new_pieces &pieces, size_t length) {
    pieces.size += length;
    if (pieces.count < new_pieces::FEW) {
        pieces.ends[pieces.count] = pieces.size;
    }
    pieces.count++;
}

inline void add_byte(new_pieces &pieces, char byte) {
    if (pieces.size == new_pieces::MOST_BYTES) {
        keep(pieces);
    }
    pieces.bytes[pieces.size] = byte;
    end_piece(pieces, byte == '\0' ? 0 : 1);
}

inline void add_piece(new_pieces &pieces, const char *start, const char *end) {
    size_t length = static_cast<size_t>(end - start);
    if (pieces.null_byte_seen) {
        length = strnlen(start, length); // a piece is a C string
    }
    if (length > new_pieces::MOST_BYTES - pieces.size) {
        keep(pieces);
        if (length > new_pieces::MOST_BYTES) {
            JLI_List_addSubstring(pieces.kept, start, length);
            return;
        }
    }
    char *copy = pieces.bytes + pieces.size;
    if (length <= size_t{SHORT_PIECE} && pieces.block_end - start >= SHORT_PIECE) {
        memcpy(copy, start, SHORT_PIECE);
    } else {
        memcpy(copy, start, length);
    }
    end_piece(pieces, length);
}

inline void add_unless_empty(new_pieces &pieces, const char *start, const char *end) {
    if (start != end) {
        add_piece(pieces, start, end);
    }
}

void drop_pieces(ArgFileContext *context, new_pieces &pieces) {
    pieces.count = 0;
    pieces.size = 0;
    if (context->pieces->size > 0) {
        JLI_List_free(context->pieces);
        pieces.kept = context->pieces = JLI_List_new(PIECES_CAPACITY);
    }
}

// The token that ends with the pending piece from `anchor` to `nextc`.
inline char *end_token(ArgFileContext *context, new_pieces &pieces, const char *anchor,
                       const char *nextc) {
    context->cursor = nextc + 1;
    context->state = FIND_NEXT;
    if (pieces.count == 0 && context->pieces->size == 0) {
        return clone_substring(anchor, static_cast<size_t>(nextc - anchor));
    }
    add_piece(pieces, anchor, nextc);
    if (context->pieces->size == 0) {
        return clone_substring(pieces.bytes, pieces.size);
    }
    keep(pieces);
    char *token = JLI_List_combine(context->pieces);
    drop_pieces(context, pieces);
    return token;
}

bool is_inside_token(ArgFileState state) {
    return state == IN_TOKEN || state == IN_QUOTE;
}

// What an escaped byte stands for.
inline char unescaped(char byte) {
    switch (byte) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'f':
        return '\f';
    default:
        return byte;
    }
}

// Keeps what the block holds of an unfinished token.
char *end_block(ArgFileContext *context, new_pieces &pieces, ArgFileState state,
                const char *anchor) {
    if (is_inside_token(state)) {
        add_unless_empty(pieces, anchor, context->eob);
    }
    keep(pieces);
    context->state = state;
    context->cursor = context->eob;
    return nullptr;
}

} // namespace

char *nextToken(ArgFileContext *context) {
    const char *const end = context->eob;
    const char *nextc = context->cursor;
    const char *anchor = nextc; // where the pending piece starts
    ArgFileState state = context->state;
    new_pieces pieces(context->pieces, end);

    while ((nextc = end_of_run(nextc, end, PASSED_OVER[state])) < end) {
        const unsigned char kind = class_of(*nextc);
        switch (state) {
        case FIND_NEXT:
        case SKIP_LEAD_WS:
            anchor = nextc;
            state = state == FIND_NEXT ? IN_TOKEN : IN_QUOTE;
            continue; // with the same byte
        case IN_COMMENT:
            state = FIND_NEXT;
            break;
        case IN_ESCAPE:
            if (kind != LINE_END) {
                add_byte(pieces, unescaped(*nextc));
            }
            anchor = nextc + 1;
            state = kind == LINE_END ? SKIP_LEAD_WS : IN_QUOTE;
            break;
        case IN_TOKEN:
            if (kind == QUOTE) {
                add_unless_empty(pieces, anchor, nextc);
                context->quote_char = *nextc;
                anchor = nextc + 1;
                state = IN_QUOTE;
            } else if (kind == COMMENT_SIGN) {
                drop_pieces(context, pieces);
                state = IN_COMMENT;
            } else if (kind == NULL_BYTE) {
                pieces.null_byte_seen = true;
            } else {
                return end_token(context, pieces, anchor, nextc);
            }
            break;
        case IN_QUOTE:
            if (kind == BACKSLASH) {
                add_piece(pieces, anchor, nextc);
                state = IN_ESCAPE;
            } else if (kind == LINE_END) {
                return end_token(context, pieces, anchor, nextc);
            } else if (*nextc == context->quote_char) {
                add_unless_empty(pieces, anchor, nextc);
                anchor = nextc + 1;
                state = IN_TOKEN;
            } else if (kind == NULL_BYTE) {
                pieces.null_byte_seen = true;
            }
            break;
        }
        nextc++;
    }
    return end_block(context, pieces, state, anchor);
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
        // A stream that is open for writing alone may give neither bytes nor an error.
        if (ferror(file) || (size == 0 && !feof(file))) {
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
    if (is_inside_token(context.state) && context.pieces->size > 0) {
        add_token(JLI_List_combine(context.pieces));
    }
    JLI_List_free(context.pieces);
    return tokens;
}

char *clone_substring(const char *start, size_t length) {
    return copy_text({start, length}).release();
}
