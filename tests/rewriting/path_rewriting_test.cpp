#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/rewriting/path_rewriting.h"
#include "core/rewriting/shared_disk_queries.h"
#include "core/state_arrays.h"
#include "core/state_text.h"
#include "platform/files.h"
#include "tests/rewriting/engine.h"
#include "tests/rewriting/plain_walk.h"
#include "tests/support/trace.h"

// What the product has asked the disk for: each path whose kind it wanted to know, and how often the current directory.
static struct disk_queries {
    texts paths;
    int current_directory = 0;
} asked;

// The linker hands the product's calls of kind_of() and current_directory() to these.
extern "C" {
entry_kind __real_kind_of(const char *path);
entry_kind __wrap_kind_of(const char *path);
char *__real_current_directory();
char *__wrap_current_directory();
}

entry_kind __wrap_kind_of(const char *path) {
    asked.paths.push_back(path);
    return __real_kind_of(path);
}

char *__wrap_current_directory() {
    asked.current_directory++;
    return __real_current_directory();
}

namespace {

const fs::path start_folder = fs::current_path();

class path_rewriting : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        for (const char *file : {"C:\\L\\lib\\a.jar", "C:\\L\\lib\\b c.jar", "C:\\L\\a.jar", "C:\\L\\jre\\lib\\rt.jar",
                                 "C:\\other\\a.jar", "C:\\Lx\\a.jar"}) {
            put_file(file, "");
        }
        stand_in("C:\\L");
    }

    void TearDown() override {
        fs::current_path(start_folder);
        putenv(const_cast<char *>("QVL_HOST_DRIVE_D="));
        release_entries(newPathList, &newPathListCount);
    }

    static void stand_in(const std::string &folder) { fs::current_path(on_disk(folder)); }
};

std::string moved(const std::string &arg, int has_name = 0, char delimiter = '=') {
    return replaceLauncherHomeWithRIHome(here(arg).c_str(), here("C:\\L").c_str(), here("C:\\R").c_str(), has_name,
                                         delimiter);
}

// Without the folders that the disk lies in.
std::string asked_below_disk() {
    std::string paths;
    for (const std::string &path : asked.paths) {
        if (!here("C:\\").starts_with(path + '\\')) {
            paths += (paths.empty() ? "" : "|") + path;
        }
    }
    return paths;
}

std::string absolute(const std::string &path) {
    const text_ptr result(new_state_text());
    resolve_path(path.c_str(), result.get());
    return result.get();
}

} // namespace

