// The shape of the Windows executable: what it costs to load, and how it is hardened.

#include <cstring>
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

std::string launcher_bytes() {
    return read_bytes(own_file().parent_path() / "java.exe");
}

} // namespace

TEST(executable, is_small_and_imports_two_libraries) {
    const std::string bytes = launcher_bytes();
    EXPECT_LE(bytes.size(), 45000u);
    EXPECT_EQ(imported(bytes), (std::set<std::string>{"KERNEL32.dll", "msvcrt.dll"}));
}

TEST(executable, moves_and_runs_no_data) {
    const std::string bytes = launcher_bytes();
    const size_t pe = at<uint32_t>(bytes, 0x3C);
    const size_t optional = pe + 24;
    const unsigned high_entropy = 0x20, dynamic_base = 0x40, no_execute = 0x100;
    EXPECT_EQ(at<uint16_t>(bytes, optional + 70), high_entropy | dynamic_base | no_execute);
    EXPECT_GE(at<uint64_t>(bytes, optional + 24), uint64_t(1) << 32) << "room for all the randomness";
    EXPECT_EQ(at<uint16_t>(bytes, pe + 22) & 1, 0) << "relocations are stripped";
    EXPECT_GT(at<uint32_t>(bytes, optional + 112 + 5 * 8 + 4), 0u) << "no relocations";

    const size_t sections = optional + at<uint16_t>(bytes, pe + 20);
    const uint32_t executes = 0x20000000, writes = 0x80000000;
    for (int i = 0; i < at<uint16_t>(bytes, pe + 6); i++) {
        const size_t section = sections + static_cast<size_t>(i) * 40;
        EXPECT_NE(at<uint32_t>(bytes, section + 36) & (executes | writes), executes | writes) << bytes.data() + section;
    }
}

// Programs that resolve paths start it so; the runtime's stat() of Windows, not Wine's, knows no such path.
TEST_F(launcher, takes_the_sign_of_a_resolved_path_off_its_own) {
    for (const char *home : {"C:\\J", "C:\\L"}) {
        configure("LAUNCH_MODE=ri\nSHOW_START=true\nJVM_HOME=" + std::string(home));
        const uint32_t id = start({"\\\\?\\" + to_text(on_disk(LAUNCHER)), {}, on_disk("C:\\work")});
        const outcome result = end_of_launcher(id);
        EXPECT_NE(result.output.find(here("executable_file_path = C:\\L\\bin\\java.exe\n")), std::string::npos)
            << result.output;
        EXPECT_EQ(result.status, home[3] == 'J' ? 0u : STATUS_MINUS_1);
    }
}
