#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/config_text.h"
#include "core/jlp_utils.h"
#include "core/rewriting/path_rewriting.h"
#include "jli/text.h"
#include "platform/files.h"
#include "platform/windows_services.h"
#include "tests/rewriting/engine.h"
#include "tests/support/trace.h"

namespace {

// What the product asks of the disk.
struct {
    texts paths;
    int current_directory = 0;
} asked;

} // namespace

// The linker hands the product's calls of kind_of() and current_directory() to these.
extern "C" {
entry_kind __real__Z7kind_ofPKc(const char *path);
char *__real__Z17current_directoryv();

entry_kind __wrap__Z7kind_ofPKc(const char *path) {
    asked.paths.push_back(path);
    return __real__Z7kind_ofPKc(path);
}

char *__wrap__Z17current_directoryv() {
    asked.current_directory++;
    return __real__Z17current_directoryv();
}
}

namespace {

// The yardstick: a walk that remembers nothing and asks the disk for every prefix.
std::string walk_plainly(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    const std::string current = text_ptr(__real__Z17current_directoryv()).get();
    path = is_path_relative(path.c_str()) ? current + "\\" + path : path;
    const bool is_elsewhere = path.find('\\') != std::string::npos && (path[0] | 32) != (current[0] | 32);
    std::string absolute = is_elsewhere ? path.substr(0, 2) : "";
    for (size_t next, at = path.find('\\'); at != std::string::npos; at = next) {
        next = path.find('\\', at + 1);
        absolute += path.substr(at, next - at);
        char full_path[1000];
        if (__real__Z7kind_ofPKc(absolute.c_str()) != entry_kind::missing) {
            GetFullPathNameA(absolute.c_str(), sizeof full_path, full_path, nullptr);
            absolute = full_path;
        }
    }
    return absolute;
}

// The disk is asked for no prefix twice and for nothing below what is missing.
void expect_few_questions(size_t elements) {
    std::set<std::string> existing, missing;
    size_t led_back = 0;
    for (const std::string &path : asked.paths) {
        const bool leads_back = path.ends_with("\\.") || path.ends_with("\\..");
        led_back += leads_back;
        EXPECT_TRUE(missing.count(path.substr(0, path.rfind('\\'))) == 0 || leads_back) << path;
        (__real__Z7kind_ofPKc(path.c_str()) == entry_kind::missing ? missing : existing).insert(path);
    }
    // An element ends at its first missing prefix, unless "." or ".." leads on.
    EXPECT_LE(asked.paths.size(), existing.size() + elements + led_back);
    EXPECT_EQ(asked.current_directory, 1);
}

// Current directory -> name and delimiter -> list -> what becomes of it; where that is missing, the
// plain walk alone tells
constexpr char PATHS[] = R"(
C:\L -> -> C:\L\lib\a.jar;C:\other\a.jar;C:\L;C:\L\;C:\Lx\a.jar;C:\Lnone\a.jar;C:\l\lib;C:\L\lib\b c.jar\ -> C:\R\lib\a.jar;C:\other\a.jar;C:\R;C:\R\;C:\Lx\a.jar;C:\Lnone\a.jar;C:\l\lib;C:\R\lib\b c.jar\
C:\L -> -> lib\a.jar;x;.;..;..\other\a.jar;..\L\lib;*;\L\lib -> C:\R\lib\a.jar;C:\R\x;C:\R;..;..\other\a.jar;C:\R\lib;C:\R\*;C:\R\\L\lib
C:\L\jre -> -> ..\lib\* -> C:\R\lib\* & C:\other -> -> a.jar;..\L\none.jar;C:\L\a.jar -> a.jar;C:\R\none.jar;C:\R\a.jar
C:\L -> -> C:\L\none\x\a.jar;C:\L\lib\a.jar\none;C:\L\none\..\lib\a.jar;C:\L\none\x\..\y -> C:\R\none\x\a.jar;C:\R\lib\a.jar\none;C:\R\lib\a.jar;C:\R\none\x\..\y
C:\L -> -> C:\L\none\x\..\..\lib;C:\L\none\..\..\other\x;C:\none\..\L\.\lib\..\x -> C:\R\lib;C:\L\none\..\..\other\x;C:\R\x
C:\L -> -> C:\L\\lib\\a.jar;C:\L\\\lib\\\\a.jar;C:\L\\none\\x -> C:\R\lib\a.jar;C:\R\lib\a.jar;C:\R\\none\\x
C:\L -> -> -> & C:\L -> -> ; -> ; & C:\L -> -> , -> , & C:\L -> -> ;C:\L\a;;C:\L\b; -> ;C:\R\a;;C:\R\b;
C:\L -> -> a.jar,C:\L\b.jar -> C:\R\a.jar,C:\R\b.jar & C:\L -> -> -Dx -> C:\R\-Dx
C:\L -> -> C:\L/lib\a.jar;lib/none/x;C:\other/a.jar -> C:\R\lib\a.jar;C:\R\lib\none\x;C:\other/a.jar
C:\L -> -Dx= -> C:\L\ext -> C:\R\ext & C:\other -> -Dx= -> -> & C:\L -> -Dx= -> a=b -> C:\R\a=b
C:\L -> -Da,b= -> C:\L\c;C:\L\d -> C:\R\c;C:\R\d & C:\L -> -D;= -> C:\L\c,C:\L\d -> C:\R\c,C:\R\d
C:\L -> -Xbootclasspath/a: -> C:\L\boot.jar -> C:\R\boot.jar & C:\L -> -> none;none\x;none\x\y;none\..\lib;none\..\none\x
C:\L -> -> lib\a.jar\x\y;lib\a.jar\..\a.jar;lib\a.jar\;lib\\a.jar;lib\\\a.jar
C:\L\lib -> -> ..;..\..;..\..\..;.;.\.;...\a.jar;. \a.jar;a.jar.;a.jar .\x;;a
C:\L -> -> Q:\x\..\..\y;q:\x;\L\lib;\\server\share\x;C:x;C:lib\x;C:;:;\;/;//x
C:\other -> -> C:\L\lib\a.jar,c:\L\lib,C:\l\LIB,C:\L\lib\nul,C:\L\l?b\a*
)";

