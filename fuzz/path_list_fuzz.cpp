// The rewriting of path lists. The first byte of the input chooses the current directory, the homes
// and whether there is a name in front; the text goes up to the first null byte. The paths are
// looked up on a small disk: a, a\b, a\b\c.jar, a\d.jar and e\f.

#include <cassert>
#include <cstdint>
#include <cstdlib>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "tests/rewriting/plain_walk.h"
#include "tests/support/disk.h"

namespace {

constexpr const char *FOLDERS[] = {"C:\\", "C:\\a", "C:\\a\\b", "C:\\e"};
constexpr const char *HOMES[] = {"C:\\a", "C:\\a\\b", "C:", "Q:\\a"};
constexpr char NEW_HOME[] = "C:\\R";

// Every process of the fuzzer has its own, and leaves it without a word: what stays are a few empty
// files. Returned is where the process started: the fuzzer goes on to its corpus from there.
fs::path enter_disk() {
    const fs::path start = fs::current_path();
    std::string folder = to_text(fs::temp_directory_path() / "qvl_path_list_XXXXXX");
    fs::current_path(mkdtemp(folder.data()));
    make_disk();
    for (const char *file : {"C:\\a\\b\\c.jar", "C:\\a\\d.jar", "C:\\e\\f"}) {
        put_file(file, "");
    }
    return start;
}

// What becomes of the list, by the walk that remembers nothing.
std::string moved(const std::string &list, const std::string &home) {
    const char separator = list.find(';') == std::string::npos ? ',' : ';';
    std::string result;
    for (size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
        end = list.find(separator, start);
        const std::string element = list.substr(start, end - start);
        const std::string absolute = walk_plainly(element).absolute;
        const bool is_below = (absolute + '\\').starts_with(home + '\\');
        result += is_below ? NEW_HOME + absolute.substr(home.size()) : element;
        result.append(end != std::string::npos, separator);
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0 || size > 1024) {
        return 0;
    }
    static const fs::path start_folder = enter_disk();
    fs::current_path(on_disk(FOLDERS[data[0] % 4]));
    const std::string home = HOMES[data[0] / 4 % 4];
    const std::string text = std::string(data + 1, data + size).c_str();
    const bool has_name = data[0] / 32 % 2 != 0 && text.find('=') != std::string::npos;

    const char *result = replaceLauncherHomeWithRIHome(text.c_str(), home.c_str(), NEW_HOME, has_name, '=');
    const size_t start = has_name ? text.find('=') + 1 : 0;
    assert(result == text.substr(0, start) + moved(text.substr(start), home));
    release_entries(newPathList, &newPathListCount);
    fs::current_path(start_folder);
    return 0;
}
