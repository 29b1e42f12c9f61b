#include "jli/arg_file_tokenizer.h"

#include <bit>
#include <cstring>

#include "jli/arg_bookkeeping.h"
#include "jli/arg_file_grammar.h"
#include "jli/text.h"

namespace {

constexpr size_t BLOCK_SIZE = 4096;
constexpr size_t PIECES_CAPACITY = 4;

// Most pieces are short: a copy of this fixed size is several times faster than a call of memcpy().
constexpr ptrdiff_t SHORT_PIECE = 16;

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

bool is_space(unsigned char kind) {
    return (kind & (BLANK | LINE_END)) != 0;
}

// Where the tokenizer stands in a block.
struct position {
    ArgFileState state;
    const char *anchor; // where the pending piece starts
};

// Passes over white space, or goes on in `state` where it ends.
inline bool is_skipped(position &here, const char *nextc, ArgFileState state) {
    if (nextc == here.anchor && is_space(class_of(*nextc))) {
        here.anchor++;
        return true;
    }
    here.state = state;
    return false;
}

// What `nextc` changes in a token, outside quotes; it is no space.
inline void stop_in_token(ArgFileContext *context, token_part &part, position &here,
                          const char *nextc) {
    switch (class_of(*nextc)) {
    case QUOTE:
        here = {IN_QUOTE, end_section(part, here.anchor, nextc)};
        context->quote_char = *nextc;
        break;
    case COMMENT_SIGN:
        drop_pieces(context, part);
        here.state = IN_COMMENT;
        break;
    case NULL_BYTE:
        part.null_byte_seen = true;
        break;
    }
}

// What `nextc` changes in a quoted section; it is no line end.
inline void stop_in_quote(const ArgFileContext *context, token_part &part, position &here,
                          const char *nextc) {
    switch (class_of(*nextc)) {
    case BACKSLASH:
        add_piece(part, here.anchor, nextc);
        here = {IN_ESCAPE, nextc + 1};
        if (here.anchor < context->eob) {
            here.state = add_escaped(part, *here.anchor++);
        }
        break;
    case QUOTE:
        if (*nextc == context->quote_char) {
            here = {IN_TOKEN, end_section(part, here.anchor, nextc)};
        }
        break;
    case NULL_BYTE:
        part.null_byte_seen = true;
        break;
    }
}

// Keeps what the block holds of an unfinished token.
char *end_block(ArgFileContext *context, token_part &part, position here) {
    if (here.state == FIND_NEXT && here.anchor < context->eob) {
        here.state = IN_TOKEN;
    }
    if (here.state == SKIP_LEAD_WS && here.anchor < context->eob) {
        here.state = IN_QUOTE;
    }
    if (is_inside_token(here.state)) {
        add_unless_empty(part, here.anchor, context->eob);
    }
    keep(part);
    context->state = here.state;
    context->cursor = context->eob;
    return nullptr;
}

} // namespace

char *nextToken(ArgFileContext *context) {
    const char *const end = context->eob;
    position here = {context->state, context->cursor};
    token_part part(context->pieces, end);
    if (here.state == IN_ESCAPE && here.anchor < end) {
        here.state = add_escaped(part, *here.anchor++);
    }
    for (const char *at = here.anchor, *next; at < end; at = next) {
        next = end - at > STEP ? at + STEP : end;
        for (unsigned stops = stops_among(at, next); stops != 0; stops &= stops - 1) {
            const char *const nextc = at + std::countr_zero(stops);
            const unsigned char kind = class_of(*nextc);
            if (nextc < here.anchor) {
                continue; // it was escaped
            }
            switch (here.state) {
            case IN_COMMENT:
                if (kind == LINE_END) {
                    here = {FIND_NEXT, nextc + 1};
                }
                break;
            case FIND_NEXT:
                if (is_skipped(here, nextc, IN_TOKEN)) {
                    break;
                }
                [[fallthrough]];
            case IN_TOKEN:
                if (is_space(kind)) {
                    return end_token(context, part, here.anchor, nextc);
                }
                stop_in_token(context, part, here, nextc);
                break;
            case SKIP_LEAD_WS:
                if (is_skipped(here, nextc, IN_QUOTE)) {
                    break;
                }
                [[fallthrough]];
            case IN_QUOTE:
            case IN_ESCAPE:
                if (kind == LINE_END) {
                    return end_token(context, part, here.anchor, nextc);
                }
                stop_in_quote(context, part, here, nextc);
                break;
            }
        }
    }
    return end_block(context, part, here);
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
