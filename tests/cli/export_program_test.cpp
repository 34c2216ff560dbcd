// veltrane-fontgen-export run as a build script runs it: the files it writes, its
// messages and its exit statuses.

#include "cli/program_run.h"
#include "export/export_test_support.h"

#include "charset/char_code_list.h"
#include "export/export_font.h"
#include "raster/ft_font.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

namespace fs = std::filesystem;

namespace {

const std::string kProgram = VELTRANE_EXPORT_PROGRAM;
const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";
const std::string kTerminus = "/usr/share/fonts/opentype/terminus/terminus-normal.otb";

CharCodeList CodeRange(uint32_t first, uint32_t last)
{
    CharCodeList codes;
    for (uint32_t code = first; code <= last; ++code)
        codes.push_back(code);
    return codes;
}

ProgramResult RunExporter(std::vector<std::string> args, const std::string& workDir = {})
{
    args.insert(args.begin(), kProgram);
    return RunProgram(args, workDir);
}

std::set<std::string> FilesIn(const fs::path& dir)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(dir)) {
        if (entry.is_regular_file())
            names.insert(fs::relative(entry.path(), dir).string());
    }
    return names;
}

struct SameFilesCase {
    std::string font;
    std::vector<std::string> options;
    unsigned height; // what the options mean, for the writer called directly
    CharCodeList codes;
};

TEST(ExportProgram, WritesWhatTheWriterWrites)
{
    const SameFilesCase cases[] = {
        {kTestFont, {}, 16, CodeRange(32, 126)},
        {kTestFont, {"--height", "0x20", "--chars", "65-70, 48,65"}, 32, {65, 66, 67, 68, 69, 70, 48, 65}},
        {kDejaVuSans, {}, 16, CodeRange(32, 126)},
        {kDejaVuSans, {"--chars=0xC0-0xFF", "--height=012"}, 10, CodeRange(0xC0, 0xFF)},
    };
    for (const SameFilesCase& c : cases) {
        SCOPED_TRACE(c.font + " " + testing::PrintToString(c.options));
        TempDir programDir;
        TempDir writerDir;
        std::vector<std::string> args = c.options;
        args.push_back(c.font);
        args.push_back((programDir.Path() / "Font.cpp").string());
        const ProgramResult run = RunExporter(args);
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "");

        FTFont font;
        font.LoadFace(c.font.c_str());
        std::string name = "Font";
        CharCodeList codes = c.codes;
        ASSERT_TRUE(ExportFont(&font, name, writerDir.Prefix(), c.height, &codes));

        EXPECT_EQ(FilesIn(programDir.Path()), (std::set<std::string>{"Font.cpp", "Font.h"}));
        for (const char* file : {"Font.cpp", "Font.h"}) {
            const std::string expected = ReadFile(writerDir.Path() / file);
            ASSERT_FALSE(expected.empty());
            EXPECT_TRUE(ReadFile(programDir.Path() / file) == expected) << file << " differs";
        }
    }
}

struct FailureCase {
    std::vector<std::string> args; // FONT, OUT, TEXT, MISSING and FILEDIR stand for paths
    int status;
    std::string err; // the whole of standard error; for status 2 a part of it
};

