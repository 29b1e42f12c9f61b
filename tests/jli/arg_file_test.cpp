#include <gtest/gtest.h>

#include <memory>

#include "jli/args.h"
#include "support.h"

namespace {

// What nextToken() and the end of the file give, block by block. Each block has a heap block of its
// size, so that a sanitizer sees a read beyond it.
strings tokens_in_blocks(const std::string &text, size_t block_size) {
    ArgFileContext context = {FIND_NEXT, nullptr, nullptr, '"', JLI_List_new(4)};
    strings tokens;
    const auto take = [&tokens](char *token) {
        tokens.emplace_back(token);
        JLI_MemFree(token);
    };
    for (size_t at = 0; at < text.size(); at += block_size) {
        const size_t size = std::min(block_size, text.size() - at);
        const std::unique_ptr<char[]> block(new char[size]);
        text.copy(block.get(), size, at);
        context.cursor = block.get();
        context.eob = block.get() + size;
        while (char *token = nextToken(&context)) {
            take(token);
        }
        EXPECT_EQ(context.cursor, context.eob);
    }
    if ((context.state == IN_TOKEN || context.state == IN_QUOTE) && context.pieces->size > 0) {
        take(JLI_List_combine(context.pieces));
    }
    JLI_List_free(context.pieces);
    return tokens;
}

const std::string LONG_LINE(4095, 'x');

std::string repeated(const std::string &text, int times) {
    std::string all;
    while (times-- > 0) {
        all += text;
    }
    return all;
}

const struct {
    std::string text;
    strings tokens;
} FILES[] = {
    {"", {}},
    {" \t\f\r\n", {}},
    {"-cp a.jar\n-Dx=1", {"-cp", "a.jar", "-Dx=1"}},
    {"a\fb\rc\vd", {"a", "b", "c\vd"}},
    {"\x1a \x80\xff", {"\x1a", "\x80\xff"}},
    // Quotes
    {"\"a b\" 'a b'", {"a b", "a b"}},
    {"a\"b c\"d \"it's\" 'say \"x\"'", {"ab cd", "it's", "say \"x\""}},
    {"\"\"\n''\n\"\"x", {"", "", "x"}},
    {"\"\"", {}},
    {"\"abc\nd", {"abc", "d"}},
    {"\"abc\r\nd'e", {"abc", "de"}},
    {"\"a b", {"a b"}},
    // Escapes
    {"\"a\\tb\\n\\r\\f\"", {"a\tb\n\r\f"}},
    {"\"c:\\\\dir\" \"\\q\\\"\\'\\#\" c:\\dir\\x", {"c:\\dir", "q\"'#", "c:\\dir\\x"}},
    {"'C:\\dir\\x' \"C:\\temp\" C:\\temp", {"C:dirx", "C:\temp", "C:\\temp"}},
    {"\"\\", {}},
    {"x \"abc\\", {"x"}},
    {"\"a\\t", {"a\t"}},
    // Continued lines
    {"\"abc\\\n   def\"", {"abcdef"}},
    {"\"abc\\\r\n \t\f\n\ndef\" g", {"abcdef", "g"}},
    {"'a\\\n\\\n'b", {"ab"}},
    {"\"\\\n\"", {""}},
    {"\"abc\\\n  ", {}},
    // Comments
    {"# note\n-a #note\n-b#note\n\"#x\" #", {"-a", "#x"}},
    {"#a \"b\\\n'c\r#d\ne", {"c", "e"}},
    {"a\"b\"#c\nd", {"d"}},
    {"a\\#b\"c\\\"#\"#\n", {}},
    {"@x @@x @", {"@x", "@@x", "@"}},
    // Where blocks of 4096 bytes meet
    {LONG_LINE + "yz " + LONG_LINE + "\nw", {LONG_LINE + "yz", LONG_LINE, "w"}},
    {"'" + repeated(LONG_LINE.substr(4000) + "\\t", 100), {repeated(LONG_LINE.substr(4000) + "\t", 100)}},
    {"#" + LONG_LINE + "y\nz", {"z"}},
    {"#" + LONG_LINE.substr(1) + "\ny", {"y"}},
    {"\"" + LONG_LINE.substr(1) + "\\ty\"", {LONG_LINE.substr(1) + "\ty"}},
    {"\"" + LONG_LINE.substr(2) + "\\ty\"", {LONG_LINE.substr(2) + "\ty"}},
};

// `allocated` receives how many heap blocks were asked for.
strings read_back(const std::string &text, size_t &allocated) {
    write_file("tokens.args", text);
    FILE *file = fopen("tokens.args", "rb");
    const size_t before = allocations;
    JLI_List list = readArgFile(file);
    allocated = allocations - before;
    fclose(file);
    strings tokens = strings_of(list);
    JLI_List_free(list);
    return tokens;
}

TEST(argument_file, has_the_same_tokens_whatever_the_block_size) {
    for (const auto &row : FILES) {
        for (const size_t block_size : {1, 2, 3, 4, 5, 6, 7, 8, 4096, 10000}) {
            EXPECT_EQ(tokens_in_blocks(row.text, block_size), row.tokens)
                << row.text << "\nin blocks of " << block_size;
        }
        size_t allocated = 0;
        EXPECT_EQ(read_back(row.text, allocated), row.tokens) << row.text;
    }
}

TEST(argument_file, is_read_in_text_mode) {
    const struct {
        const char *content;
        strings tokens;
    } rows[] = {
        {"", {}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"'a\\\r\n  b'\r\nc", {"ab", "c"}},
        {"a b\x1a c", {"a", "b"}},
    };
    for (const auto &row : rows) {
        write_file("text_mode.args", row.content);
        JLI_List list = expandArgFile("text_mode.args");
        EXPECT_EQ(strings_of(list), row.tokens) << row.content;
        JLI_List_free(list);
    }
}

TEST(argument_file, cannot_be_read_from_a_stream_for_writing) {
    FILE *file = fopen("unreadable.args", "wb");
    EXPECT_EQ(readArgFile(file), nullptr);
    fclose(file);
}

TEST(tokenizer, carries_its_state_from_block_to_block) {
    const struct {
        const char *block;
        ArgFileState state;
        char quote_char;
        strings pieces;
    } rows[] = {
        {"a ", FIND_NEXT, '"', {}},
        {"#", IN_COMMENT, '"', {}},
        {"ab", IN_TOKEN, '"', {"ab"}},
        {"\"\"", IN_TOKEN, '"', {}},
        {"a'b", IN_QUOTE, '\'', {"a", "b"}},
        {"a'b'c", IN_TOKEN, '\'', {"a", "b", "c"}},
        {"\"abc\\", IN_ESCAPE, '"', {"abc"}},
        {"'\\", IN_ESCAPE, '\'', {""}},
        {"\"a\\t\\xb", IN_QUOTE, '"', {"a", "\t", "", "x", "b"}},
        {"\"a\\\n  ", SKIP_LEAD_WS, '"', {"a"}},
        {"a'b'#", IN_COMMENT, '\'', {}},
    };
    for (const auto &row : rows) {
        const std::string block = row.block;
        ArgFileContext context = {FIND_NEXT, block.data(), block.data() + block.size(), '"', JLI_List_new(4)};
        while (char *token = nextToken(&context)) {
            JLI_MemFree(token);
        }
        EXPECT_EQ(context.state, row.state) << row.block;
        EXPECT_EQ(context.quote_char, row.quote_char) << row.block;
        EXPECT_EQ(strings_of(context.pieces), row.pieces) << row.block;
        JLI_List_free(context.pieces);
    }
}

TEST(tokenizer, takes_a_null_byte_for_the_end_of_its_piece) {
    using namespace std::string_literals;
    const struct {
        std::string text;
        strings tokens;
    } rows[] = {
        {"a\0b c"s, {"a", "c"}},
        {"a\0b'c\0d'e"s, {"ace"}},
        {"'\\\0a'"s, {"a"}},
        {"#\0\nb"s, {"b"}},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(tokens_in_blocks(row.text, row.text.size()), row.tokens) << row.text;
    }
}

// The counts keep the cost of a file within bounds: in time, of quotes and escapes, in memory, of a
// token that lies in many blocks.
TEST(tokenizer, allocates_little_besides_the_tokens) {
    const std::string paths = repeated("-Dpath='C:\\\\Program Files\\\\lib\\\\a.jar';\"C:\\\\b.jar\"\n", 1000);
    size_t allocated = 0;
    EXPECT_EQ(read_back(paths, allocated), strings(1000, "-Dpath=C:\\Program Files\\lib\\a.jar;C:\\b.jar"));
    EXPECT_LT(allocated, 1000 + 40 * (paths.size() / 4096 + 1));

    const std::string escapes = "\"" + repeated("\\x", 1 << 20);
    EXPECT_EQ(read_back(escapes + "\"", allocated), strings{std::string(1 << 20, 'x')});
    EXPECT_LT(allocated, 3 * (escapes.size() / 4096));
}

} // namespace
