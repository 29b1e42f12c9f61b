// The rewriting of path lists. The first byte of the input chooses the current directory, the homes
// and whether there is a name in front; the text goes up to the first null byte. The paths are
// looked up on a small disk: a, a\b, a\b\c.jar, a\d.jar and e.

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstdlib>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "tests/rewriting/plain_walk.h"
#include "tests/support/disk.h"
#include "tests/support/trace.h"

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
    put_file("C:\\a\\b\\c.jar", "");
    put_file("C:\\a\\d.jar", "");
    put_folder("C:\\e");
    return start;
}

// What becomes of the list, by the walk that remembers nothing: the trace of each element's walk is to
// be found in that of the list.
std::string moved(const std::string &list, const std::string &home, const std::string &trace) {
    const char separator = list.find(';') == std::string::npos ? ',' : ';';
    std::string result;
    size_t traced = 0;
    for (size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
        end = list.find(separator, start);
        const std::string element = list.substr(start, end - start);
        const plain_walk walk = walk_plainly(element);
        traced = trace.find(walk.trace, traced);
        assert(traced != std::string::npos);
        traced += walk.trace.size();
        const bool is_below = (walk.absolute + '\\').starts_with(home + '\\');
        result += is_below ? NEW_HOME + walk.absolute.substr(home.size()) : element;
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
    const char delimiter = data[0] / 16 % 2 == 0 ? '=' : ':';
    const std::string text = std::string(data + 1, data + size).c_str();
    const size_t list_at = text.find(delimiter) + 1;
    const bool has_name = data[0] / 32 % 2 != 0 && list_at != 0;

    const char *result = nullptr;
    const std::string trace = traced_by(
        [&] { result = replaceLauncherHomeWithRIHome(text.c_str(), home.c_str(), NEW_HOME, has_name, delimiter); });
    assert(newPathListCount == 1 && newPathList[0] == result);
    assert(std::count(path_component, path_component + size + 4, nullptr) == static_cast<ptrdiff_t>(size + 4));
    const size_t start = has_name ? list_at : 0;
    assert(result == text.substr(0, start) + moved(text.substr(start), home, trace));
    static char resolved[100000];
    resolve_path(text.c_str(), resolved);
    assert(resolved == walk_plainly(text).absolute);
    release_entries(newPathList, &newPathListCount);
    fs::current_path(start_folder);
    return 0;
}
