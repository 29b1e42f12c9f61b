// Which Unix directories stand for which drives.

#include <memory>

#include "platform/files.h"
#include "tests/platform/children.h"

TEST(drives, the_longest_directory_that_holds_a_path_shows_it) {
    const fs::path base = fs::current_path();
    fs::create_directories("a/bc/d");
    fs::create_directory("a/b");
    fs::create_directory_symlink("a/bc", "link");
    static constexpr struct {
        const char *letter, *stands_for, *directory, *shown;
    } ROWS[] = {
        {"E", "a/", "a", "E:\\"},       {"E", "a/", "a/bc", "E:\\bc"},   {"D", "link", "a/bc/d", "D:\\d"},
        {"D", "a/b", "a/bc", "E:\\bc"}, {"D", "a", "a/bc", "D:\\bc"},    {"E", "none", "a/b", "D:\\b"},
        {"Z", "none", "/", nullptr},    {"Z", "/", "/proc", "Z:\\proc"},
    };
    for (const auto &row : ROWS) {
        set_environment(std::string("QVL_HOST_DRIVE_") + row.letter, base / row.stands_for);
        fs::current_path(base / row.directory);
        const std::unique_ptr<char, decltype(&free)> shown(current_directory(), free);
        EXPECT_STREQ(shown.get(), row.shown);
        fs::current_path(base);
        EXPECT_EQ(is_directory(row.shown == nullptr ? "Z:\\" : row.shown), row.shown != nullptr);
    }
}
