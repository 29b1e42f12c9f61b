#include "tools/installation.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "core/banner.h"
#include "core/home_faults.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "core/start_up.h"
#include "core/state_text.h"
#include "platform/files.h"
#include "platform/inspection.h"
#include "tools/findings.h"

installation the_installation = {};

namespace {

constexpr char DEFAULT_NAME[] = "java.exe";
constexpr const char *USUAL_NAMES[] = {DEFAULT_NAME, "javaw.exe"};
constexpr int PLACES = 16;

struct place {
    const char *folder;
    text_ptr name, file;
    text_ptr version_held; // of the launcher that it is; null: another program
};
place places[PLACES];
int place_count = 0;

// explain_launch holds the label too, and what it says of its use besides.
text_ptr launcher_version(const char *file) {
    size_t size = 0;
    const text_ptr bytes(bytes_of_file(file, &size));
    const std::string_view content(bytes.get(), bytes == nullptr ? 0 : size);
    const size_t at = content.find(label);
    if (at == std::string_view::npos ||
        content.find("usage: explain_launch") != std::string_view::npos) {
        return nullptr;
    }
    const char *found = bytes.get() + std::min(size, at + strlen(label) + 1);
    constexpr char VERSION_SIGNS[] = "0123456789.-abcdefghijklmnopqrstuvwxyz";
    const bool is_version =
        *found >= '0' && *found <= '9' && found[strspn(found, VERSION_SIGNS)] == '\0';
    return copy_text(is_version ? found : "unknown");
}

bool is_usual(const char *name) {
    return std::ranges::any_of(USUAL_NAMES,
                               [&](const char *each) { return strcasecmp(each, name) == 0; });
}

void take_file(void *folder, const char *name) {
    const size_t length = strlen(name);
    if (place_count == PLACES || length < 4 || strcasecmp(name + length - 4, ".exe") != 0) {
        return;
    }
    place &each = places[place_count];
    each.folder = static_cast<const char *>(folder);
    each.name = copy_text(name);
    each.file =
        format_text("%s%s%c%s", the_installation.home.get(), each.folder, file_separator, name);
    each.version_held = launcher_version(each.file.get());
    if (each.version_held != nullptr || is_usual(name)) {
        place_count++;
    }
}

text_ptr without_separator(text_ptr path) {
    const size_t length = strlen(path.get());
    if (length > 0 && path.get()[length - 1] == file_separator) {
        path.get()[length - 1] = '\0';
    }
    return path;
}

text_ptr full_path_of(const char *path) {
    text_ptr full_path(new_state_text());
    if (GetFullPathNameA(path, TEXT_SIZE, full_path.get(), nullptr) >= TEXT_SIZE) {
        refuse_long_text(path);
    }
    return full_path;
}

// The letter case of the folder does not matter here as it does for a launcher.
text_ptr own_home() {
    const text_ptr own_path(new_own_path());
    const std::string_view path(own_path.get());
    const std::string_view directory(path.data(), path.rfind(file_separator));
    for (const char *folder : {jre_bin, bin}) {
        const size_t length = strlen(folder);
        if (directory.size() > length &&
            strncasecmp(directory.data() + directory.size() - length, folder, length) == 0) {
            return copy_text({directory.data(), directory.size() - length});
        }
    }
    refuse_usage(copy_text("this program lies in no bin folder, so --launcher-home must say what "
                           "to explain"));
}

const place *place_of(const char *name, bool is_launcher) {
    place *const end = places + place_count;
    const place *found = std::find_if(places, end, [&](const place &each) {
        return (name == nullptr || strcasecmp(each.name.get(), name) == 0) &&
               (!is_launcher || each.version_held != nullptr);
    });
    return found == end ? nullptr : found;
}

// A launcher of the name before another program of the name, and, where no name is asked for, any
// launcher before that.
const place *chosen_place(const char *asked_name) {
    const char *name = asked_name == nullptr ? DEFAULT_NAME : asked_name;
    const place *found = place_of(name, true);
    if (found == nullptr && asked_name == nullptr) {
        found = place_of(nullptr, true);
    }
    return found == nullptr ? place_of(name, false) : found;
}

text_ptr original_of(const char *file) {
    return format_text("%s.quorvel-original", file);
}

bool is_overwritten(const place &each) {
    return each.version_held == nullptr && is_file(original_of(each.file.get()).get());
}

text_ptr overwritten_text(const char *file) {
    return format_text("%s is not the launcher any more, an update of Java has overwritten it: run "
                       "install.cmd \"%s\" again.",
                       file, the_installation.home.get());
}

text_ptr place_fault() {
    const installation &here = the_installation;
    const char *home = here.home.get();
    if (here.is_home_missing) {
        return format_text("There is no folder %s: mend the path behind --launcher-home.", home);
    }
    if (std::string_view(home).ends_with(bin) && is_file(joined_text(home, slash_exe_name).get())) {
        return format_text("%s is the folder of the programs: name the one above it, which holds "
                           "launcher.cfg.",
                           home);
    }
    if (kind_of(here.file.get()) == entry_kind::missing) {
        return format_text("There is no launcher %s: put the launcher's %s there, or run "
                           "install.cmd \"%s\".",
                           here.file.get(), here.name.get(), home);
    }
    if (is_file(original_of(here.file.get()).get())) {
        return overwritten_text(here.file.get());
    }
    return format_text("%s is not the launcher but another program, most likely Java's own, and is "
                       "what runs: put the launcher in its place, or run install.cmd \"%s\".",
                       here.file.get(), home);
}

text_ptr target_of(const place &each) {
    const char *home = *current_launch_mode().java_home;
    if (launch_mode == nullptr || home == nullptr || !is_directory(home)) {
        return nullptr;
    }
    const text_ptr explained = copy_text(bin_dir);
    assign_text(&bin_dir, each.folder);
    text_ptr target = target_path(each.name.get());
    assign_text(&bin_dir, explained.get());
    return target;
}

text_ptr target_state(const place &each, const char *target) {
    if (is_startable(target, each.file.get())) {
        return format_text("starts %s", target);
    }
    return is_file(target) ? copy_text("it would start itself")
                           : format_text("there is no %s", target);
}

void review_version(const place &each) {
    if (each.version_held != nullptr && strcmp(each.version_held.get(), version) != 0) {
        add_finding(cause::aside, nullptr,
                    format_text("%s is a launcher of version %s and this is explain_launch %s: "
                                "install both from one package.",
                                each.file.get(), each.version_held.get(), version));
    }
}

void review_place(const place &each) {
    const char *file = each.file.get();
    if (is_overwritten(each)) {
        add_finding(cause::aside, nullptr, overwritten_text(file));
    }
    if (each.version_held == nullptr && !is_overwritten(each) && the_installation.is_launcher &&
        strcasecmp(each.name.get(), the_installation.name.get()) == 0) {
        add_finding(
            cause::aside, nullptr,
            format_text("%s is another program, most likely Java's own: what starts it does "
                        "not start the launcher %s.",
                        file, the_installation.file.get()));
    }
    const text_ptr target = target_of(each);
    if (each.version_held != nullptr && target != nullptr && !is_startable(target.get(), file)) {
        add_finding(
            cause::aside, nullptr,
            format_text("The launcher %s would fail too, as %s: take it out, or name a home "
                        "with that file.",
                        file, target_state(each, target.get()).get()));
    }
}

} // namespace

