#include "core/rewriting/option_filters.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string_view>

#include "core/jlp_vars.h"
#include "core/rewriting/obsolete_options.h"
#include "jli/text.h"

namespace {

// The last byte first: it tells most entries apart that begin alike.
bool begins_with(std::string_view text, std::string_view entry) {
    return text.size() >= entry.size() && text[entry.size() - 1] == entry.back() &&
           text.starts_with(entry);
}

// No constant expression may call this: it is how the compiler names the fault in a table.
[[maybe_unused]] void error_entry_can_never_match() {}

// A hash table. All entries share a prefix; the hash covers the bytes after it, as many as the
// shortest entry has. Entries with the same hash are chained in the table's order.
template <size_t Size>
class prefix_table {
public:
    // Arguments that begin with one of `elsewhere` are not held against this table.
    consteval prefix_table(const char *const (&table)[Size], std::string_view common,
                           std::initializer_list<std::string_view> elsewhere = {})
        : common_length(common.size()) {
        for (size_t i = 0; i < Size - 1; i++) {
            const std::string_view entry = table[i];
            bool can_match = entry.starts_with(common) && entry.size() > common_length;
            for (const std::string_view prefix : elsewhere) {
                can_match = can_match && !entry.starts_with(prefix);
            }
            if (!can_match) {
                error_entry_can_never_match();
            }
            entries[i] = table[i] + common_length;
            hashed_length = std::min(hashed_length, entries[i].size());
        }
        first_with.fill(NONE);
        for (size_t i = Size - 1; i-- > 0;) {
            unsigned char &first = first_with[hash_of(entries[i])];
            next_with_same[i] = first;
            first = static_cast<unsigned char>(i);
        }
    }

    // Whether `arg`, which begins with what is common to the entries, begins with one of them.
    bool holds_start_of(const char *arg) const {
        const std::string_view rest(arg + common_length);
        if (rest.size() < hashed_length) {
            return false;
        }
        unsigned char i = first_with[hash_of(rest)];
        while (i != NONE && !begins_with(rest, entries[i])) {
            i = next_with_same[i];
        }
        return i != NONE;
    }

private:
    static constexpr unsigned char NONE = 255;
    static_assert(Size <= NONE);

    constexpr unsigned char hash_of(std::string_view text) const {
        unsigned hash = 0;
        for (size_t i = 0; i < hashed_length; i++) {
            hash = 5 * hash + static_cast<unsigned char>(text[i]);
        }
        return static_cast<unsigned char>(hash);
    }

    size_t common_length;
    size_t hashed_length = 8;
    std::array<std::string_view, Size> entries{};
    std::array<unsigned char, Size> next_with_same{};
    std::array<unsigned char, 256> first_with{};
};

constexpr prefix_table ALWAYS_IGNORED(IGNORE_ARGS, "-Xshare:");
constexpr prefix_table OBSOLETE(JVM_11_OBSOLETE_HOST_ARGS, "-", {"-X"});
constexpr prefix_table OBSOLETE_X(JVM_11_OBSOLETE_HOST_X_ARGS, "-X", {"-XX:"});
constexpr prefix_table OBSOLETE_XX(JVM_11_OBSOLETE_HOST_XX_ARGS, "-XX:", {"-XX:+", "-XX:-"});
// No flag's name begins with a sign: it stands before the name.
constexpr prefix_table OBSOLETE_XX_FLAGS(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS, "", {"+", "-"});

bool begins_with_entry(std::string_view text, char *const *entries, int count) {
    for (int i = 0; i < count; i++) {
        if (entries[i] != nullptr && text.starts_with(entries[i])) {
            return true;
        }
    }
    return false;
}

// An argument is held against one table only, the one for options that begin as it does.
bool is_obsolete(const char *arg) {
    const std::string_view text(arg);
    if (text.starts_with("-XX:+") || text.starts_with("-XX:-")) {
        return OBSOLETE_XX_FLAGS.holds_start_of(arg + strlen("-XX:+"));
    }
    if (text.starts_with("-XX:")) {
        return OBSOLETE_XX.holds_start_of(arg);
    }
    if (text.starts_with("-X")) {
        return OBSOLETE_X.holds_start_of(arg);
    }
    return text.starts_with("-") && OBSOLETE.holds_start_of(arg);
}

} // namespace

int is_ignore_property(const char *arg, int check_obsolete) {
    const std::string_view text(arg);
    if (begins_with_entry(text, ignore_properties_array, ignore_properties_count)) {
        return 1;
    }
    if (text.starts_with("-Xshare:") && ALWAYS_IGNORED.holds_start_of(arg)) {
        return 1;
    }
    if (!check_obsolete || !is_obsolete(arg)) {
        return 0;
    }
    JLI_TraceLauncher("Java 11+ Host: ignoring obsolete JVM argument '%s'\n", arg);
    return 1;
}

int is_arg_allowed_vm_property(const char *arg) {
    return begins_with_entry(arg + strlen("-D"), allow_vm_properties_array,
                             allow_vm_properties_count);
}

int is_non_path_option(const char *arg) {
    std::string_view text(arg);
    if (!text.starts_with("-D")) {
        return 0;
    }
    text.remove_prefix(strlen("-D"));
    if (!begins_with_entry(text, non_path_options_array, non_path_options_count)) {
        return 0;
    }
    JLI_TraceLauncher("the following arg will not be treated as a path or list of paths '%s'\n",
                      arg);
    return 1;
}

int is_possible_path_arg(const char *arg) {
    return !is_non_path_option(arg) && std::string_view(arg).starts_with("-D") ? 1 : 0;
}

int is_xbootclasspath_arg(const char *arg) {
    const std::string_view text(arg);
    return text.starts_with("-Xbootclasspath:") || text.starts_with("-Xbootclasspath/p:") ||
                   text.starts_with("-Xbootclasspath/a:")
               ? 1
               : 0;
}

char *convertXrunToAgentLib(const char *arg) {
    const char *library = arg + strlen("-Xrun");
    text_ptr converted = format_text("-agentlib:%s", library);
    char *colon = strchr(converted.get() + strlen("-agentlib:"), ':');
    if (colon != nullptr) {
        *colon = '=';
    }
    return converted.release();
}