TEST_F(path_rewriting, moves_what_lies_below_the_old_home) {
    // Current directory -> list -> moved list
    for (const texts &row : rows_of(R"(
C:\L -> C:\L\lib\a.jar;C:\other\a.jar -> C:\R\lib\a.jar;C:\other\a.jar
C:\L -> C:\L -> C:\R
C:\L -> C:\L\ -> C:\R\
C:\L -> C:\Lx\a.jar -> C:\Lx\a.jar
C:\L -> C:\Lnone\a.jar -> C:\Lnone\a.jar
C:\L -> C:\l\lib -> C:\l\lib
C:\L -> C:\L\lib\b c.jar\ -> C:\R\lib\b c.jar\
// Relative to a current directory inside the home, or outside.
C:\L -> lib\a.jar -> C:\R\lib\a.jar
C:\L -> x -> C:\R\x
C:\L -> . -> C:\R
C:\L -> .. -> ..
C:\L -> ..\L\lib -> C:\R\lib
C:\L\jre -> ..\lib\* -> C:\R\lib\*
C:\other -> a.jar -> a.jar
C:\other -> ..\L\none.jar -> C:\R\none.jar
// What is missing is kept as written from there on, but ".." leads back by text.
C:\L -> C:\L\none\x\a.jar -> C:\R\none\x\a.jar
C:\L -> C:\L\lib\a.jar\none -> C:\R\lib\a.jar\none
C:\L -> C:\L\none\..\lib\a.jar -> C:\R\lib\a.jar
C:\L -> C:\L\none\x\..\y -> C:\R\none\x\..\y
C:\L -> C:\L\none\x\..\..\lib -> C:\R\lib
C:\L -> C:\L\none\..\..\other\x -> C:\L\none\..\..\other\x
C:\L -> C:\none\..\L\.\lib\..\x -> C:\R\x
// Forward slashes are read, and kept where nothing moves.
C:\L -> lib/none/x -> C:\R\lib\none\x
C:\L -> ../other/a.jar -> ../other/a.jar
// Separators that follow one another.
C:\L -> C:\L\\lib\\a.jar -> C:\R\lib\a.jar
C:\L -> C:\L\\\lib\\\\a.jar -> C:\R\lib\a.jar
C:\L -> C:\L\\none\\x -> C:\R\\none\\x
C:\L -> \L\lib -> C:\R\\L\lib
// Lists.
C:\L -> ->
C:\L -> ; -> ;
C:\L -> , -> ,
C:\L -> ;C:\L\a;;C:\L\b; -> ;C:\R\a;;C:\R\b;
C:\L -> a.jar,C:\L\b.jar -> C:\R\a.jar,C:\R\b.jar
C:\L -> a,b;C:\L\c -> C:\R\a,b;C:\R\c
)")) {
        stand_in(row[0]);
        EXPECT_EQ(moved(row[1]), here(row[2])) << row[1] << " from " << row[0];
    }
}

TEST_F(path_rewriting, passes_over_the_name) {
    // Argument -> whether it has a name -> what stands after the name -> moved argument
    for (const texts &row : rows_of(R"(
-Dx=C:\L\ext -> 1 -> = -> -Dx=C:\R\ext
-Dx= -> 1 -> = -> -Dx=
-Dx=a=b -> 1 -> = -> -Dx=C:\R\a=b
-Da,b=C:\L\c;C:\L\d -> 1 -> = -> -Da,b=C:\R\c;C:\R\d
-D;=C:\L\c,C:\L\d -> 1 -> = -> -D;=C:\R\c,C:\R\d
-Xbootclasspath/a:C:\L\boot.jar -> 1 -> : -> -Xbootclasspath/a:C:\R\boot.jar
-Dx -> 0 -> = -> C:\R\-Dx
-Dx=y -> 2 -> = -> C:\R\-Dx=y
)")) {
        EXPECT_EQ(moved(row[0], std::stoi(row[1]), row[2][0]), here(row[3])) << row[0];
    }
}

// At the root of a drive the current directory ends with a separator, and a home is a bare drive.
TEST_F(path_rewriting, homes_at_the_root_of_a_drive) {
    const std::string root = fs::current_path().root_path().string();
    const std::string on_drive = here("C:\\L\\a.jar");
    const std::string drive = on_drive.substr(0, 2);
    const texts paths = {on_drive, on_drive.substr(3), drive + "\\qvl_none\\x"};
    fs::current_path(on_windows ? fs::path(root) : on_disk("C:\\"));
    const char *list = replaceLauncherHomeWithRIHome((paths[0] + ";" + paths[1] + ";" + paths[2]).c_str(),
                                                     drive.c_str(), "Q:\\R", 0, '=');
    const std::string below_home = "Q:\\R" + on_drive.substr(2);
    // No prefix of the last one exists, so that none brought its drive along.
    EXPECT_EQ(list, below_home + ";" + below_home + ";" + paths[2]);
    EXPECT_EQ(absolute(paths[2]), "\\qvl_none\\x");
    EXPECT_EQ(absolute("qvl_none"), drive + "\\\\qvl_none");
    EXPECT_EQ(absolute(drive + "\\"), drive + "\\");
    EXPECT_EQ(absolute(drive), "");
}

