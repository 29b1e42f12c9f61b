#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "tests/rewriting/engine.h"

TEST(configuration, lists_are_split) {
    // Text -> lead -> tail -> delimiter -> entries
    for (const texts &row : rows_of(R"(
-> -> -> = ->
=a==b= -> -> -> = -> a|b
a=b -> -> -> -> a=b
"-Xmx1g" "-Dx=a b" -> " -> " -> " " -> -Xmx1g|-Dx=a b
"-Xa"  "-Xb" -> " -> " -> " " -> -Xa"  "-Xb
"-Xa" "-Xb -> " -> " -> " " -> -Xa|-X
"" "" -> " -> " -> " " ->
" -> " -> " -> " " ->
ab -> " -> " -> " " ->
<a>;<b> -> -> > -> >; -> <a|<b
)")) {
        char *array[8] = {};
        int count = 0;
        split(row[0].c_str(), array, &count, row[1].c_str(), row[2].c_str(), row[3].c_str());
        EXPECT_EQ(texts(array, array + count), entries_of(row[4])) << row[0];
        release_entries(array, &count);
    }
}

TEST(configuration, a_bundle_has_its_homes_above_the_launcher) {
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
        const texts configured = entries_of(here(row[1]));
        const auto fall_back = [&] {
            assign_text(&executable_dir, here(row[0]));
            assign_text(&container_home, configured[0]);
            assign_text(&jvm_home, configured[1]);
            assign_text(&quorvel_home, configured[2]);
            fall_back_on_bundle(); // may end the process with the same status
            fprintf(stderr, "%s|%s|%s\n", container_home, jvm_home, quorvel_home);
            exit(0);
        };
        const std::string said = row[2].empty() ? "" : here(row[2]) + '\n';
        EXPECT_EXIT(fall_back(), testing::ExitedWithCode(0), testing::Eq(said)) << row[0];
    }
}
