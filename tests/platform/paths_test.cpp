// Full paths, kinds of entries and text files.

#include <cerrno>
#include <fstream>
#include <memory>

#include "platform/files.h"
#include "tests/platform/children.h"

namespace {

TEST(full_path, is_made_of_the_text_alone) {
    const table paths =
        rows({"a\\ -> ~\\a\\", "a//b/\\ -> ~\\a\\b\\", ".\\ -> ~\\", ".\\a\\.\\b -> ~\\a\\b", "a\\. -> ~\\a",
              "a\\.. -> ~", "a\\b\\..\\..\\c -> ~\\c", ".. -> C:\\qvl_test", "..\\..\\..\\x -> C:\\x", " a -> ~\\ a",
              "ab:c -> ~\\ab:c", "\xC3\xA9\xE6\x97\xA5 -> ~\\\xC3\xA9\xE6\x97\xA5",
              // Dots and blanks at the end of a component and of the path.
              "a. . . -> ~\\a", "a. \\b  -> ~\\a. \\b", "a.\\b -> ~\\a\\b", "a\\... -> ~\\a\\", "a\\  -> ~\\a\\",
              "C:\\a\\..  -> C:\\a\\", "C:\\  -> C:\\", "C:  -> ~\\", ".a -> ~\\.a", "C:\\.. \\x -> C:\\.. \\x",
              // Drives and roots.
              "c:\\A\\b -> c:\\A\\b", "C:\\\\a -> C:\\a", "C:\\a\\..\\..\\b -> C:\\b", "C:\\. -> C:\\", "C: -> ~\\",
              "C:. -> ~", "c:.. -> C:\\qvl_test", "c:foo -> ~\\foo", "C:a\\ -> ~\\a\\", "q: -> q:\\",
              "Q:..\\foo -> Q:\\foo", "\\ -> C:\\", "\\..\\x -> C:\\x",
              // Shares and nothing.
              "\\\\s\\h -> \\\\s\\h", "//s/h/x//y -> \\\\s\\h\\x\\y", "\\\\s\\h\\..\\..\\x -> \\\\s\\h\\x",
              "\\\\s\\h\\.. -> \\\\s\\h\\", "\\\\s.\\h. -> \\\\s.\\h.", "\\\\?\\C:\\x\\..\\y -> \\\\?\\C:\\y", " -> ",
              "   -> "},
             "C:\\qvl_test\\d");
    for (const auto &[path, expected] : paths) {
        char buffer[300];
        const DWORD length = GetFullPathNameA(path.c_str(), sizeof buffer, buffer, nullptr);
        EXPECT_EQ(std::string(buffer, length), expected) << path;
    }
}

TEST(current_directory, is_as_long_as_it_is) {
    std::string folder;
    while (folder.size() < 240) {
        folder += "大";
    }
    const fs::path path = to_path(folder + "/" + folder);
    fs::create_directories(path);
    fs::current_path(path);
    const std::unique_ptr<char, decltype(&free)> shown(current_directory(), free);
    fs::current_path("../..");
    EXPECT_EQ(shown.get(), "C:\\qvl_test\\d\\" + folder + "\\" + folder);
}

TEST(kind_of, resolves_by_text_and_forgives_one_separator) {
    const std::pair<entry_kind, std::vector<std::string>> table[] = {
        {entry_kind::missing,
         {"", " ", "C:", "\\\\", "e\\\\", "e/\\", "e\\..\\\\", "g.txt\\\\", "g.txt\\x", "g.txt:", "missing\\.", "e\\*",
          "\\\\s\\h\\x", "1:", std::string(5000, 'x')}},
        {entry_kind::directory,
         {"C:/", "C:\\\\", "\\", "C:e", ".", "./", "..", "e\\", "e \\", "g.txt\\..", "missing\\..", "c:\\qvl_test",
          "..\\..\\..\\qvl_test", "C:\\\\qvl_test\\\\d//e"}},
        {entry_kind::file,
         {"g.txt", "g.txt\\", "g.txt/", "g.txt. .", "missing\\..\\g.txt", "C:g.txt", "C:\\..\\qvl_test\\prog.exe"}}};
    for (const auto &[kind, paths] : table) {
        for (const std::string &path : paths) {
            EXPECT_EQ(kind_of(path.c_str()), kind) << path;
        }
    }
}

TEST(text_file, reads_as_the_windows_runtime) {
    for (const auto &[bytes, text] :
         rows({" -> ", "a\r\nb -> a\nb", "a\rb\r\rc -> a\rb\r\rc", "a\r\r\nb -> a\r\nb", "\n\r\n\r -> \n\n\r",
               "\r -> \r", "a\x1A\r\nb -> a", "\x1A -> ", "a\r\x1A\n -> a\r", "\xFF\r\n -> \xFF\n", "~x\r\ny -> ~x\ny",
               "~xx\r\ny -> ~xx\ny", "~\r\r\r\ny\r -> ~\r\r\ny\r", "~x\ry -> ~x\ry", "~x\r -> ~x\r",
               "~x\r\x1Ay -> ~x\r", "~~\x1Ay -> ~~"},
              std::string(4094, 'x'))) {
        std::ofstream("t", std::ios::binary) << bytes;
        for (size_t block : {1u, 2u, 3u, 4096u}) {
            FILE *file = open_text_file("C:t", "r");
            char buffer[4096];
            setvbuf(file, buffer, _IOFBF, block);
            std::string read;
            for (int c; (c = getc(file)) != EOF;) {
                read += static_cast<char>(c);
            }
            EXPECT_EQ(read, text) << testing::PrintToString(bytes) << " by " << block;
            EXPECT_TRUE(feof(file) && getc(file) == EOF && !ferror(file));
            fclose(file);
        }
    }
}

} // namespace
