#include "core/child_arguments.h"

#include <cstring>

#include "core/configuration.h"
#include "core/java_versions.h"
#include "core/jlp_vars.h"
#include "core/rewriting/parse_arguments.h"
#include "jli/text_buffer.h"
#include "platform/command_line.h"

namespace {

void append_quoted(text_buffer &line, char *const *arguments, int count) {
    for (int i = 0; i < count; i++) {
        append(line, ' ');
        const size_t size = 2 * strlen(arguments[i]) + QUOTING_BYTES;
        const text_ptr room(static_cast<char *>(JLI_MemAlloc(size)));
        const char *end = quote_argument(arguments[i], room.get());
        append(line, {room.get(), static_cast<size_t>(end - room.get())});
    }
}

// The arguments of the line, none of them expanded, stay whole in the lists.
void rewrite_line(const char *line) {
    const text_ptr room(static_cast<char *>(JLI_MemAlloc(strlen(line) + 1)));
    char **arguments = static_cast<char **>(JLI_MemAlloc(argument_slots(line) * sizeof(char *)));
    take_arguments(line, arguments, room.get());
    int count = 0;
    while (arguments[count] != nullptr) {
        count++;
    }
    quotes_arguments_later = 1;
    set_launcher_path_arg();
    parse_arguments(count, arguments);
    JLI_MemFree(arguments);
}

child_arguments quoted_arguments() {
    text_buffer line;
    append(line, "");
    append_quoted(line, lhs, lhs_count);
    append_quoted(line, rhs, rhs_count);
    return {std::move(line.text)};
}

child_arguments rewritten_arguments(const given_arguments &given) {
    init_host_and_guest_versions();
    if (is_transparent) {
        rewrite_line(given.line);
        return quoted_arguments();
    }
    parse_arguments(given.count, given.texts);
    const child_arguments leading = joined_arguments(lhs, lhs_count);
    const child_arguments trailing = joined_arguments(rhs, rhs_count);
    return {joined_text(leading.text.get(), trailing.text.get())};
}

} // namespace

child_arguments arguments_for_child(const given_arguments &given) {
    if (rewrites_arguments) {
        return rewritten_arguments(given);
    }
    if (is_transparent) {
        return {copy_text(given.line), true};
    }
    return joined_arguments(given.texts, given.count);
}
