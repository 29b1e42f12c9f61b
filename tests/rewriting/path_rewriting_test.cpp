#include <gtest/gtest.h>

#include "core/jlp_utils.h"
#include "core/rewriting/path_rewriting.h"
#include "core/rewriting/shared_disk_queries.h"
#include "platform/files.h"
#include "tests/rewriting/engine.h"
#include "tests/rewriting/plain_walk.h"

// How often the product has asked for the kind of a path: the linker hands its calls of kind_of() to this.
static int asked = 0;

extern "C" {
entry_kind __real_kind_of(const char *path);

entry_kind __wrap_kind_of(const char *path) {
    asked++;
    return __real_kind_of(path);
}
}

namespace {

const fs::path start_folder = fs::current_path();

class path_rewriting : public testing::Test {
protected:
    void SetUp() override {
        make_disk();
        for (const char *file :
             {"C:\\L\\lib\\a.jar", "C:\\L\\lib\\b c.jar", "C:\\L\\jre\\x", "C:\\other\\a.jar", "C:\\Lx\\a.jar"}) {
            put_file(file, "");
        }
        fs::current_path(on_disk("C:\\L"));
    }

    void TearDown() override { fs::current_path(start_folder); }
};

std::string moved(const std::string &arg, int has_name = 0, char delimiter = '=') {
    return replaceLauncherHomeWithRIHome(here(arg).c_str(), here("C:\\L").c_str(), here("C:\\R").c_str(), has_name,
                                         delimiter);
}

// Current directory -> list -> moved list
constexpr char LISTS[] = R"(
C:\L -> C:\L\lib\a.jar;C:\other\a.jar;C:\L;C:\L\ -> C:\R\lib\a.jar;C:\other\a.jar;C:\R;C:\R\
C:\L -> C:\Lnone\a.jar -> C:\Lnone\a.jar
C:\L -> C:\l\lib -> C:\l\lib
C:\L -> C:\L\lib\b c.jar\ -> C:\R\lib\b c.jar\
// Relative to a current directory inside the home, or outside.
C:\L\jre -> ..\lib\* -> C:\R\lib\*
C:\other -> a.jar -> a.jar
// What is missing is kept as written from there on, but ".." leads back by text.
C:\L -> C:\L\none\x\..\y -> C:\R\none\x\..\y
C:\L -> C:\L\none\x\..\..\lib -> C:\R\lib
C:\L -> C:\L\none\..\..\other\x -> C:\L\none\..\..\other\x
C:\L -> C:\none\..\L\.\lib\..\x -> C:\R\x
// Forward slashes are read, and kept where nothing moves.
C:\L -> lib/none/x -> C:\R\lib\none\x
C:\L -> ../other/a.jar -> ../other/a.jar
// Separators that follow one another.
C:\L -> C:\L\\\lib\\\\a.jar -> C:\R\lib\a.jar
C:\L -> C:\L\\none\\x -> C:\R\\none\\x
C:\L -> \L\lib -> C:\R\\L\lib
// Lists.
C:\L -> ->
C:\L -> ;C:\L\a;;C:\L\b; -> ;C:\R\a;;C:\R\b;
C:\L -> a.jar,C:\L\b.jar -> C:\R\a.jar,C:\R\b.jar
C:\L -> a,b;C:\L\c -> C:\R\a,b;C:\R\c
// What is asked for once stands for all.
C:\L -> none\..\lib;none\..\none\x;lib\a.jar\x\y;lib\a.jar\..\a.jar -> C:\R\lib;C:\R\none\x;C:\R\lib\a.jar\x\y;C:\R\lib\a.jar
C:\L\lib -> ..;..\..;.;\\server\share\x;C: -> C:\R;..\..;C:\R\lib;C:\R\lib\\\server\share\x;C:
)";

// Argument -> whether it has a name -> what stands after the name -> moved argument
constexpr char NAMES[] = R"(
-Dx=C:\L\ext -> 1 -> = -> -Dx=C:\R\ext
-Dx=a=b -> 1 -> = -> -Dx=C:\R\a=b
-Da,b=C:\L\c;C:\L\d -> 1 -> = -> -Da,b=C:\R\c;C:\R\d
-D;=C:\L\c,C:\L\d -> 1 -> = -> -D;=C:\R\c,C:\R\d
-Xbootclasspath/a:C:\L\boot.jar -> 1 -> : -> -Xbootclasspath/a:C:\R\boot.jar
-Dx -> 0 -> = -> C:\R\-Dx
-Dx=y -> 2 -> = -> C:\R\-Dx=y
)";

} // namespace

TEST_F(path_rewriting, moves_what_lies_below_the_old_home) {
    std::string resolved(100000, '\0');
    resolve_path("lib/a.jar", resolved.data());
    EXPECT_EQ(resolved.c_str(), here("C:\\L\\lib\\a.jar"));
    for (const texts &row : rows_of(NAMES)) {
        EXPECT_EQ(moved(row[0], std::stoi(row[1]), row[2][0]), here(row[3])) << row[0];
    }
    for (const texts &row : rows_of(LISTS)) {
        fs::current_path(on_disk(row[0]));
        std::string list;
        const std::string trace = traced_by([&] { list = moved(row[1]); });
        EXPECT_EQ(list, here(row[2])) << row[1] << " from " << row[0];
        // Each path's walk is traced as if it had asked the disk for all of its own.
        size_t at = 0;
        for (const std::string &path : split_at(here(row[1]), row[1].find(';') == std::string::npos ? "," : ";")) {
            at = trace.find(walk_plainly(path).trace, at + 1);
            EXPECT_NE(at, std::string::npos) << trace << path;
        }
    }
}

// For no prefix that exists twice, and for nothing below what is missing.
TEST_F(path_rewriting, asks_the_disk_once) {
    const auto asked_for = [](const char *list) {
        asked = 0;
        moved(list);
        return asked;
    };
    const int for_one = asked_for("lib\\a.jar");
    const char *list =
        "lib\\a.jar;lib\\b c.jar;none\\x\\y;C:\\L\\lib\\a.jar;.;lib\\.\\.;lib\\..\\jre\\.\\x\\.;jre\\x\\..";
    EXPECT_EQ(asked_for(list), for_one + 10);
    const shared_disk_queries shared;
    EXPECT_EQ(asked_for(list), for_one + 10);
    EXPECT_EQ(asked_for(list), 1);
}
