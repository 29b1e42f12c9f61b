#include "core/rewriting/option_filters.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <span>
#include <string_view>

#include "core/jlp_vars.h"
#include "core/rewriting/obsolete_options.h"
#include "jli/packed_texts.h"
#include "jli/text.h"

namespace {

// No constant expression may call this: it is how the compiler names the fault in a table.
[[maybe_unused]] void error_entry_can_never_match() {}

constexpr void require_match(bool can_match) {
    if (!can_match) {
        error_entry_can_never_match();
    }
}

// The table without its end. Each entry begins with `start`, and none with one of `elsewhere`:
// arguments that do are not held against this table.
constexpr std::span<const char *const>
entries_of(std::span<const char *const> table, std::string_view start,
           std::initializer_list<std::string_view> elsewhere = {}) {
    const auto entries = table.first(table.size() - 1);
    for (const std::string_view entry : entries) {
        require_match(entry.starts_with(start) && entry.size() > start.size());
        for (const std::string_view prefix : elsewhere) {
            require_match(!entry.starts_with(prefix));
        }
    }
    return entries;
}

// As begins_with_one_of() takes them.
template <const auto &table>
consteval auto joined(std::string_view start,
                      std::initializer_list<std::string_view> elsewhere = {}) {
    constexpr size_t size = [] {
        size_t sum = 1;
        for (const std::string_view entry : std::span(table).first(std::size(table) - 1)) {
            sum += entry.size() + 1;
        }
        return sum;
    }();
    std::array<char, size> text{};
    char *end = text.data();
    for (const std::string_view entry : entries_of(table, start, elsewhere)) {
        require_match(entry.size() <= CHAR_MAX);
        end = pack(end, entry);
    }
    return text;
}

constexpr auto ALWAYS_IGNORED = joined<IGNORE_ARGS>("-Xshare:");
constexpr auto OBSOLETE = joined<JVM_11_OBSOLETE_HOST_ARGS>("-", {"-X"});
constexpr auto OBSOLETE_X = joined<JVM_11_OBSOLETE_HOST_X_ARGS>("-X", {"-XX:"});
constexpr auto OBSOLETE_XX = entries_of(JVM_11_OBSOLETE_HOST_XX_ARGS, "-XX:", {"-XX:+", "-XX:-"});
// No flag's name begins with a sign: it stands before the name.
constexpr auto OBSOLETE_XX_FLAGS = entries_of(JVM_11_OBSOLETE_HOST_XX_BOOL_ARGS, "", {"+", "-"});

// Where a name of the last two tables matches.
enum form : unsigned char {
    WHOLE = 0,  // after "-XX:", whatever is behind it, and nowhere else
    FLAG = 1,   // after a sign
    OPTION = 2, // after "-XX:", with "=" behind it
};
constexpr unsigned FORM_BITS = 2;

struct obsolete_name {
    std::string_view text;
    unsigned char forms = 0;
};

// The names of both tables. Most flags are options too: their names stand here once.
struct obsolete_names {
    std::array<obsolete_name, OBSOLETE_XX.size() + OBSOLETE_XX_FLAGS.size()> all{};
    size_t count = 0;

    consteval obsolete_names() {
        for (std::string_view option : OBSOLETE_XX) {
            option.remove_prefix(std::size("-XX:") - 1);
            const bool takes_any_value = option.ends_with('=');
            option.remove_suffix(takes_any_value ? 1 : 0);
            add(option, takes_any_value ? OPTION : WHOLE);
        }
        for (const std::string_view flag : OBSOLETE_XX_FLAGS) {
            add(flag, FLAG);
        }
    }

    consteval void add(std::string_view text, form as) {
        require_match(text.size() <= UCHAR_MAX >> FORM_BITS);
        size_t i = 0;
        while (i < count && all[i].text != text) {
            i++;
        }
        require_match(i == count || (as != WHOLE && all[i].forms != WHOLE));
        all[i].text = text;
        all[i].forms |= as;
        count = std::max(count, i + 1);
    }

    consteval size_t shortest() const {
        size_t length = 8; // as many bytes tell enough names apart
        for (size_t i = 0; i < count; i++) {
            length = std::min(length, all[i].text.size());
        }
        return length;
    }