const char *moved(const std::string &list, const std::string &from, const std::string &to, int has_name = 0) {
    return replaceLauncherHomeWithRIHome(list.c_str(), from.c_str(), to.c_str(), has_name,
                                         list.starts_with("-X") ? ':' : '=');
}

std::string absolute(const std::string &path) {
    const text_ptr result(new_text_buffer());
    resolve_path(path.c_str(), result.get());
    return result.get();
}

std::string walks_in(const std::string &trace) {
    const size_t start = trace.find("RESOLVE PATH:");
    return trace.substr(start, trace.find("TRANSFORM PATH LIST END:") - start);
}

} // namespace

TEST(path_rewriting, moves_what_lies_below_the_old_home_and_asks_little) {
    make_homes();
    const std::string outside = ";Q:\\" + std::string(60000, 'x');
    std::string jars = "C:\\L\\lib\\0\\1.jar", more = outside + outside;
    for (int i = 0; i < 60; i++) {
        const std::string jar = std::to_string(i % 5) + "\\" + std::to_string(i) + ".jar";
        put_file("C:\\L\\lib\\" + jar, "");
        jars += ";C:\\L\\lib\\" + jar + ";lib\\x\\" + jar;
    }
    std::vector<texts> rows = rows_of(PATHS);
    rows.insert(rows.end(), {{"C:\\L", "", jars + more}, {"C:\\other", "", jars}, {"C:\\", "", jars}});
    std::vector<std::pair<const char *, std::string>> results;
    for (const texts &row : rows) {
        SCOPED_TRACE(row[0] + ' ' + row[2].substr(0, 100));
        fs::current_path(on_disk(row[0]));
        const std::string separator = row[2].find(';') == std::string::npos ? "," : ";";
        std::string list, singles;
        asked = {};
        const auto move = [&](const std::string &paths) {
            const char *result = moved(row[1] + paths, here("C:\\L"), here("C:\\R"), !row[1].empty());
            list = result;
            results.emplace_back(result, list);
        };
        const std::string trace = traced_by([&] { move(here(row[2])); });
        const texts elements = split(here(row[2]), separator);
        expect_few_questions(elements.size());
        EXPECT_EQ(list, row.size() > 3 ? row[1] + here(row[3]) : list);
        for (const std::string &element : elements) { // the trace is that of each path alone
            EXPECT_EQ(absolute(element), walk_plainly(element)) << element;
            singles += walks_in(traced_by([&] { move(element); }));
        }
        EXPECT_EQ(walks_in(trace), singles);
    }
    for (const auto &[result, text] : results) { // every result stays
        EXPECT_EQ(result, text);
    }
    EXPECT_EQ(
        traced_by([] { moved("-Dx=Q:/L/y,Q:\\z", "Q:\\L", "R", 1); }),
        "TRANSFORMING PATH LIST:\n-----------------------\n   property:  -Dx\n   old_paths: Q:/L/y,Q:\\z\n\n"
        "RESOLVE PATH:\n-------------\n   old_path: Q:/L/y\n   old_path_copy contains forward slashes:      Q:/L/y\n"
        "   old_path_copy with forward slashes replaced: Q:\\L\\y\n   path_component[0] = L\n"
        "       path_prefix = Q:\\L\n   path_component[1] = y\n       path_prefix = Q:\\L\\y\n"
        "   old_path_abs: Q:\\L\\y\n\nTRANSFORMING PATH:\n------------------\n   old_path_abs: Q:\\L\\y\n   new_path: "
        "R\\y\n\n"
        "RESOLVE PATH:\n-------------\n   old_path: Q:\\z\n   path_component[0] = z\n       path_prefix = Q:\\z\n"
        "   old_path_abs: Q:\\z\n\nNOT TRANSFORMING PATH:\n----------------------\n   old_path: Q:\\z\n   new_path: "
        "Q:\\z\n\n"
        "TRANSFORM PATH LIST END:\n------------------------\n   newPathList: -Dx=R\\y,Q:\\z\n\n");
}

