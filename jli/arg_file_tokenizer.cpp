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

// What one call of nextToken() completes of a token. It is put together on the stack: most tokens
// end in the block in which they begin, and then nothing but the token itself goes to the heap.
struct token_part {
    static constexpr size_t MOST_BYTES = 1024;

    // cppcheck-suppress uninitMemberVar ; `end` says what there is in `bytes`
    token_part(JLI_List context_pieces, const char *eob) : kept(context_pieces), block_end(eob) {}

    JLI_List kept; // where a part goes that outlives the call
    const char *block_end;
    char *end = bytes;
    bool has_piece = false; // even if it is empty
    bool null_byte_seen = false;
    char bytes[MOST_BYTES + SHORT_PIECE];
};

std::string_view text_of(const token_part &part) {
    return {part.bytes, part.end};
}

void clear(token_part &part) {
    part.end = part.bytes;
    part.has_piece = false;
}

// Moves the part to the heap.
void keep(token_part &part) {
    if (part.has_piece) {
        JLI_List_add(part.kept, copy_text(text_of(part)).release());
    }
    clear(part);
}

inline void add_piece(token_part &part, const char *start, const char *end) {
    size_t length = static_cast<size_t>(end - start);
    if (part.null_byte_seen) {
        length = strnlen(start, length); // a piece is a C string
    }
    if (length > static_cast<size_t>(part.bytes + token_part::MOST_BYTES - part.end)) {
        keep(part);
        if (length > token_part::MOST_BYTES) {
            JLI_List_addSubstring(part.kept, start, length);
            return;
        }
    }
    if (length <= size_t{SHORT_PIECE} && part.block_end - start >= SHORT_PIECE) {
        memcpy(part.end, start, SHORT_PIECE);
    } else {
        memcpy(part.end, start, length);
    }
    part.end += length;
    part.has_piece = true;
}

inline void add_unless_empty(token_part &part, const char *start, const char *end) {
    if (start != end) {
        add_piece(part, start, end);
    }
}

// Completes the piece that the quote at `quote` ends; returned is where the next one starts.
inline const char *end_section(token_part &part, const char *start, const char *quote) {
    add_unless_empty(part, start, quote);
    return quote + 1;
}

void drop_pieces(ArgFileContext *context, token_part &part) {
    clear(part);
    if (context->pieces->size > 0) {
        JLI_List_free(context->pieces);
        part.kept = context->pieces = JLI_List_new(PIECES_CAPACITY);
    }
}

// The token that ends with the pending piece from `anchor` to `nextc`.
inline char *end_token(ArgFileContext *context, token_part &part, const char *anchor,
                       const char *nextc) {
    context->cursor = nextc + 1;
    context->state = FIND_NEXT;
    if (!part.has_piece && context->pieces->size == 0) {
        return clone_substring(anchor, static_cast<size_t>(nextc - anchor));
    }
    add_piece(part, anchor, nextc);
    if (context->pieces->size == 0) {
        return copy_text(text_of(part)).release();
    }
    keep(part);
    char *token = JLI_List_combine(context->pieces);
    drop_pieces(context, part);
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

// Adds what `byte` stands for behind a backslash; returned is where the tokenizer stands after it.
inline ArgFileState add_escaped(token_part &part, char byte) {
    if (class_of(byte) == LINE_END) {
        return SKIP_LEAD_WS;
    }
    if (part.end == part.bytes + token_part::MOST_BYTES) {
        keep(part);
    }
    *part.end = unescaped(byte);
    part.end += byte == '\0' ? 0 : 1; // a piece is a C string
    part.has_piece = true;
    return IN_QUOTE;
}

// Keeps what the block holds of an unfinished token.
char *end_block(ArgFileContext *context, token_part &part, ArgFileState state, const char *anchor) {
    if (is_inside_token(state)) {
        add_unless_empty(part, anchor, context->eob);
    }
    keep(part);
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
    token_part part(context->pieces, end);

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
        case IN_TOKEN:
            if (kind == QUOTE) {
                anchor = end_section(part, anchor, nextc);
                context->quote_char = *nextc;
                state = IN_QUOTE;
            } else if (kind == COMMENT_SIGN) {
                drop_pieces(context, part);
                state = IN_COMMENT;
            } else if (kind == NULL_BYTE) {
                part.null_byte_seen = true;
            } else {
                return end_token(context, part, anchor, nextc);
            }
            break;
        case IN_QUOTE:
            if (kind == LINE_END) {
                return end_token(context, part, anchor, nextc);
            }
            if (kind == NULL_BYTE) {
                part.null_byte_seen = true;
            } else if (*nextc == context->quote_char) {
                anchor = end_section(part, anchor, nextc);
                state = IN_TOKEN;
            }
            if (kind != BACKSLASH) {
                break;
            }
            add_piece(part, anchor, nextc);
            state = IN_ESCAPE;
            if (++nextc == end) {
                continue;
            }
            [[fallthrough]];
        case IN_ESCAPE:
            state = add_escaped(part, *nextc);
            anchor = nextc + 1;
            break;
        }
        nextc++;
    }
    return end_block(context, part, state, anchor);
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