TEST_F(path_rewriting, a_path_on_another_drive_keeps_its_drive) {
    const char *const rows[][2] = {
        {"Q:\\L", "R"},
        {"Q:\\L\\a\\..\\b", "R\\a\\..\\b"},
        {"q:\\L\\a", "q:\\L\\a"},
        {"Q:L\\a", "Q:L\\a"}, // what stands before the first separator is left out
    };
    for (const auto &[path, expected] : rows) {
        EXPECT_STREQ(replaceLauncherHomeWithRIHome(path, "Q:\\L", "R", 0, '='), expected);
    }
    put_folder("C:\\other\\L");
    set_variable("QVL_HOST_DRIVE_D", on_disk("C:\\other").string());
    const std::string other = on_windows ? getenv("SystemRoot") : "D:\\L";
    if (other[0] == here("C:\\")[0]) {
        GTEST_SKIP() << "passed over: the tests run on the system's drive: there is no other to be sure of";
    }
    EXPECT_EQ(absolute(other + "\\.\\none\\x"), other + "\\none\\x");
    EXPECT_EQ(replaceLauncherHomeWithRIHome((other + "\\x\\..").c_str(), other.c_str(), "R", 0, '='), std::string("R"));
}

TEST_F(path_rewriting, results_stay) {
    const char *first = replaceLauncherHomeWithRIHome("a", "", "", 0, '=');
    std::string others;
    for (int i = 0; i < 5000; i++) {
        others += ";Q:\\not below the home";
    }
    const std::string moved_list = moved("C:\\L\\a" + others);
    EXPECT_EQ(moved_list, here("C:\\R\\a") + others);
    EXPECT_GT(moved_list.size(), size_t{TEXT_SIZE});
    EXPECT_STREQ(first, "a");
    ASSERT_EQ(newPathListCount, 2);
    EXPECT_EQ(newPathList[0], first);
    EXPECT_EQ(newPathList[1], moved_list);
    EXPECT_EQ(path_component[0], nullptr);
}

TEST_F(path_rewriting, is_traced) {
    EXPECT_EQ(traced_by([] { replaceLauncherHomeWithRIHome("-Dx=Q:/L/y,Q:\\z", "Q:\\L", "R", 1, '='); }),
              R"(TRANSFORMING PATH LIST:
-----------------------
   property:  -Dx
   old_paths: Q:/L/y,Q:\z

RESOLVE PATH:
-------------
   old_path: Q:/L/y
   old_path_copy contains forward slashes:      Q:/L/y
   old_path_copy with forward slashes replaced: Q:\L\y
   path_component[0] = L
       path_prefix = Q:\L
   path_component[1] = y
       path_prefix = Q:\L\y
   old_path_abs: Q:\L\y

TRANSFORMING PATH:
------------------
   old_path_abs: Q:\L\y
   new_path: R\y

RESOLVE PATH:
-------------
   old_path: Q:\z
   path_component[0] = z
       path_prefix = Q:\z
   old_path_abs: Q:\z

NOT TRANSFORMING PATH:
----------------------
   old_path: Q:\z
   new_path: Q:\z

TRANSFORM PATH LIST END:
------------------------
   newPathList: -Dx=R\y,Q:\z

)");
    EXPECT_TRUE(traced_by([] { moved(""); })
                    .starts_with("TRANSFORMING PATH LIST:\n"
                                 "-----------------------\n"
                                 "   property:  -cp or -classpath\n"
                                 "   old_paths: \n"));
}

