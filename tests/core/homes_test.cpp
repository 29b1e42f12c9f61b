#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"

TEST(homes, of_the_launcher_end_with_a_bin_folder) {
    make_disk();
    // The launcher -> the folder; none where it cannot lie
    for (const texts &row : rows_of(R"(
C:\A\bin\java.exe -> \bin
C:\A\jre\bin\x -> \jre\bin
C:\bin\java.exe -> \bin
C:\A\Xbin\java.exe ->
C:\A\BIN2\bin.exe ->
C:\A\tools\java.exe ->
)")) {
        const std::string path = here(row[0]);
        put_file(row[0], "");
        assign_text(&executable_dir, path.substr(0, path.rfind('\\')));
        EXPECT_EQ(is_valid_exe_path(path.c_str()), row[1].empty() ? 0 : 1) << path;
        EXPECT_EQ(set_bin_dir(), row[1].empty() ? FAILURE : SUCCESS) << path;
        EXPECT_EQ(bin_dir, row[1]) << path;
        release_text(&bin_dir);
    }
    for (const char *path : {static_cast<const char *>(nullptr), "", "C:\\A\\jre\\bin\\missing"}) {
        EXPECT_EQ(is_valid_exe_path(path), 0);
    }
}

TEST(homes, of_a_bundle) {
    make_disk();
    put_folder("C:\\R\\a\\b\\c\\jre\\bin");
    put_folder("C:\\R\\quorvel_home");
    // The launcher's folder -> container home, JVM home and Quorvel home as configured -> as they are then,
    // or what the process says at its end
    for (const texts &row : rows_of(R"(
C:\R\a\b\c\jre\bin -> || -> C:\R\a\b\c\jre\bin\..\..|C:\R\a\b\c\jre\bin\..\..\..\..\..|C:\R\a\b\c\jre\bin\..\..\..\..\..\quorvel_home
C:\R\bin -> |C:\R\a|C:\R\b -> C:\R\bin\..|C:\R\a|C:\R\b
C:\R\tools -> || ->
C:\none\bin -> || ->
C:\R\bin -> Y:\none|| ->
C:\R\bin -> |C:\R\a| -> Error: C:\R\a\quorvel_home doesn't exist
)")) {
        const texts configured = entries_of(row[1]);
        const auto fall_back = [&] {
            assign_text(&executable_dir, here(row[0]));
            assign_text(&container_home, here(configured[0]));
            assign_text(&jvm_home, here(configured[1]));
            assign_text(&quorvel_home, here(configured[2]));
            fall_back_on_bundle(); // may end the process with the same status
            fprintf(stderr, "%s|%s|%s\n", container_home, jvm_home, quorvel_home);
            exit(0);
        };
        EXPECT_EXIT(fall_back(), testing::ExitedWithCode(0), testing::Eq(row[2].empty() ? "" : here(row[2]) + '\n'))
            << row[0];
    }
}
