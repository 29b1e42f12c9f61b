#include "core/banner.h"

#include <cstring>
#include <ctime>

#include "jli/jli_util.h"
#include "jli/text.h"

namespace {

// One behind the other: who finds the label in a file finds the version with it.
constexpr char LABEL_AND_VERSION[] = "QUORVEL_VERSION=\0" QVL_VERSION;

} // namespace

const char *const label = LABEL_AND_VERSION;
const char *const version = LABEL_AND_VERSION + sizeof "QUORVEL_VERSION=";

[[gnu::used]] void just_to_add_version_to_binary() {
    const text_ptr joined = joined_text(label, version);
}

void display_banner() {
    JLI_TraceLauncher("  ___  _   _  ___  _____   _____ _\n");
    JLI_TraceLauncher(
        " / _ \\| | | |/ _ \\| _ \\ \\ / / __| |    Java, started where it should be.\n");
    JLI_TraceLauncher("| (_) | |_| | (_) |   /\\ V /| _|| |__  Quorvel launcher %s\n", version);
    JLI_TraceLauncher(
        " \\__\\_\\\\___/ \\___/|_|_\\ \\_/ |___|____| Help: README.md beside the launcher.\n");
    JLI_TraceLauncher("\n");
}

const char *get_current_time_str() {
    static const char *const failed = "[FAILED TO GET TIMESTAMP]";
    const time_t now = time(nullptr);
    if (now == static_cast<time_t>(-1)) {
        return failed;
    }
    char *text = ctime(&now);
    if (text == nullptr) {
        return failed;
    }
    text[strlen(text) - 1] = '\0';
    return text;
}
