#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/windows_services.h"
#include "tests/platform/child_program.h"

namespace {

// The value with "=" before it, or the last error.
std::string value_of(const char *name) {
    char value[100];
    SetLastError(ERROR_SUCCESS);
    DWORD length = GetEnvironmentVariableA(name, value, sizeof value);
    return length == 0 && GetLastError() != ERROR_SUCCESS ? std::to_string(GetLastError())
                                                          : '=' + std::string(value, length);
}

TEST(environment, names_have_no_letter_case) {
    EXPECT_TRUE(SetEnvironmentVariableA("qvl_one", "1"));
    EXPECT_EQ(value_of("QVL_ONE"), "=1");
    EXPECT_TRUE(SetEnvironmentVariableA("Qvl_One", "new value"));
    EXPECT_EQ(value_of("qvl_one"), "=new value");
    EXPECT_EQ(value_of("qvl_on"), "203");
    EXPECT_EQ(value_of("qvl_one="), "203");
    EXPECT_TRUE(SetEnvironmentVariableA("QVL_ONE", nullptr));
    EXPECT_EQ(value_of("qvl_one"), "203");
    EXPECT_TRUE(SetEnvironmentVariableA("qvl_one", ""));
    EXPECT_EQ(value_of("qvl_one"), "=");
    EXPECT_TRUE(SetEnvironmentVariableA("QVL_ONE", nullptr));
}

TEST(environment, rejects_what_is_no_name) {
    EXPECT_FALSE(SetEnvironmentVariableA("", "x"));
    EXPECT_FALSE(SetEnvironmentVariableA("a=b", "x"));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(value_of(""), "203");
}

TEST(environment, small_buffers_stay_untouched) {
    static constexpr struct {
        const char *value;
        DWORD size;
        DWORD result;
        const char *buffer;
    } ROWS[] = {
        {"abc", 4, 3, "abc"}, {"abc", 3, 4, "#####"}, {"abc", 0, 4, "#####"}, {"", 1, 0, ""}, {"", 0, 1, "#####"},
    };
    for (const auto &row : ROWS) {
        SetEnvironmentVariableA("qvl_one", row.value);
        char buffer[] = "#####";
        EXPECT_EQ(GetEnvironmentVariableA("qvl_one", buffer, row.size), row.result) << row.size;
        EXPECT_STREQ(buffer, row.buffer);
    }
    SetEnvironmentVariableA("qvl_one", nullptr);
}

TEST(environment, goes_to_children_and_leaves_getenv_alone) {
    ASSERT_NE(getenv("PATH"), nullptr);
    const std::string received = getenv("PATH");
    const std::string long_value(20000, 'v');
    char path[100];
    std::string old_value(GetEnvironmentVariableA("PATH", path, 0), '\0');
    GetEnvironmentVariableA("PATH", old_value.data(), static_cast<DWORD>(old_value.size()));
    SetEnvironmentVariableA("QVL_SET", "a b=c");
    SetEnvironmentVariableA("QVL_LONG", long_value.c_str());
    SetEnvironmentVariableA("PATH", "changed");
    EXPECT_EQ(getenv("QVL_SET"), nullptr);
    EXPECT_EQ(getenv("PATH"), received);
    EXPECT_EQ(run_as("variables", own_program() + " QVL_SET PATH QVL_GONE"),
              "QVL_SET=a b=c,a b=c PATH=changed,changed QVL_GONE=,(unset) exit 0");
    SetEnvironmentVariableA("PATH", old_value.c_str());
    SetEnvironmentVariableA("QVL_LONG", nullptr);
    SetEnvironmentVariableA("QVL_SET", nullptr);
}

} // namespace
