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

// The yardstick: a walk that remembers nothing and asks the disk for every prefix of every path.
struct plain_list {
    std::string trace, result;
    std::set<std::string> existing; // prefixes, with their drive
    size_t elements = 0;
};

std::string title(const std::string &text) {
    return text + ":\n" + std::string(text.size() + 1, '-') + '\n';
}

std::string walk_plainly(std::string path, plain_list &list) {
    list.trace += title("RESOLVE PATH") + "   old_path: " + path + "\n";
    if (path.find('/') != std::string::npos) {
        list.trace += "   old_path_copy contains forward slashes:      " + path + "\n";
        std::replace(path.begin(), path.end(), '/', '\\');
        list.trace += "   old_path_copy with forward slashes replaced: " + path + "\n";
    }
    const std::string current = text_ptr(__real__Z17current_directoryv()).get();
    if (is_path_relative(path.c_str())) {
        list.trace += "   cwd = " + current + "\n";
        path = current + "\\" + path;
    }
    const bool is_elsewhere = path.size() > 1 && path[1] == ':' && (path[0] | 32) != (current[0] | 32);
    std::string absolute;
    int number = 0;
    for (size_t next, at = path.find('\\'); at != std::string::npos; at = next, number++) {
        next = path.find('\\', at + 1);
        const std::string component = path.substr(at + 1, next - at - 1);
        list.trace += "   path_component[" + std::to_string(number) + "] = " + component + "\n";
        absolute += (number == 0 && is_elsewhere ? path.substr(0, 2) : "") + '\\' + component;
        list.trace += "       path_prefix = " + absolute + "\n";
        if (__real__Z7kind_ofPKc(absolute.c_str()) != entry_kind::missing) {
            list.existing.insert((absolute[0] == '\\' ? current.substr(0, 2) : "") + absolute);
            char full_path[1000];
            GetFullPathNameA(absolute.c_str(), sizeof full_path, full_path, nullptr);
            absolute = full_path;
            list.trace += "       path_prefix_resolved = " + absolute + "\n";
        }
    }
    list.trace += "   old_path_abs: " + absolute + "\n\n";
    return absolute;
}

plain_list move_plainly(const std::string &name, const std::string &paths, const std::string &home) {
    plain_list list;
    list.trace = title("TRANSFORMING PATH LIST") +
                 "   property:  " + (name.empty() ? "-cp or -classpath" : name.substr(0, name.size() - 1)) +
                 "\n   old_paths: " + paths + "\n\n";
    const std::string separator = paths.find(';') == std::string::npos ? "," : ";";
    for (const std::string &path : split(paths, separator)) {
        const std::string absolute = walk_plainly(path, list);
        const bool moves = (absolute + '\\').starts_with(home + '\\');
        const std::string moved = moves ? here("C:\\R") + absolute.substr(home.size()) : path;
        list.trace += title(moves ? "TRANSFORMING PATH" : "NOT TRANSFORMING PATH") + "   old_path" +
                      (moves ? "_abs: " + absolute : ": " + path) + "\n   new_path: " + moved + "\n\n";
        list.result += (list.elements++ == 0 ? name : separator) + moved;
    }
    list.trace += title("TRANSFORM PATH LIST END") + "   newPathList: " + list.result + "\n\n";
    return list;
}

// The disk is asked for no prefix twice and for nothing below what is missing.
void expect_few_questions(const plain_list &plain) {
    std::set<std::string> missing;
    size_t led_back = 0;
    for (const std::string &path : asked.paths) {
        const bool leads_back = path.ends_with("\\.") || path.ends_with("\\..");
        led_back += leads_back;
        EXPECT_TRUE(missing.count(path.substr(0, path.rfind('\\'))) == 0 || leads_back) << path;
        missing.insert(plain.existing.count(path) == 0 ? path : "");
    }
    // An element ends at its first missing prefix, unless "." or ".." leads on.
    EXPECT_LE(asked.paths.size(), plain.existing.size() + plain.elements + led_back);
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
C:\L -> -> a.jar,C:\L\b.jar -> C:\R\a.jar,C:\R\b.jar & C:\L -> -> a,b;C:\L\c -> C:\R\a,b;C:\R\c & C:\L -> -> -Dx -> C:\R\-Dx
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
    return replaceLauncherHomeWithRIHome(list.c_str(), from.c_str(), to.c_str(), has_name, list[1] == 'X' ? ':' : '=');
}

std::string absolute(const std::string &path) {
    const text_ptr result(new_text_buffer());
    resolve_path(path.c_str(), result.get());
    return result.get();
}

} // namespace

TEST(path_rewriting, moves_what_lies_below_the_old_home_and_asks_little) {
    make_homes();
    std::string jars = "Q:\\" + std::string(60000, 'x') + ";Q:\\" + std::string(60000, 'x');
    for (int i = 0; i < 60; i++) {
        const std::string jar = "C:\\L\\lib\\" + std::to_string(i % 5) + "\\" + std::to_string(i) + ".jar";
        put_file(jar, "");
        jars += ';' + jar + ";lib\\" + std::to_string(i % 7) + "\\x\\" + std::to_string(i);
    }
    std::vector<texts> rows = rows_of(PATHS);
    rows.insert(rows.end(), {{"C:\\L", "", jars}, {"C:\\other", "", jars}, {"C:\\", "", jars}});
    std::vector<std::pair<const char *, std::string>> results;
    for (const texts &row : rows) {
        SCOPED_TRACE(row[0] + ' ' + row[2].substr(0, 100));
        fs::current_path(on_disk(row[0]));
        const plain_list plain = move_plainly(row[1], here(row[2]), here("C:\\L"));
        const char *list = nullptr;
        asked = {};
        EXPECT_EQ(
            traced_by([&] { list = moved(row[1] + here(row[2]), here("C:\\L"), here("C:\\R"), !row[1].empty()); }),
            plain.trace);
        expect_few_questions(plain);
        results.emplace_back(list, row.size() > 3 ? row[1] + here(row[3]) : plain.result);
    }
    for (const auto &[list, expected] : results) { // every result stays
        EXPECT_EQ(list, expected);
    }
}

TEST(path_rewriting, knows_drives) {
    make_homes();
    const std::string path = here("C:\\L\\a.jar");
    const std::string drive = path.substr(0, 2);
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