TEST(ExportProgram, ReportsEveryFailureWithItsMessageAndStatus)
{
    const std::string usage = "Usage:";
    const FailureCase cases[] = {
        {{"--height", "abc", "FONT", "OUT"}, 1, "Invalid font size !\n"},
        {{"--height", "16px", "FONT", "OUT"}, 1, "Invalid font size !\n"},
        {{"--height", "5", "FONT", "OUT"}, 1, "Font size must be in between 6 and 256 !\n"},
        {{"--height", "257", "FONT", "OUT"}, 1, "Font size must be in between 6 and 256 !\n"},
        {{"--height", "", "FONT", "OUT"}, 1, "Font size must be in between 6 and 256 !\n"},
        {{"--height", "-16", "FONT", "OUT"}, 1, "Font size must be in between 6 and 256 !\n"},
        {{"--chars", "65,300", "FONT", "OUT"}, 1, "Character code 300 is above 255 and cannot be exported !\n"},
        {{"--chars", "0x100-0x101", "FONT", "OUT"}, 1,
         "Character code 256 is above 255 and cannot be exported !\n"},
        {{"TEXT", "OUT"}, 1, "cannot load font file\n"},
        {{"MISSING", "OUT"}, 1, "cannot load font file\n"},
        {{"FONT", "FILEDIR"}, 1, "Error writing file !\n"},
        {{"--height", "15", kTerminus, "OUT"}, 1, "cannot set char size\n"}, // no 15 px strike
        // Checked in this order: height, codes, font, writing.
        {{"--height", "5", "--chars", "300", "MISSING", "FILEDIR"}, 1,
         "Font size must be in between 6 and 256 !\n"},
        {{"--chars", "300", "MISSING", "FILEDIR"}, 1,
         "Character code 300 is above 255 and cannot be exported !\n"},
        {{"MISSING", "FILEDIR"}, 1, "cannot load font file\n"},
        // Usage errors.
        {{}, 2, usage},
        {{"FONT"}, 2, usage},
        {{"FONT", "OUT", "extra"}, 2, usage},
        {{"--bogus", "FONT", "OUT"}, 2, usage},
        {{"FONT", "OUT", "--height"}, 2, usage},
        {{"--height", "16", "--height", "17", "FONT", "OUT"}, 2, usage},
        {{"FONT", "DIRECTORY"}, 2, "names a directory"},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.args));
        TempDir dir;
        const fs::path text = dir.Path() / "plain.txt";
        std::ofstream(text) << "not a font\n";
        const std::map<std::string, std::string> paths = {
            {"FONT", kTestFont},
            {"OUT", (dir.Path() / "Font.cpp").string()},
            {"TEXT", text.string()},
            {"MISSING", (dir.Path() / "missing.ttf").string()},
            {"FILEDIR", (text / "Font.cpp").string()}, // a file as a directory fails even for root
            {"DIRECTORY", dir.Prefix()},
        };
        std::vector<std::string> args;
        for (const std::string& arg : c.args)
            args.push_back(paths.count(arg) != 0 ? paths.at(arg) : arg);

        const ProgramResult run = RunExporter(args);
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.out, "");
        if (c.status == 2)
            EXPECT_NE(run.err.find(c.err), std::string::npos) << run.err;
        else
            EXPECT_EQ(run.err, c.err);
        EXPECT_EQ(FilesIn(dir.Path()), std::set<std::string>{"plain.txt"});
    }
}

TEST(ExportProgram, HelpAndVersionGoToStandardOutput)
{
    const ProgramResult help = RunExporter({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (const char* part : {"Usage:", "--height", "--chars", "FONT", "OUTPUT", "Exit status"})
        EXPECT_NE(help.out.find(part), std::string::npos) << part;

    const ProgramResult version = RunExporter({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.err, "");
    EXPECT_EQ(version.out, "Veltrane Bitmap Font Generator v1.00\n");
}

struct NamingCase {
    std::string output; // relative to the working directory
    std::string source;
    std::string header;
};

TEST(ExportProgram, NamesTheFilesLikeTheSaveDialog)
{
    const NamingCase cases[] = {
        {"Font.cpp", "Font.cpp", "Font.h"}, // no directory: the current one
        {"Font.CPP", "Font.cpp", "Font.h"},
        {"Font", "Font.cpp", "Font.h"},
        {"sub/My Font-2.cpp", "sub/My_Font_2.cpp", "sub/My_Font_2.h"},
        {"./Font.cpp.cpp", "Font_cpp.cpp", "Font_cpp.h"},
    };
    for (const NamingCase& c : cases) {
        SCOPED_TRACE(c.output);
        TempDir cwd;
        fs::create_directory(cwd.Path() / "sub");
        const ProgramResult run = RunExporter({"--chars", "65", kTestFont, c.output}, cwd.Path().string());
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(FilesIn(cwd.Path()), (std::set<std::string>{c.source, c.header}));
        const std::string include = "#include <" + fs::path(c.header).filename().string() + ">";
        EXPECT_NE(ReadFile(cwd.Path() / c.source).find(include), std::string::npos);
    }
}

TEST(ExportProgram, NeedsNoDisplayNorWindowLibraries)
{
    TempDir dir;
    const ProgramResult run = RunExporter({kTestFont, (dir.Path() / "Font.cpp").string()}); // no DISPLAY
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(FilesIn(dir.Path()), (std::set<std::string>{"Font.cpp", "Font.h"}));

    const ProgramResult libraries = RunProgram({"ldd", kProgram});
    ASSERT_EQ(libraries.status, 0) << libraries.err;
    EXPECT_NE(libraries.out.find("libfreetype"), std::string::npos) << libraries.out;
    for (const char* windowLibrary : {"libwx_", "libgtk", "libgdk", "libX11"})
        EXPECT_EQ(libraries.out.find(windowLibrary), std::string::npos) << libraries.out;
}

} // namespace
