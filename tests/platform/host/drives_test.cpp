// Which Unix directories stand for which drives.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "platform/files.h"
#include "platform/windows_services.h"

namespace {

class drives : public testing::Test {
protected:
    void SetUp() override {
        base = std::filesystem::current_path().string();
        std::filesystem::create_directories("drive/sub/deep");
        std::filesystem::create_directory("drive/su");
        std::filesystem::remove("link");
        std::filesystem::create_symlink("drive/sub", "link");
    }
    void TearDown() override {
        std::filesystem::current_path(base);
        for (const char *name : {"QVL_HOST_DRIVE_D", "QVL_HOST_DRIVE_E", "QVL_HOST_DRIVE_Z"}) {
            unsetenv(name);
        }
    }
    void set(const char *name, const std::string &directory) { setenv(name, directory.c_str(), 1); }
    std::string shown(const char *directory) {
        std::filesystem::current_path(base + directory);
        std::unique_ptr<char, decltype(&free)> path(current_directory(), free);
        return path == nullptr ? "(none)" : path.get();
    }
    std::string base;
};

TEST_F(drives, the_longest_directory_that_holds_a_path_shows_it) {
    EXPECT_EQ(shown("/drive/sub"), "C:\\qvl_test\\d\\drive\\sub");
    set("QVL_HOST_DRIVE_E", base + "/drive/");
    EXPECT_EQ(shown("/drive"), "E:\\");
    EXPECT_EQ(shown("/drive/sub"), "E:\\sub");
    set("QVL_HOST_DRIVE_D", base + "/link");
    EXPECT_EQ(shown("/drive/sub/deep"), "D:\\deep");
    set("QVL_HOST_DRIVE_D", base + "/drive/su");
    EXPECT_EQ(shown("/drive/sub"), "E:\\sub");
    set("QVL_HOST_DRIVE_D", base + "/drive");
    EXPECT_EQ(shown("/drive/sub"), "D:\\sub");
    EXPECT_EQ(shown("/../../.."), "Z:\\tmp");
    set("QVL_HOST_DRIVE_Z", base);
    EXPECT_EQ(shown("/../../.."), "(none)");
    EXPECT_EQ(GetLastError(), DWORD(ERROR_PATH_NOT_FOUND));
}

TEST_F(drives, paths_lead_below_their_directories) {
    set("QVL_HOST_DRIVE_D", base + "/drive");
    EXPECT_TRUE(is_directory("D:\\"));
    EXPECT_TRUE(is_directory("d:/sub\\deep/"));
    EXPECT_TRUE(is_directory("D:..\\sub"));
    EXPECT_FALSE(is_directory("D:"));
    EXPECT_FALSE(is_directory("E:\\sub"));
    EXPECT_TRUE(is_directory("Z:\\proc\\self"));
    set("QVL_HOST_DRIVE_D", base + "/link");
    EXPECT_TRUE(is_directory("D:\\deep"));
    set("QVL_HOST_DRIVE_D", base + "/missing");
    EXPECT_FALSE(is_directory("D:\\"));
}

} // namespace
