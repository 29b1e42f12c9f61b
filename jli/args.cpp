#include "jli/args.h"

#include <cstdlib>
#include <cstring>

#include "jli/kept.h"
#include "jli/trace.h"
#include "platform/files.h"

namespace {

[[noreturn]] void JLI_PRINTF_LIKE(1, 2) report_and_exit(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const text_ptr message = format_text_list(format, arguments);
    va_end(arguments);
    if (JLI_IsTraceLauncher() != 0) {
        write_trace(stderr, message);
    }
    say_traced_fault(message.get());
    end_after(1, message);
}

// How messages name the text that is being expanded.
text_ptr place_of(const char *variable_name) {
    return variable_name == nullptr ? copy_text("this context")
                                    : format_text("environment variable %s", variable_name);
}

const char *skip_whitespace(const char *text) {
    while (is_white_space(*text)) {
        text++;
    }
    return text;
}

// Copies the token at `text` to `out`, terminated. `text` goes to the token's end; returned is what
// follows the copy. Quotes count only in a variable.
char *copy_token(const char *&text, char *out, const char *variable_name) {
    while (*text != '\0' && !is_white_space(*text)) {
        const char byte = *text++;
        if (variable_name == nullptr || (byte != '"' && byte != '\'')) {
            *out++ = byte;
            continue;
        }
        const char *closing = strchr(text, byte);
        if (closing == nullptr) {
            report_and_exit("Error: Unmatched quote in environment variable %s", variable_name);
        }
        const size_t length = static_cast<size_t>(closing - text);
        memcpy(out, text, length);
        out += length;
        text = closing + 1;
    }
    *out++ = '\0';
    return out;
}

// Appends what `token` stands for. True when this is the token itself, so that `args` refers to it.
bool add_token(JLI_List args, char *token, const char *variable_name) {
    JLI_List expansion = JLI_PreprocessArg(token, 0);
    if (expansion == nullptr) {
        if (isTerminalOpt(token)) {
            report_and_exit("Error: Option %s is not allowed in %s", token,
                            place_of(variable_name).get());
        }
        JLI_List_add(args, token);
        return true;
    }
    for (size_t i = 0; i < expansion->size; i++) {
        if (isTerminalOpt(expansion->elements[i])) {
            report_and_exit("Error: Option %s in %s is not allowed in %s", expansion->elements[i],
                            token, place_of(variable_name).get());
        }
        JLI_List_add(args, expansion->elements[i]);
        keep_until_release(expansion->elements[i]);
    }
    JLI_MemFree(expansion->elements);
    JLI_MemFree(expansion);
    return false;
}

} // namespace

JLI_List JLI_PreprocessArg(const char *arg, int expand_source_opt) {
    if (JLI_GetAppArgIndex() > 0) {
        return nullptr;
    }
    if (!expands_arg_files()) {
        checkArg(arg);
        return nullptr;
    }
    if (expand_source_opt != 0 && JLI_StrCCmp(arg, "--source") == 0 &&
        strchr(arg, ' ') != nullptr) {
        return expandArg(arg);
    }
    if (arg[0] != '@' || arg[1] == '\0') {
        checkArg(arg);
        return nullptr;
    }
    const char *rest = arg + 1;
    if (*rest != '@') {
        return expandArgFile(rest);
    }
    JLI_List escaped = JLI_List_new(1);
    checkArg(rest);
    JLI_List_add(escaped, JLI_StringDup(rest));
    return escaped;
}

JLI_List expandArg(const char *arg) {
    JLI_List args = JLI_List_new(8);
    expand(args, arg, nullptr);
    return args;
}

JLI_List expandArgFile(const char *path) {
    FILE *file = kind_of(path) == entry_kind::missing ? nullptr : open_text_file(path, "r");
    if (file == nullptr) {
        report_and_exit("Error: could not open `%s'", path);
    }
    JLI_List args = readArgFile(file);
    fclose(file);
    if (args == nullptr) {
        report_and_exit("Error: loading: %s", path);
    }
    return args;
}

int JLI_AddArgsFromEnvVar(JLI_List args, const char *name) {
    const char *value = getenv(name);
    if (!expands_variables() || value == nullptr) {
        return 0;
    }
    JLI_ReportMessage("NOTE: Picked up %s: %s", name, value);
    return expand(args, value, name);
}

int expand(JLI_List args, const char *text, const char *variable_name) {
    text_ptr block(static_cast<char *>(JLI_MemAlloc(strlen(text) + 1)));
    char *out = block.get();
    bool is_block_used = false;
    for (text = skip_whitespace(text); *text != '\0'; text = skip_whitespace(text)) {
        char *token = out;
        out = copy_token(text, out, variable_name);
        if (add_token(args, token, variable_name)) {
            is_block_used = true;
        }
        if (JLI_GetAppArgIndex() != -1) {
            report_and_exit("Error: Cannot specify main class in %s",
                            place_of(variable_name).get());
        }
    }
    if (is_block_used) {
        keep_until_release(block.release());
    }
    return 1;
}

void JLI_ReportMessage(const char *format, ...) {
    if (JLI_IsTraceLauncher() == 0) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    write_trace(stderr, format_text_list(format, arguments));
    va_end(arguments);
}
