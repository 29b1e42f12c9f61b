#include <gtest/gtest.h>

#include <algorithm>

#include "core/jlp_utils.h"
#include "core/rewriting/path_rewriting.h"
#include "core/state_arrays.h"
#include "jli/text.h"
#include "tests/rewriting/disk_queries.h"
#include "tests/rewriting/plain_walk.h"
#include "tests/support/disk.h"
#include "tests/support/trace.h"

namespace {

using strings = std::vector<std::string>;

const fs::path start = fs::current_path();

strings elements_of(const std::string &list, char separator) {
    strings elements(1);
    for (const char c : list) {
        if (c == separator) {
            elements.emplace_back();
        } else {
            elements.back() += c;
        }
    }
    return elements;
}

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
        fs::current_path(start);
        putenv(const_cast<char *>("QVL_HOST_DRIVE_D="));
        release_entries(newPathList, &newPathListCount);
    }

    static void stand_in(const std::string &folder) { fs::current_path(on_disk(folder)); }
};

std::string moved(const std::string &arg, int has_name = 0, char delimiter = '=') {
    return replaceLauncherHomeWithRIHome(here(arg).c_str(), here("C:\\L").c_str(), here("C:\\R").c_str(), has_name,
                                         delimiter);
}

std::string absolute(const std::string &path) {
    const text_ptr result(new_text_buffer());
    resolve_path(path.c_str(), result.get());
    return result.get();
}

std::string with_slashes(std::string path) {
    return replace_char(path.data(), '\\', '/');
}

} // namespace

TEST_F(path_rewriting, moves_what_lies_below_the_old_home) {
    const struct {
        const char *from, *list, *expected;
    } rows[] = {
        {"C:\\L", "C:\\L\\lib\\a.jar;C:\\other\\a.jar", "C:\\R\\lib\\a.jar;C:\\other\\a.jar"},
        {"C:\\L", "C:\\L", "C:\\R"},
        {"C:\\L", "C:\\L\\", "C:\\R\\"},
        {"C:\\L", "C:\\Lx\\a.jar", "C:\\Lx\\a.jar"},
        {"C:\\L", "C:\\Lnone\\a.jar", "C:\\Lnone\\a.jar"},
        {"C:\\L", "C:\\l\\lib", "C:\\l\\lib"},
        {"C:\\L", "C:\\L\\lib\\b c.jar\\", "C:\\R\\lib\\b c.jar\\"},
        // Relative to a current directory inside the home, or outside.
        {"C:\\L", "lib\\a.jar", "C:\\R\\lib\\a.jar"},
        {"C:\\L", "x", "C:\\R\\x"},
        {"C:\\L", ".", "C:\\R"},
        {"C:\\L", "..", ".."},
        {"C:\\L", "..\\other\\a.jar", "..\\other\\a.jar"},
        {"C:\\L", "..\\L\\lib", "C:\\R\\lib"},
        {"C:\\L", "*", "C:\\R\\*"},
        {"C:\\L\\jre", "..\\lib\\*", "C:\\R\\lib\\*"},
        {"C:\\other", "a.jar", "a.jar"},
        {"C:\\other", "..\\L\\none.jar", "C:\\R\\none.jar"},
        {"C:\\other", "C:\\L\\a.jar", "C:\\R\\a.jar"},
        // What is missing is kept as written from there on, but ".." leads back by text.
        {"C:\\L", "C:\\L\\none\\x\\a.jar", "C:\\R\\none\\x\\a.jar"},
        {"C:\\L", "C:\\L\\lib\\a.jar\\none", "C:\\R\\lib\\a.jar\\none"},
        {"C:\\L", "C:\\L\\none\\..\\lib\\a.jar", "C:\\R\\lib\\a.jar"},
        {"C:\\L", "C:\\L\\none\\x\\..\\y", "C:\\R\\none\\x\\..\\y"},
        {"C:\\L", "C:\\L\\none\\x\\..\\..\\lib", "C:\\R\\lib"},
        {"C:\\L", "C:\\L\\none\\..\\..\\other\\x", "C:\\L\\none\\..\\..\\other\\x"},
        {"C:\\L", "C:\\none\\..\\L\\.\\lib\\..\\x", "C:\\R\\x"},
        // Separators that follow one another.
        {"C:\\L", "C:\\L\\\\lib\\\\a.jar", "C:\\R\\lib\\a.jar"},
        {"C:\\L", "C:\\L\\\\\\lib\\\\\\\\a.jar", "C:\\R\\lib\\a.jar"},
        {"C:\\L", "C:\\L\\\\none\\\\x", "C:\\R\\\\none\\\\x"},
        {"C:\\L", "\\L\\lib", "C:\\R\\\\L\\lib"}, // not absolute without a drive
        // Lists.
        {"C:\\L", "", ""},
        {"C:\\L", ";", ";"},
        {"C:\\L", ",", ","},
        {"C:\\L", "C:\\L\\a;;C:\\L\\b", "C:\\R\\a;;C:\\R\\b"},
        {"C:\\L", ";C:\\L\\a;", ";C:\\R\\a;"},
        {"C:\\L", "a.jar,C:\\L\\b.jar", "C:\\R\\a.jar,C:\\R\\b.jar"},
        {"C:\\L", "a,b;C:\\L\\c", "C:\\R\\a,b;C:\\R\\c"},
    };
    for (const auto &row : rows) {
        stand_in(row.from);
        EXPECT_EQ(moved(row.list), here(row.expected)) << row.list << " from " << row.from;
    }
}