    consteval size_t text_size() const {
        size_t size = 0;
        for (size_t i = 0; i < count; i++) {
            size += 1 + all[i].text.size();
        }
        return size;
    }
};

// The last byte first: it tells most names apart that begin alike.
bool begins_with_name(std::string_view text, std::string_view name) {
    return text.size() >= name.size() && text[name.size() - 1] == name.back() &&
           text.starts_with(name);
}

// Whether a name of these forms and this length may stand at the beginning of `rest`.
bool fits(unsigned forms, size_t length, std::string_view rest, bool after_sign) {
    if (after_sign) {
        return (forms & FLAG) != 0;
    }
    return forms == WHOLE || ((forms & OPTION) != 0 && rest.size() > length && rest[length] == '=');
}

// The names as the executable holds them, without a pointer to each, which would take more room
// than they do: a hash table whose buckets lie one after the other in one text, each name behind
// a byte for its forms and its length. The hash covers as many bytes as the shortest name has.
class name_table {
public:
    consteval name_table() {
        std::array<size_t, NAMES.all.size()> buckets{};
        for (size_t i = 0; i < NAMES.count; i++) {
            buckets[i] = bucket_of(NAMES.all[i].text);
        }
        size_t end = 0;
        for (size_t bucket = 0; bucket < BUCKETS; bucket++) {
            starts[bucket] = static_cast<unsigned short>(end);
            for (size_t i = 0; i < NAMES.count; i++) {
                if (buckets[i] == bucket) {
                    end = put(NAMES.all[i], end);
                }
            }
        }
        starts[BUCKETS] = static_cast<unsigned short>(end);
    }

    // Whether `rest`, what follows "-XX:" or the sign, begins with a name that matches there.
    bool holds_start_of(std::string_view rest, bool after_sign) const {
        if (rest.size() < HASHED) {
            return false;
        }
        const size_t bucket = bucket_of(rest);
        for (size_t at = starts[bucket]; at < starts[bucket + 1];) {
            const unsigned head = static_cast<unsigned char>(text[at]);
            const std::string_view name(&text[at + 1], head >> FORM_BITS);
            if (fits(head & (FLAG | OPTION), name.size(), rest, after_sign) &&
                begins_with_name(rest, name)) {
                return true;
            }
            at += 1 + name.size();
        }
        return false;
    }

private:
    static constexpr obsolete_names NAMES{};
    static constexpr size_t BUCKETS = 64;
    static constexpr size_t HASHED = NAMES.shortest();

    // Returned is where the next goes.
    consteval size_t put(const obsolete_name &name, size_t at) {
        text[at] = static_cast<char>(name.text.size() << FORM_BITS | name.forms);
        std::ranges::copy(name.text, &text[at + 1]);
        return at + 1 + name.text.size();
    }

    static constexpr size_t bucket_of(std::string_view text) {
        size_t hash = 0;
        for (size_t i = 0; i < HASHED; i++) {
            hash = 5 * hash + static_cast<unsigned char>(text[i]);
        }
        return hash % BUCKETS;
    }

    std::array<unsigned short, BUCKETS + 1> starts{};
    std::array<char, NAMES.text_size()> text{};
};

constexpr name_table OBSOLETE_NAMES;

std::span<const char *const> configured(char *const *entries, int count) {
    return {entries, static_cast<size_t>(count)};
}

// An argument is held against one table only, the one for options that begin as it does.
bool is_obsolete(const char *arg) {
    if (arg[0] != '-') {
        return false;
    }
    if (arg[1] != 'X') {
        return begins_with_one_of(arg, OBSOLETE.data());
    }
    if (arg[2] != 'X' || arg[3] != ':') {
        return begins_with_one_of(arg, OBSOLETE_X.data());
    }
    const char *rest = arg + strlen("-XX:");
    const bool has_sign = *rest == '+' || *rest == '-';
    return OBSOLETE_NAMES.holds_start_of(has_sign ? rest + 1 : rest, has_sign);
}

} // namespace

int is_ignore_property(const char *arg, int check_obsolete) {
    if (begins_with_any(arg, configured(ignore_properties_array, ignore_properties_count)) ||
        begins_with_one_of(arg, ALWAYS_IGNORED.data())) {
        return 1;
    }
    if (!check_obsolete || !is_obsolete(arg)) {
        return 0;
    }
    JLI_TraceLauncher("Java 11+ Host: ignoring obsolete JVM argument '%s'\n", arg);
    return 1;
}

int is_arg_allowed_vm_property(const char *arg) {
    return begins_with_any(arg + strlen("-D"),
                           configured(allow_vm_properties_array, allow_vm_properties_count));
}

int is_non_path_option(const char *arg) {
    if (!begins_with(arg, "-D") ||
        !begins_with_any(arg + strlen("-D"),
                         configured(non_path_options_array, non_path_options_count))) {
        return 0;
    }
    JLI_TraceLauncher("the following arg will not be treated as a path or list of paths '%s'\n",
                      arg);
    return 1;
}

int is_possible_path_arg(const char *arg) {
    return !is_non_path_option(arg) && begins_with(arg, "-D") ? 1 : 0;
}

int is_xbootclasspath_arg(const char *arg) {
    static constexpr auto FORMS =
        packed("-Xbootclasspath:", "-Xbootclasspath/p:", "-Xbootclasspath/a:");
    return begins_with_one_of(arg, FORMS.data());
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