bool is_launcher_file(const char *file) {
    return launcher_version(file) != nullptr;
}

void find_installation(const request &asked) {
    installation &here = the_installation;
    here.home = asked.launcher_home == nullptr
                    ? own_home()
                    : without_separator(full_path_of(asked.launcher_home));
    here.is_home_missing = !is_directory(here.home.get());
    for (const char *folder : {bin, jre_bin}) {
        const text_ptr path = joined_text(here.home.get(), folder);
        const int first = place_count;
        list_folder(path.get(), take_file, const_cast<char *>(folder));
        std::sort(places + first, places + place_count, [](const place &one, const place &other) {
            return strcmp(one.name.get(), other.name.get()) < 0;
        });
    }
    const place *chosen = chosen_place(asked.name);
    here.is_launcher = chosen != nullptr && chosen->version_held != nullptr;
    here.folder = chosen == nullptr ? bin : chosen->folder;
    here.name = copy_text(chosen != nullptr       ? chosen->name.get()
                          : asked.name == nullptr ? DEFAULT_NAME
                                                  : asked.name);
    here.file =
        format_text("%s%s%c%s", here.home.get(), here.folder, file_separator, here.name.get());
}

void review_installation() {
    if (!the_installation.is_launcher) {
        add_finding(cause::place, nullptr, place_fault());
    }
    for (int i = 0; i < place_count; i++) {
        review_version(places[i]);
        if (strcmp(places[i].file.get(), the_installation.file.get()) != 0) {
            review_place(places[i]);
        }
    }
}

void append_installation(text_buffer &report) {
    append(report, "\nLauncher\n");
    for (int i = 0; i < place_count; i++) {
        const place &each = places[i];
        const char *held = each.version_held.get();
        const text_ptr target = held == nullptr ? nullptr : target_of(each);
        const text_ptr line = held == nullptr
                                  ? format_text("  %s: another program", each.file.get())
                                  : format_text("  %s: version %s", each.file.get(), held);
        append(report, line.get());
        if (target != nullptr) {
            append(report, "; ");
            append(report, target_state(each, target.get()).get());
        }
        append(report, '\n');
    }
    if (place_count == 0) {
        append(report, "  none\n");
    }
}