TEST_F(path_rewriting, reads_forward_slashes_and_keeps_them_where_nothing_moves) {
    EXPECT_EQ(moved(with_slashes(here("C:\\L\\lib\\a.jar"))), here("C:\\R\\lib\\a.jar"));
    EXPECT_EQ(moved("lib/none/x"), here("C:\\R\\lib\\none\\x"));
    const std::string outside = with_slashes(here("C:\\other\\a.jar"));
    EXPECT_EQ(moved(outside), outside);
}

TEST_F(path_rewriting, passes_over_the_name) {
    const struct {
        const char *arg;
        int has_name;
        char delimiter;
        const char *expected;
    } rows[] = {
        {"-Dx=C:\\L\\ext", 1, '=', "-Dx=C:\\R\\ext"},
        {"-Dx=", 1, '=', "-Dx="},
        {"-Dx=a=b", 1, '=', "-Dx=C:\\R\\a=b"},
        {"-Da,b=C:\\L\\c;C:\\L\\d", 1, '=', "-Da,b=C:\\R\\c;C:\\R\\d"},
        {"-D;=C:\\L\\c,C:\\L\\d", 1, '=', "-D;=C:\\R\\c,C:\\R\\d"},
        {"-Xbootclasspath/a:C:\\L\\boot.jar", 1, ':', "-Xbootclasspath/a:C:\\R\\boot.jar"},
        {"-Dx", 0, '=', "C:\\R\\-Dx"},
        {"-Dx=y", 2, '=', "C:\\R\\-Dx=y"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(moved(row.arg, row.has_name, row.delimiter), here(row.expected)) << row.arg;
    }
}

// At the root of a drive the current directory ends with a separator, and a home is a bare drive.
TEST_F(path_rewriting, homes_at_the_root_of_a_drive) {
    const std::string root = fs::current_path().root_path().string();
    const std::string on_drive = here("C:\\L\\a.jar");
    const std::string drive = on_drive.substr(0, 2);
    const strings paths = {on_drive, on_drive.substr(3), drive + "\\qvl_none\\x"};
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
    const struct {
        const char *path, *expected;
    } rows[] = {
        {"Q:\\L", "R"},
        {"Q:\\L\\a\\..\\b", "R\\a\\..\\b"},
        {"q:\\L\\a", "q:\\L\\a"},
        {"Q:L\\a", "Q:L\\a"}, // what stands before the first separator is left out
    };
    for (const auto &row : rows) {
        EXPECT_STREQ(replaceLauncherHomeWithRIHome(row.path, "Q:\\L", "R", 0, '='), row.expected);
    }
    const char *system_folder = getenv("SystemRoot");
    std::string other = "D:\\L";
    if (on_windows) {
        other = system_folder;
    } else {
        static std::string drive = "QVL_HOST_DRIVE_D=" + on_disk("C:\\other").string();
        putenv(drive.data());
        put_folder("C:\\other\\L");
    }
    if (other[0] == here("C:\\")[0]) {
        GTEST_SKIP() << "the tests run on the system's drive: there is no other to be sure of";
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

TEST_F(path_rewriting, refuses_what_has_no_room) {
    fs::current_path(start); // on Windows the disk could not be emptied for a child
    const auto exits_with_1 = testing::ExitedWithCode(1);
    EXPECT_EXIT(
        for (int i = 0; i <= ARGUMENT_SLOTS; i++) { moved(""); }, exits_with_1,
        "^Error: too many rewritten path lists \\(at most 10000\\)");
    EXPECT_EXIT(moved("Q:" + std::string(COMPONENT_SLOTS + 1, '\\')), exits_with_1,
                "^Error: too many components of a path \\(at most 100000\\)");
}

TEST_F(path_rewriting, is_traced) {
    EXPECT_EQ(traced_by([] { replaceLauncherHomeWithRIHome("-Dx=Q:/L/y,Q:\\z", "Q:\\L", "R", 1, '='); }),
              "TRANSFORMING PATH LIST:\n"
              "-----------------------\n"
              "   property:  -Dx\n"
              "   old_paths: Q:/L/y,Q:\\z\n"
              "\n"
              "RESOLVE PATH:\n"
              "-------------\n"
              "   old_path: Q:/L/y\n"
              "   old_path_copy contains forward slashes:      Q:/L/y\n"
              "   old_path_copy with forward slashes replaced: Q:\\L\\y\n"
              "   path_component[0] = L\n"
              "       path_prefix = Q:\\L\n"
              "   path_component[1] = y\n"
              "       path_prefix = Q:\\L\\y\n"
              "   old_path_abs: Q:\\L\\y\n"
              "\n"
              "TRANSFORMING PATH:\n"
              "------------------\n"
              "   old_path_abs: Q:\\L\\y\n"
              "   new_path: R\\y\n"
              "\n"
              "RESOLVE PATH:\n"
              "-------------\n"
              "   old_path: Q:\\z\n"
              "   path_component[0] = z\n"
              "       path_prefix = Q:\\z\n"
              "   old_path_abs: Q:\\z\n"
              "\n"
              "NOT TRANSFORMING PATH:\n"
              "----------------------\n"
              "   old_path: Q:\\z\n"
              "   new_path: Q:\\z\n"
              "\n"
              "TRANSFORM PATH LIST END:\n"
              "------------------------\n"
              "   newPathList: -Dx=R\\y,Q:\\z\n"
              "\n");
    EXPECT_TRUE(traced_by([] { moved(""); })
                    .starts_with("TRANSFORMING PATH LIST:\n"
                                 "-----------------------\n"
                                 "   property:  -cp or -classpath\n"
                                 "   old_paths: \n"));
}

namespace {

// The parts of a list's trace that tell how its elements were resolved.
std::string walks_in(const std::string &trace) {
    std::string walks;
    size_t from = 0;
    while ((from = trace.find("RESOLVE PATH:\n", from)) != std::string::npos) {
        const size_t end = trace.find("\n\n", from) + 2;
        walks += trace.substr(from, end - from);
        from = end;
    }
    return walks;
}

bool leads_back(const std::string &path) {
    return path.ends_with("\\.") || path.ends_with("\\..");
}

// The paths asked for though a prefix was known to be missing.
strings asked_in_vain(const strings &paths, const std::set<std::string> &existing) {
    std::set<std::string> missing;
    strings in_vain;
    for (const std::string &path : paths) {
        const std::string parent = path.substr(0, path.rfind('\\'));
        if (missing.count(parent) != 0 && !leads_back(path)) {
            in_vain.push_back(path);
        }
        if (existing.count(path) == 0) {
            missing.insert(path);
        }
    }
    return in_vain;
}

} // namespace

// The disk is asked for no prefix twice and for nothing below what is missing; nothing else than
// the number of questions tells the difference.
TEST_F(path_rewriting, asks_once_for_what_the_paths_have_in_common) {
    std::string jars;
    for (int i = 0; i < 60; i++) {
        const std::string jar = "C:\\L\\lib\\" + std::to_string(i % 5) + "\\" + std::to_string(i) + ".jar";
        put_file(jar, "");
        jars += jar + ";lib\\" + std::to_string(i % 7) + "\\x\\" + std::to_string(i) + ";";
    }
    const struct {
        const char *from;
        std::string list;
    } rows[] = {
        {"C:\\L", jars},
        {"C:\\other", jars},
        {"C:\\", jars},
        {"C:\\L", "none;none\\x;none\\x\\y;none\\..\\lib;none\\..\\none\\x"},
        {"C:\\L", "lib\\a.jar\\x\\y;lib\\a.jar\\..\\a.jar;lib\\a.jar\\;lib\\\\a.jar;lib\\\\\\a.jar"},
        {"C:\\L\\lib", "..;..\\..;..\\..\\..;.;.\\.;...\\a.jar;. \\a.jar;a.jar.;a.jar .\\x;;a"},
        {"C:\\L", "Q:\\x\\..\\..\\y;q:\\x;\\L\\lib;\\\\server\\share\\x;C:x;C:lib\\x;C:;:;\\;/;//x"},
        {"C:\\other", "C:\\L\\lib\\a.jar,c:\\L\\lib,C:\\l\\LIB,C:\\L\\lib\\nul,C:\\L\\l?b\\a*"},
    };
    for (const auto &row : rows) {
        stand_in(row.from);
        asked.clear();
        const std::string trace = traced_by([&] { moved(row.list); });
        const disk_queries list = asked;
        const char separator = row.list.find(';') == std::string::npos ? ',' : ';';
        std::string plain_trace;
        std::set<std::string> existing;
        const strings elements = elements_of(here(row.list), separator);
        for (const std::string &element : elements) {
            const plain_walk plain = walk_plainly(element);
            plain_trace += plain.trace;
            // The product asks with the drive where the plain walk leaves it to the system.
            for (const std::string &path : plain.existing) {
                existing.insert((path[0] == '\\' ? here("C:\\").substr(0, 2) : "") + path);
            }
        }
        EXPECT_EQ(walks_in(trace), plain_trace) << row.list << " from " << row.from;
        // An element ends at its first missing prefix, unless "." or ".." leads on.
        EXPECT_LE(list.paths.size(),
                  existing.size() + elements.size() + count_if(list.paths.begin(), list.paths.end(), leads_back))
            << row.list;
        EXPECT_EQ(asked_in_vain(list.paths, existing), strings()) << row.list;
        EXPECT_EQ(list.current_directory, 1);
    }
}

TEST_F(path_rewriting, lists_of_a_command_line_ask_together) {
    const std::string list = "a.jar;none;..\\other\\a.jar;C:\\L\\lib\\a.jar;C:\\Lx\\none";
    const std::string alone = traced_by([&] { moved(list); });
    asked.clear();
    {
        const shared_disk_queries shared;
        EXPECT_EQ(asked.current_directory, 1);
        EXPECT_EQ(traced_by([&] { moved(list); }), alone);
        asked.clear();
        EXPECT_EQ(traced_by([&] { moved(list); }), alone);
        EXPECT_EQ(asked.paths, (strings{here("C:\\L\\none"), here("C:\\Lx\\none")}));
        EXPECT_EQ(asked.current_directory, 0);
    }
    put_file("C:\\L\\none", "");
    EXPECT_NE(traced_by([&] { moved(list); }), alone);
}
