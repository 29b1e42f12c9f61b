#include "tools/launch_review.h"

#include <algorithm>
#include <cstring>

#include "core/config_text.h"
#include "core/jlp_vars.h"
#include "core/launch_mode.h"
#include "platform/files.h"
#include "platform/inspection.h"
#include "platform/system_error.h"
#include "tools/configuration_review.h"
#include "tools/findings.h"
#include "tools/installation.h"
#include "tools/launch.h"
#include "tools/likeness.h"
#include "tools/value_review.h"

namespace {

text_ptr parent_of(const char *path) {
    const char *last = strrchr(path, file_separator);
    return copy_text({path, last == nullptr ? 0 : static_cast<size_t>(last - path)});
}

text_ptr java_in(const char *home, const char *folder) {
    return format_text("%s%s%s", home, folder, slash_exe_name);
}

bool holds_java(const char *home) {
    return is_file(java_in(home, bin_dir).get());
}

// A folder below another that holds a Java, or that is called nearly like what is looked for.
struct folder_search {
    const char *folder;
    const char *like; // null: a Java is looked for
    text_ptr found;
};

void take_folder(void *context, const char *name) {
    folder_search &looked_for = *static_cast<folder_search *>(context);
    text_ptr path = format_text("%s%c%s", looked_for.folder, file_separator, name);
    const bool is_found = looked_for.like == nullptr ? name[0] != '.' && holds_java(path.get())
                                                     : unlikeness(name, looked_for.like) <= LIKE &&
                                                           is_directory(path.get());
    if (is_found) {
        looked_for.found = std::move(path);
    }
}

text_ptr folder_in(const char *folder, const char *like) {
    folder_search looked_for = {folder, like, nullptr};
    list_folder(format_text("%s%c", folder, file_separator).get(), take_folder, &looked_for);
    return std::move(looked_for.found);
}

text_ptr missing_home(const home &each, const char *path) {
    if (is_file(path)) {
        return format_text("%s is %s, which is a file: name the folder above its bin folder.",
                           each.row->key, path);
    }
    const text_ptr parent = parent_of(path);
    const text_ptr likely = folder_in(parent.get(), path + strlen(parent.get()) + 1);
    if (likely != nullptr) {
        return format_text("%s is %s, which is not there: %s is, mend the path.", each.row->key,
                           path, likely.get());
    }
    if (is_set(parent.get()) && strlen(parent.get()) > 2 && !is_directory(parent.get())) {
        return format_text("%s is %s, which is not there, nor is the folder %s: mend the path.",
                           each.row->key, path, parent.get());
    }
    return format_text("%s is %s, which is not there: mend the path.", each.row->key, path);
}

// A home that is there and holds no java.exe where the launcher's own folder has it.
text_ptr home_without_java(const home &each, const char *path) {
    const text_ptr parent = parent_of(path);
    const text_ptr below = folder_in(path, nullptr);
    const char *other = strcmp(bin_dir, bin) == 0 ? jre_bin : bin;
    const char *home = holds_java(parent.get()) ? parent.get() : below.get();
    if (home != nullptr) {
        return format_text("%s is %s, which is one folder too %s: %s is %s.", each.row->key, path,
                           home == parent.get() ? "deep" : "high",
                           home == parent.get() ? "the Java home" : "a Java home in it", home);
    }
    if (is_file(java_in(path, other).get())) {
        return format_text("%s, %s, has its java.exe in %s and the launcher lies in %s: put the "
                           "launcher into that folder of its home, or name another Java home.",
                           each.row->key, path, other + 1, bin_dir + 1);
    }
    return format_text("%s, %s, holds no %s: name a Java home.", each.row->key, path,
                       java_in("", bin_dir).get() + 1);
}

text_ptr home_fault_text(const home &each) {
    const char *path = *each.row->text;
    const text_ptr folder = format_text("%s%c", path, file_separator); // of a drive as well
    if (!is_set(path)) {
        return format_text("%s is set nowhere: write a line %s=<its folder> into launcher.cfg, or "
                           "set the variable %s.",
                           each.row->key, each.row->key, each.row->key);
    }
    if (!each.is_configured) {
        const text_ptr place = format_text("The variable %s, '%s'", each.row->key, path);
        text_ptr fault = path_fault(place.get(), path);
        if (fault != nullptr) {
            return fault;
        }
        if (is_path_relative(path) && !is_directory(path)) {
            return format_text("%s: it counts from the current folder; write the path out.",
                               place.get());
        }
    }
    if (!is_directory(folder.get())) {
        return missing_home(each, path);
    }
    if (each.row->text == &quorvel_home) {
        return format_text("%s, %s, holds no quorvel.jar, which comes with the Quorvel agents: "
                           "name their folder, or write %s=%s to do without.",
                           each.row->key, path, key_of(&launch_mode), plain_mode());
    }
    return home_without_java(each, path);
}

void review_home(const home &each) {
    // Of a path that cannot be one, its line has told.
    if (!each.is_configured || path_fault("", *each.row->text) == nullptr) {
        add_finding(cause::own, each.row, home_fault_text(each));
    }
    if (each.row->text == &jvm_home || setting_lines() < 0 || is_native_invocation) {
        return;
    }
    const setting *mode = setting_kept_in(&launch_mode);
    add_finding(is_set(*each.row->text) ? cause::aside : cause::mode, mode,
                format_text("The launch mode is %s, which needs %s: write %s=%s where just the "
                            "Java of %s is to run.",
                            launch_mode, each.row->key, mode->key, plain_mode(),
                            key_of(&jvm_home)));
}

void review_log() {
    // The message ends with the path, which the settings do not keep.
    const char *path = strstr(the_launch.message.get(), ": ");
    const text_ptr folder = parent_of(path == nullptr ? "" : path + 2);
    const char *key = the_launch.failing->key;
    if (path == nullptr || !is_set(path + 2)) {
        add_finding(
            cause::own, nullptr,
            format_text("%s is empty: name a file or a folder, or take the line out.", key));
    } else if (!is_directory(folder.get())) {
        add_finding(
            cause::own, nullptr,
            format_text("%s names a log in %s, which is no folder: make it, or mend the path.", key,
                        folder.get()));
    } else {
        add_finding(cause::own, nullptr,
                    format_text("The log %s may not be written: allow it, or name another in %s.",
                                path + 2, key));
    }
}

void review_target() {
    const char *target = the_launch.target.get();
    const char *home = *current_launch_mode().java_home;
    if (the_launch.start_error == ERROR_FILENAME_EXCED_RANGE) {
        add_finding(cause::own, nullptr,
                    copy_text("The command line is longer than the system takes: shorten it, for "
                              "example by an argument file."));
    } else if (the_launch.start_error != 0) {
        const text_ptr words(system_error_text(the_launch.start_error, target));
        add_finding(cause::own, nullptr,
                    format_text("%s is no program that can be started (%s): repair this Java, or "
                                "name another one.",
                                target, words.get()));
    } else if (is_file(target)) {
        add_finding(cause::own, nullptr,
                    format_text("%s is the launcher's own home, and it would start itself: name "
                                "another Java home in %s.",
                                home, the_launch.failing->key));
    } else {
        add_finding(cause::own, nullptr,
                    format_text("The launcher starts what has its own name, and there is no %s: "
                                "name a Java home that has it in %s.",
                                target, the_launch.failing->key));
    }
}

// Of what the core says of arguments that it cannot rewrite, and of what it cannot hold. The mend
// may leave room for the keys of the Quorvel home and of the native agent.
constexpr struct {
    const char *said, *mend;
} MENDS[] = {
    {"could not open `",
     "mend the name behind the @; a relative one counts from the current folder"},
    {"Unmatched quote", "close the quote"},
    {"is not allowed in", "take it out"},
    {"Cannot specify main class", "take out what does not begin with -"},
    {"native agent library", "add it to %s, or name it in %s"},
    {"launcher_home in library path",
     "give the path of the qvljni.dll in the jni folder of the home"},
    {"too long", "shorten it"},
    {"too many", "take some out"},
};

void review_early_end() {
    const char *message = the_launch.message == nullptr ? "" : the_launch.message.get();
    const char *said = strstr(message, ": ");
    const char *mend = "docs/messages.md says more";
    for (const auto &row : MENDS) {
        if (strstr(message, row.said) != nullptr) {
            mend = row.mend;
            break;
        }
    }
    const text_ptr advice = format_text(mend, key_of(&quorvel_home), key_of(&quorvel_library_path));
    add_finding(cause::own, nullptr,
                said == nullptr ? copy_text("It ends early, and says why on standard error.")
                                : format_text("%s: %s.", said + 2, advice.get()));
}

const home *failing_home() {
    const home *found = std::ranges::find(homes, the_launch.failing, &home::row);
    return the_launch.failing == nullptr || found == std::end(homes) ? nullptr : found;
}

} // namespace

void review_launch() {
    const home *failing = failing_home();
    if (the_launch.goes_through && the_launch.target != nullptr &&
        is_launcher_file(the_launch.target.get())) {
        add_finding(cause::aside, nullptr,
                    format_text("%s is a launcher as well, and starts what its own launcher.cfg "
                                "says.",
                                the_launch.target.get()));
    }
    if (the_launch.goes_through || the_launch.status == 0) {
        return;
    }
    if (the_launch.target != nullptr && (failing != nullptr || the_launch.start_error != 0)) {
        review_target();
    } else if (failing != nullptr) {
        review_home(*failing);
    } else if (the_launch.failing != nullptr) {
        review_log();
    } else {
        review_early_end();
    }
}
