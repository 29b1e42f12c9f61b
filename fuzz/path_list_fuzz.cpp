// The rewriting of path lists. The first byte of the input chooses the current directory, the homes
// and whether there is a name in front; the text goes up to the first null byte. The paths are
// looked up on a small disk: a, a\b, a\b\c.jar, a\d.jar and e.

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/jlp_utils.h"
#include "core/rewriting/path_rewriting.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/rewriting/plain_walk.h"
#include "tests/support/trace.h"

namespace {

namespace fs = std::filesystem;

constexpr size_t LONGEST_INPUT = 1024;
constexpr const char *FOLDERS[] = {"", "a", "a/b", "e"};
constexpr const char *HOMES[] = {"C:\\a", "C:\\a\\b", "C:", "Q:\\a"};
constexpr char NEW_HOME[] = "C:\\R";

void require(bool holds) {
    if (!holds) {
        abort();
    }
}

fs::path make_disk() {
    std::string folder = (fs::temp_directory_path() / "qvl_path_list_XXXXXX").string();
    require(mkdtemp(folder.data()) != nullptr);
    const fs::path root = folder;
    fs::create_directories(root / "a" / "b");
    fs::create_directory(root / "e");
    std::ofstream(root / "a" / "d.jar").close();
    std::ofstream(root / "a" / "b" / "c.jar").close();
    setenv("QVL_HOST_DRIVE_C", root.c_str(), 1);
    return root;
}

const fs::path &disk() {
    // The processes of the fuzzer leave it without a word: what stays are a few empty files.
    static const fs::path root = make_disk();
    return root;
}

// What becomes of an element, by the walk that remembers nothing. Its trace is to be found in that
// of the list, from *at on.
std::string moved(const std::string &element, const std::string &home, const std::string &trace, size_t *at) {
    const plain_walk walk = walk_plainly(element);
    *at = trace.find(walk.trace, *at);
    require(*at != std::string::npos);
    *at += walk.trace.size();
    const bool is_below =
        walk.absolute.starts_with(home) && (walk.absolute.size() == home.size() || walk.absolute[home.size()] == '\\');
    return is_below ? NEW_HOME + walk.absolute.substr(home.size()) : element;
}

std::string moved_list(const std::string &list, const std::string &home, const std::string &trace) {
    const char separator = list.find(';') == std::string::npos ? ',' : ';';
    std::string result;
    size_t at = 0;
    size_t start = 0;
    while (true) {
        const size_t end = list.find(separator, start);
        result += moved(list.substr(start, end - start), home, trace, &at);
        if (end == std::string::npos) {
            return result;
        }
        result += separator;
        start = end + 1;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0 || size > LONGEST_INPUT) {
        return 0;
    }
    static const std::string start_folder = fs::current_path().string();
    require(chdir((disk() / FOLDERS[data[0] % 4]).c_str()) == 0);
    const std::string home = HOMES[data[0] / 4 % 4];
    const char delimiter = data[0] / 16 % 2 == 0 ? '=' : ':';
    const std::string text = std::string(reinterpret_cast<const char *>(data) + 1, size - 1).c_str();
    const size_t delimiter_at = text.find(delimiter);
    const bool has_name = data[0] / 32 % 2 != 0 && delimiter_at != std::string::npos;

    const char *result = nullptr;
    const std::string trace = traced_by(
        [&] { result = replaceLauncherHomeWithRIHome(text.c_str(), home.c_str(), NEW_HOME, has_name, delimiter); });
    require(newPathListCount == 1 && newPathList[0] == result);
    for (size_t i = 0; i < size + 4; i++) {
        require(path_component[i] == nullptr);
    }
    const size_t start = has_name ? delimiter_at + 1 : 0;
    require(result == text.substr(0, start) + moved_list(text.substr(start), home, trace));
    release_entries(newPathList, &newPathListCount);
    require(chdir(start_folder.c_str()) == 0); // the fuzzer goes on to its corpus from there
    return 0;
}
