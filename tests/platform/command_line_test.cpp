// Programs and arguments, by a round trip through a child that prints what it receives.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/platform/child_program.h"
#include "tests/platform/sandbox.h"

namespace {

// Puts this program at C:\qvl_test\prog.exe and under the other names that the rows use.
class command_line : public testing::Test {
protected:
    static void SetUpTestSuite() {
        std::filesystem::copy_file(own_file(), "../prog.exe");
        std::filesystem::create_directories("../p q");
        for (const char *name : {"../p q/x y.exe", "../plain", "../dir x.exe", "../a.b"}) {
            std::filesystem::create_hard_link("../prog.exe", name);
        }
        std::filesystem::create_directory("../dir");
        write_file("../plain.exe", "");
    }
};

TEST_F(command_line, arguments) {
    static constexpr struct {
        const char *text;
        const char *arguments;
    } ROWS[] = {
        {"", ""},
        {" \t ", ""},
        {" 1\t2 \t 3 ", "[1][2][3]"},
        {" \"\" x", "[][x]"},
        {" \"a b\" c\" \"d \"e f", "[a b][c d][e f]"},
        {" a\\b a\\\\b \\ \\\\ \\\\s\\h\\", "[a\\b][a\\\\b][\\][\\\\][\\\\s\\h\\]"},
        {" a\\\"b \\\"r s\\\"", "[a\"b][\"r][s\"]"},
        {" a\\\\\"b c\" x", "[a\\b c][x]"},
        {" a\\\\\\\"b x", "[a\\\"b][x]"},
        {" \"a\\\" b\" \"a\\\\\" c", "[a\" b][a\\][c]"},
        {" \"C:\\dir\\\" x", "[C:\\dir\" x]"},
        {" \"a\"\"b c\" d", "[a\"b c][d]"},
        {" \"\"\"x\"\"\" e", "[\"x\"][e]"},
        {" \"\"\"\" f", "[\"][f]"},
        {" \"a\"\"\" g", "[a\"][g]"},
        {" i a\"\"b c", "[i][ab][c]"},
        {" a\"\"\"b c\"\"\" d", "[a\"b c\"][d]"},
        {" a\"\"\"\"b c", "[a\"b][c]"},
        {" \"h i\"\"\"\"j k\"", "[h i\"\"j k]"},
        {" \"unfinished \\", "[unfinished \\]"},
        {" \"", "[]"},
        {" @f ' '", "[@f]['][']"},
    };
    for (const auto &row : ROWS) {
        std::string program = "C:\\qvl_test\\prog.exe";
        EXPECT_EQ(run_as("arguments", program + row.text), '[' + program + ']' + row.arguments + "exit 0") << row.text;
    }
}

TEST_F(command_line, programs) {
    static constexpr struct {
        const char *text;
        const char *result;
    } ROWS[] = {
        {"C:\\qvl_test\\prog 1", "[C:\\qvl_test\\prog][1]exit 0"},
        {"\"C:\\qvl_test\\prog\" 1", "[C:\\qvl_test\\prog][1]exit 0"},
        {"C:\\qvl_test\\prog.exe\t1", "[C:\\qvl_test\\prog.exe][1]exit 0"},
        {"\"C:\\qvl_test\\prog.exe\"x\" y\" z", "[C:\\qvl_test\\prog.exex y][z]exit 0"},
        {"\"C:\\qvl_test\\prog.exe\"", "[C:\\qvl_test\\prog.exe]exit 0"},
        {"C:\\qvl_test\\p q\\x y.exe 1 2", "[C:\\qvl_test\\p q\\x y.exe][1][2]exit 0"},
        {"C:\\qvl_test\\p q\\x y 1 2", "[C:\\qvl_test\\p q\\x y][1][2]exit 0"},
        {"\"C:\\qvl_test\\p q\\x y.exe\" 1", "[C:\\qvl_test\\p q\\x y.exe][1]exit 0"},
        {"C:\\qvl_test\\plain 1", "[C:\\qvl_test\\plain][1]exit 0"},
        {"C:\\qvl_test\\a.b", "[C:\\qvl_test\\a.b]exit 0"},
        {"C:\\qvl_test\\dir x.exe", "[C:\\qvl_test\\dir x.exe]exit 0"},
        {"..\\prog 1", "[..\\prog][1]exit 0"},
        {"\\qvl_test\\prog 1", "[\\qvl_test\\prog][1]exit 0"},
        {"C:/qvl_test/d/../prog.exe 1", "[C:/qvl_test/d/../prog.exe][1]exit 0"},
        {"C:\\qvl_test\\missing.exe 1", "error 2"},
        {"\"C:\\qvl_test\\prog.exe 1\"", "error 2"},
        {"C:\\qvl_test\\p q\\x", "error 2"},
        {"", "error 2"},
    };
    for (const auto &row : ROWS) {
        EXPECT_EQ(run_as("arguments", row.text), row.result) << row.text;
    }
    for (const char *no_program : {"C:\\qvl_test\\dir", "C:\\qvl_test\\plain.exe", "\"\""}) {
        EXPECT_FALSE(start_child_as("arguments", no_program).started) << no_program;
    }
}

TEST_F(command_line, length) {
    std::string text = "C:\\qvl_test\\prog.exe ";
    int rest = 32766 - static_cast<int>(text.size());
    text.resize(32766, 'x');
    EXPECT_EQ(run_as("length", text), "2:" + std::to_string(rest) + " exit 0");
    EXPECT_FALSE(start_child_as("length", text + 'x').started);
}

} // namespace
