// Unicode packed fonts from the command line: what their code space refuses, and strings
// files read as --text reads its text.

#include "cli/program_run.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <fstream>

namespace fs = std::filesystem;

namespace {

const std::string kPrefix = "veltrane-fontgen-export: ";

void WriteFile(const fs::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

TEST(UnicodeProgram, CodesAndTextsOutsideTheFontsCodeSpaceWriteNothing)
{
    TempDir dir;
    WriteFile(dir.Path() / "latin1.txt", "caf\xE9");
    fs::create_directory(dir.Path() / "folder.txt");
    const std::string missing = dir.Prefix() + "missing.txt";
    const struct
    {
        std::vector<std::string> args;
        std::string err; // the message, then what it concerns on prefixed lines
    } rows[] = {
        {{"--format", "packed", "--chars", "65,0xD800"},
         "Character code 55296 (U+D800) is a surrogate, not a character, and cannot be exported !\n"},
        {{"--format", "packed", "--chars", "0xDFFF-0xE000"},
         "Character code 57343 (U+DFFF) is a surrogate, not a character, and cannot be exported !\n"},
        {{"--format", "packed", "--chars", "0x10FFFF-0x110000"},
         "Character code 1114112 is above U+10FFFF, the last code point, and cannot be exported !\n"},
        {{"--chars", "0x4E00"}, "Character code 19968 is above 255 and cannot be exported !\n"},
        {{"--format", "packed", "--codepage", "CP1251", "--chars", "0x4E00"},
         "Character code 19968 is above 255 and cannot be exported !\n"},
        {{"--format", "packed", "--chars", "65", "--glyphs", kIconsFont + ":0x41,0x42=>0x10FFFF"},
         "Character code 1114112 is above U+10FFFF, the last code point, and cannot be exported !\n" + kPrefix +
             "--glyphs \"" + kIconsFont + ":0x41,0x42=>0x10FFFF\" places 2 characters from code 1114111 on\n"},
        {{"--format", "packed", "--text-file", missing},
         "Cannot read a text file !\n" + kPrefix + "--text-file \"" + missing + "\": No such file or directory\n"},
        {{"--format", "packed", "--text-file", dir.Prefix() + "folder.txt"},
         "Cannot read a text file !\n" + kPrefix + "--text-file \"" + dir.Prefix() + "folder.txt\": is a directory\n"},
        {{"--format", "packed", "--text", "ok", "--text-file", dir.Prefix() + "latin1.txt"},
         "A text file is not valid UTF-8 !\n" + kPrefix + "--text-file \"" + dir.Prefix() +
             "latin1.txt\" is not valid UTF-8 at byte 4\n"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> args = row.args;
        args.insert(args.end(), {kTestFont, dir.Prefix() + "Font.cpp"});
        const ProgramResult result = RunExporter(args);
        EXPECT_EQ(result.status, 1) << testing::PrintToString(row.args);
        EXPECT_EQ(result.err, row.err) << testing::PrintToString(row.args);
        EXPECT_FALSE(fs::exists(dir.Path() / "Font.c") || fs::exists(dir.Path() / "Font.cpp") ||
                     fs::exists(dir.Path() / "Font.h"));
    }
}

// A strings file gives exactly the characters its text gives --text: its byte order mark,
// line breaks and tabs left out, each character once, after the --chars codes.
TEST(UnicodeProgram, AStringsFileGivesTheCharactersOfItsText)
{
    TempDir dir;
    WriteFile(dir.Path() / "zh.txt", "\xEF\xBB\xBF设置\r\n\t音量：50%\n");
    WriteFile(dir.Path() / "ru.txt", "Громкость\n");
    const std::vector<std::string> common = {"--format", "packed", "--face", "2", "--chars", "48-57", "--stats"};
    auto run = [&](const std::vector<std::string>& texts, const std::string& output) {
        std::vector<std::string> args = common;
        args.insert(args.end(), texts.begin(), texts.end());
        args.insert(args.end(), {kNotoSansCjk, dir.Prefix() + output});
        const ProgramResult result = RunExporter(args);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    };
    const std::string fromFiles =
        run({"--text-file", dir.Prefix() + "zh.txt", "--text-file", dir.Prefix() + "ru.txt"}, "Files.c");
    const std::string fromText = run({"--text", "设置音量：50%Громкость"}, "Text.c");
    EXPECT_NE(fromFiles.find("characters                           24\n"), std::string::npos) << fromFiles;
    // The same arrays in the same order; only the names differ.
    const std::string files = ReadFile(dir.Path() / "Files.c"), text = ReadFile(dir.Path() / "Text.c");
    EXPECT_EQ(files.substr(files.find('\n'), files.find("const vt_font_t") - files.find('\n')),
              text.substr(text.find('\n'), text.find("const vt_font_t") - text.find('\n')));
}

} // namespace
