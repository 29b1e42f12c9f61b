// The shape of the Windows executable: what it costs to load.

#include <cstring>
#include <fstream>
#include <iterator>
#include <set>

#include "tests/support/world.h"

namespace {

template <typename number>
number at(const std::string &bytes, size_t offset) {
    number value = 0;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

// The names in the import table of a 64-bit PE file.
std::set<std::string> imported(const std::string &bytes) {
    const size_t pe = at<uint32_t>(bytes, 0x3C);
    const size_t sections = pe + 24 + at<uint16_t>(bytes, pe + 20);
    const auto file_offset = [&](uint32_t address) {
        for (size_t section = sections;; section += 40) {
            const uint32_t start = at<uint32_t>(bytes, section + 12);
            if (address >= start && address < start + at<uint32_t>(bytes, section + 16)) {
                return address - start + at<uint32_t>(bytes, section + 20);
            }
        }
    };
    std::set<std::string> names;
    const size_t directory = pe + 24 + 112 + 8;
    for (size_t entry = file_offset(at<uint32_t>(bytes, directory)); at<uint32_t>(bytes, entry + 12) != 0;
         entry += 20) {
        names.insert(bytes.data() + file_offset(at<uint32_t>(bytes, entry + 12)));
    }
    return names;
}

} // namespace

TEST(executable, is_small_and_imports_two_libraries) {
    std::ifstream file(own_file().parent_path() / "java.exe", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_LE(bytes.size(), 64u * 1024);
    EXPECT_EQ(imported(bytes), (std::set<std::string>{"KERNEL32.dll", "msvcrt.dll"}));
}
