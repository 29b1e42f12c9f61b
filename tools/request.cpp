#include "tools/request.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/banner.h"
#include "jli/text.h"
#include "platform/command_line.h"

namespace {

constexpr char USAGE[] =
    "usage: explain_launch [options] [-- ARGUMENTS]\n"
    "Says whether the launcher would start Java with these arguments, and what is wrong. It "
    "starts\n"
    "nothing and writes to no file.\n"
    "  --launcher-home DIR  the folder with launcher.cfg; without it, the one that explain_launch\n"
    "                       itself lies in the bin or jre\\bin folder of\n"
    "  --name FILE          the launcher of this name, for example javaw.exe\n"
    "  --library PATH       a native host's start, with the path of its qvljni.dll\n"
    "  --rewrite            show the rewritten arguments, whatever launcher.cfg says\n"
    "  --trace              trace every step on standard error, whatever launcher.cfg says\n"
    "  --one-per-line       show each argument on a line of its own\n"
    "  --help, --version    say this, or which version it is\n"
    "Exit status: 0 when the launch would go through, 1 when not, 2 for a wrong usage.\n";

constexpr int USAGE_STATUS = 2;

text_ptr own_words; // what the request's texts lie in
text_ptr own_line;

[[noreturn]] void say_and_end(const text_ptr &text) {
    print_text(stdout, text);
    exit(0);
}

// The words of the process's own command line, before the runtime expands any.
struct word_reader {
    const char *at;
    char *room;
    int count = 0;

    const char *next() {
        at += strspn(at, " \t");
        if (*at == '\0') {
            return nullptr;
        }
        const char *word = room;
        at = take_argument(at, &room);
        count++;
        return word;
    }
};

bool take_flag(request &asked, std::string_view option) {
    const struct {
        std::string_view name;
        bool *flag;
    } flags[] = {{"--rewrite", &asked.shows_rewriting},
                 {"--trace", &asked.traces},
                 {"--one-per-line", &asked.one_per_line}};
    for (const auto &each : flags) {
        if (each.name == option) {
            return *each.flag = true;
        }
    }
    return false;
}

bool take_value(request &asked, std::string_view option, word_reader &words) {
    const struct {
        std::string_view name;
        const char **value, *needs;
    } options[] = {{"--launcher-home", &asked.launcher_home, "a folder"},
                   {"--library", &asked.library, "the path of a qvljni.dll"},
                   {"--name", &asked.name, "the name of a file"}};
    for (const auto &each : options) {
        if (each.name == option) {
            *each.value = words.next();
            if (!is_set(*each.value) || strcmp(*each.value, "--") == 0) {
                refuse_usage(format_text("%s needs %s", each.name.data(), each.needs));
            }
            return true;
        }
    }
    return false;
}

void take_option(request &asked, const char *option, word_reader &words) {
    if (strcmp(option, "--help") == 0) {
        say_and_end(copy_text(USAGE));
    }
    if (strcmp(option, "--version") == 0) {
        say_and_end(format_text("explain_launch %s\n", version));
    }
    if (!take_flag(asked, option) && !take_value(asked, option, words)) {
        refuse_usage(
            format_text(*option == '-' ? "unknown option %s" : "\"%s\" belongs behind --", option));
    }
}

void refuse_contradictions(const request &asked) {
    if (asked.library != nullptr && (asked.launcher_home != nullptr || asked.name != nullptr)) {
        refuse_usage(format_text("a native host has no launcher: --library goes without %s",
                                 asked.name == nullptr ? "--launcher-home" : "--name"));
    }
}

} // namespace

void refuse_usage(const text_ptr &what) {
    print_text(stderr,
               format_text("explain_launch: %s; explain_launch --help says more\n", what.get()));
    exit(USAGE_STATUS);
}

// An option is read from the raw line; behind "--" stands what the runtime may have expanded.
request read_request(int argc, char *const *argv) {
    request asked;
    own_line.reset(own_arguments_text());
    if (own_line == nullptr) {
        end_without_memory("malloc");
    }
    own_words = copy_text(own_line.get());
    word_reader words = {own_line.get(), own_words.get()};
    const char *word = words.next();
    while (word != nullptr && strcmp(word, "--") != 0) {
        take_option(asked, word, words);
        word = words.next();
    }
    refuse_contradictions(asked);
    int i = words.count;
    while (i < argc && strcmp(argv[i], "--") != 0) {
        i++;
    }
    if (i < argc) {
        asked.count = argc - i - 1;
        asked.texts = argv + i + 1;
    }
    asked.line = words.at;
    return asked;
}
