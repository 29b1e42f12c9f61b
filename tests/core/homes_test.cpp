#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/support/disk.h"

namespace {

void set_homes(const char *mode, const char *container, const char *jvm, const char *quorvel) {
    assign_text(&launch_mode, mode);
    assign_text(&container_home, here(container));
    assign_text(&jvm_home, here(jvm));
    assign_text(&quorvel_home, here(quorvel));
}

} // namespace

TEST(start_up, the_launcher_lies_in_a_bin_folder) {
    make_disk();
    const struct {
        const char *path;
        int is_valid;
        const char *bin_dir;
    } rows[] = {
        {"C:\\A\\bin\\java.exe", 1, "\\bin"},   {"C:\\A\\jre\\bin\\x", 1, "\\jre\\bin"},
        {"C:\\A\\Xbin\\java.exe", 0, nullptr},  {"C:\\A\\BIN2\\bin.exe", 0, nullptr},
        {"C:\\bin\\java.exe", 1, "\\bin"},      {"C:\\A\\jre\\bin\\missing", 0, nullptr},
        {"C:\\A\\tools\\java.exe", 0, nullptr}, {"", 0, nullptr},
    };
    for (const auto &row : rows) {
        const std::string path = here(row.path);
        if (*row.path != '\0' && path.find("missing") == std::string::npos) {
            put_file(row.path, "");
        }
        EXPECT_EQ(is_valid_exe_path(path.c_str()), row.is_valid) << path;
        if (row.is_valid) {
            assign_text(&executable_dir, path.substr(0, path.rfind('\\')));
            EXPECT_EQ(set_bin_dir(), SUCCESS);
            EXPECT_STREQ(bin_dir, row.bin_dir) << path;
            release_text(&bin_dir);
        }
    }
    EXPECT_EQ(is_valid_exe_path(nullptr), 0);
    assign_text(&executable_dir, "bin");
    EXPECT_EQ(set_bin_dir(), FAILURE);
    EXPECT_STREQ(bin_dir, "");
    release_text(&bin_dir);
}

TEST(homes, that_nobody_allocated_are_not_set) {
    for (const char *mode : {"legacy", "ri"}) {
        assign_text(&launch_mode, mode);
        EXPECT_EQ(validate_directories(), FAILURE) << mode;
    }
}

TEST(homes, of_a_bundle) {
    make_disk();
    put_folder("C:\\R\\a\\b\\c\\jre\\bin");
    put_folder("C:\\R\\quorvel_home");
    assign_text(&executable_dir, here("C:\\R\\a\\b\\c\\jre\\bin"));
    set_homes("ri", "", "", "");
    fall_back_on_bundle();
    EXPECT_EQ(container_home, here("C:\\R\\a\\b\\c\\jre\\bin\\..\\.."));
    EXPECT_EQ(jvm_home, here("C:\\R\\a\\b\\c\\jre\\bin\\..\\..\\..\\..\\.."));
    EXPECT_EQ(quorvel_home, jvm_home + std::string("\\quorvel_home"));

    assign_text(&executable_dir, here("C:\\R\\bin"));
    set_homes("ri", "", "C:\\R\\a", "C:\\R\\b");
    fall_back_on_bundle();
    EXPECT_EQ(container_home, here("C:\\R\\bin\\.."));
    EXPECT_EQ(jvm_home, here("C:\\R\\a"));

    const struct {
        const char *executable_dir, *container, *jvm, *message;
    } failures[] = {
        {"C:\\R\\tools", "", "", "^$"},
        {"C:\\none\\bin", "", "", "^$"},
        {"C:\\R\\bin", "Y:\\none", "", "^$"},
        {"C:\\R\\bin", "", "C:\\R\\a", "^Error: .*quorvel_home doesn't exist"},
    };
    for (const auto &row : failures) {
        assign_text(&executable_dir, here(row.executable_dir));
        set_homes("ri", row.container, row.jvm, "");
        EXPECT_EXIT(fall_back_on_bundle(), testing::ExitedWithCode(0), row.message);
    }
}