// The disk is asked for no prefix that exists twice and for nothing below what is missing; each walk is traced as if
// it had asked for all of its own.
TEST_F(path_rewriting, asks_once_for_what_the_paths_have_in_common) {
    // Current directory -> list -> what the disk is asked for, unless the systems differ in it
    std::vector<texts> rows = rows_of(R"(
C:\L -> none;none\x;none\x\y -> C:\L|C:\L\none|C:\L\none|C:\L\none
C:\L -> none\..\lib;none\..\none\x -> C:\L|C:\L\none|C:\L\none\..|C:\L\lib|C:\L\none|C:\L\none
C:\L -> lib\a.jar\x\y;lib\a.jar\..\a.jar;lib\a.jar\ -> C:\L|C:\L\lib|C:\L\lib\a.jar|C:\L\lib\a.jar\x|C:\L\lib\a.jar\..|C:\L\lib\a.jar\
C:\L -> lib\\a.jar;lib\\\a.jar -> C:\L|C:\L\lib|C:\L\lib\|C:\L\lib\\a.jar|C:\L\lib\\\a.jar
C:\L\lib -> ..;..\..;.;.\. -> C:\L|C:\L\lib|C:\L\lib\..|C:\L\..|C:\L\lib\.
C:\L\lib -> a.jar.;a.jar .\x;;a -> C:\L|C:\L\lib|C:\L\lib\a.jar.|C:\L\lib\a.jar .|C:\L\lib\a.jar\x|C:\L\lib\a
C:\L -> Q:\x\..\..\y;q:\x;\L\lib -> Q:\x|Q:\x\..|Q:\x\..\..|q:\x|C:\L|C:\L\|C:\L\\L
C:\L -> \\server\share\x;C:;:;\;/;//x -> C:\L|C:\L\|C:\L\\\server|C:\L\:|C:\L\\\x
C:\other -> C:\L\lib\a.jar,C:\L\lib\nul,C:\L\l?b\a* -> C:\L|C:\L\lib|C:\L\lib\a.jar|C:\L\lib\nul|C:\L\l?b
C:\L\lib -> ..\..\..;...\a.jar;. \a.jar;C:x;C:lib\x;c:\L\lib;C:\l\LIB
)");
    rows.push_back({"C:\\L", "lib", "C:\\L|C:\\L\\lib"});
    for (int i = 0; i < 60; i++) {
        const std::string folder = "lib\\" + std::to_string(i % 5);
        const std::string jar = folder + "\\" + std::to_string(i) + ".jar";
        put_file("C:\\L\\" + jar, "");
        rows.back()[1] += ";C:\\L\\" + jar + ";" + jar;
        rows.back()[2] += (i < 5 ? "|C:\\L\\" + folder : "") + "|C:\\L\\" + jar;
    }
    for (const texts &row : rows) {
        stand_in(row[0]);
        asked = {};
        const std::string trace = traced_by([&] { moved(row[1]); });
        if (row.size() > 2) {
            EXPECT_EQ(asked_below_disk(), here(row[2])) << row[1];
        }
        EXPECT_EQ(asked.current_directory, 1);
        size_t at = 0;
        for (const std::string &path : split_at(here(row[1]), row[1].find(';') == std::string::npos ? "," : ";")) {
            const std::string walk = walk_plainly(path).trace;
            at = trace.find(walk, at);
            ASSERT_NE(at, std::string::npos) << trace << "lacks\n" << walk;
            at += walk.size();
        }
    }
}

TEST_F(path_rewriting, lists_of_a_command_line_ask_together) {
    const std::string list = "a.jar;none;..\\other\\a.jar;C:\\L\\lib\\a.jar;C:\\Lx\\none";
    const std::string alone = traced_by([&] { moved(list); });
    asked = {};
    {
        const shared_disk_queries shared;
        EXPECT_EQ(asked.current_directory, 1);
        EXPECT_EQ(traced_by([&] { moved(list); }), alone);
        asked = {};
        EXPECT_EQ(traced_by([&] { moved(list); }), alone);
        EXPECT_EQ(asked.paths, (texts{here("C:\\L\\none"), here("C:\\Lx\\none")}));
        EXPECT_EQ(asked.current_directory, 0);
    }
    put_file("C:\\L\\none", "");
    EXPECT_NE(traced_by([&] { moved(list); }), alone);
}
