#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "tests/platform/child_program.h"
#include "tests/platform/sandbox.h"

int main(int argc, char **argv) {
    if (const char *role = getenv("QVL_CHILD"); role != nullptr) {
        return play_role(role, argc, argv);
    }
    enter_sandbox();
    testing::InitGoogleTest(&argc, argv);
    int result = RUN_ALL_TESTS();
    leave_sandbox();
    return result;
}