TEST(path_rewriting, knows_drives) {
    make_homes();
    const std::string path = here("C:\\L\\a.jar");
    const std::string drive = path.substr(0, 2);
    EXPECT_STREQ(moved("a,b;Q:\\L\\c", "Q:\\L", "R"), "a,b;R\\c"); // commas separate where no semicolon does
    // What stands before the first separator is left out of "Q:L".
    EXPECT_STREQ(moved("Q:\\L;Q:\\L\\a\\..\\b;q:\\L\\a;Q:L\\a", "Q:\\L", "R"), "R;R\\a\\..\\b;q:\\L\\a;Q:L\\a");
    set_variable("QVL_HOST_DRIVE_D", on_disk("C:\\other").string());
    const std::string other = on_windows ? getenv("SystemRoot") : "D:\\L";
    if (other.substr(0, 2) != drive) { // the tests may run on the system's drive
        EXPECT_EQ(absolute(other + "\\.\\none\\x"), other + "\\none\\x");
        EXPECT_STREQ(moved(other + "\\x\\..", other, "R"), "R");
    }
    // At the root of a drive the current directory ends with a separator, and a home is a bare drive.
    fs::current_path(on_windows ? fs::path(drive + "\\") : on_disk("C:\\"));
    // No prefix of the last one exists, so that none brought its drive along.
    EXPECT_EQ(moved(path + ";" + path.substr(3) + ";" + drive + "\\qvl_none\\x", drive, "Q:\\R"),
              "Q:\\R" + path.substr(2) + ";Q:\\R" + path.substr(2) + ";" + drive + "\\qvl_none\\x");
    EXPECT_EQ(absolute(drive + "\\qvl_none\\x") + absolute("qvl_none"), "\\qvl_none\\x" + drive + "\\\\qvl_none");
    EXPECT_EQ(absolute(drive + "\\") + absolute(drive), drive + "\\");
}

TEST(path_rewriting, refuses_what_has_no_room) {
    make_homes();
    const auto exits_with_1 = testing::ExitedWithCode(1);
    EXPECT_EXIT(
        while (true) { moved("", "", ""); }, exits_with_1, "^Error: too many rewritten path lists .at most 10000.");
    EXPECT_EXIT(absolute("Q:\\" + std::string(100000, 'x')), exits_with_1,
                "^Error: text too long .at most 99999 bytes.");
    EXPECT_EXIT(absolute("Q:" + std::string(100001, '\\')), exits_with_1,
                "^Error: too many components of a path .at most");
    EXPECT_EQ(absolute("Q:" + std::string(99997, '\\')).size(), 99999U);
}
