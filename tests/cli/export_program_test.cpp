// veltrane-fontgen-export run as a build script runs it: the files it writes, its
// messages and its exit statuses. RunProgram removes DISPLAY, so every run here is one
// without a display.

#include "cli/program_run.h"
#include "export/export_test_support.h"

#include "charset/char_code_list.h"
#include "export/export_font.h"
#include "raster/ft_font.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

namespace fs = std::filesystem;

namespace {

const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";

TEST(ExportProgram, WritesWhatTheWriterWrites)
{
    struct Case {
        std::string font;
        std::vector<std::string> options;
        unsigned height; // what the options mean, for the writer called directly
        CharCodeList codes;
    };
    CharCodeList defaultCodes;
    for (uint32_t code = 32; code <= 126; ++code)
        defaultCodes.push_back(code);
    const Case cases[] = {
        {kTestFont, {}, 16, defaultCodes},
        {kDejaVuSans, {"--height", "0x20", "--chars=65-70, 48,65"}, 32, {65, 66, 67, 68, 69, 70, 48, 65}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.font + " " + testing::PrintToString(c.options));
        TempDir programDir, writerDir;
        std::vector<std::string> args = c.options;
        args.push_back(c.font);
        args.push_back((programDir.Path() / "Font.cpp").string());
        const ProgramResult run = RunExporter(args);
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out + run.err, "");

        FTFont font;
        font.LoadFace(c.font.c_str());
        std::string name = "Font";
        CharCodeList codes = c.codes;
        ASSERT_TRUE(ExportFont(&font, name, writerDir.Prefix(), c.height, &codes));
        EXPECT_EQ(FileNames(programDir.Path()), (std::set<std::string>{"Font.cpp", "Font.h"}));
        for (const char* file : {"Font.cpp", "Font.h"})
            EXPECT_TRUE(ReadFile(programDir.Path() / file) == ReadFile(writerDir.Path() / file)) << file << " differs";
    }
}

// The output places that cannot take the files are in export_faults_test.cpp.
TEST(ExportProgram, ReportsEachFailureWithItsMessageAndStatus)
{
    struct Case {
        std::vector<std::string> args; // FONT, OUT, MISSING, FILEDIR and DIRECTORY stand for paths
        int status;
        std::string err; // the whole of standard error; for status 2 a part of it
    };
    const std::string usage = "Usage:";
    const Case cases[] = {
        {{"--height", "16px", "FONT", "OUT"}, 1, "Invalid font size !\n"},
        {{"--chars", "4294967295", "FONT", "OUT"}, 1,
         "Character code 4294967295 is above 255 and cannot be exported !\n"},
        {{"--height", "15", "/usr/share/fonts/opentype/terminus/terminus-normal.otb", "OUT"}, 1,
         "cannot set char size\n"}, // FreeType's message: the font has no 15 px strike
        // Checked in this order: height, codes (the first above 255), font, writing.
        {{"--height", "5", "--chars", "300", "MISSING", "FILEDIR"}, 1, "Font size must be in between 6 and 256 !\n"},
        {{"--chars", "65,300,256", "MISSING", "FILEDIR"}, 1,
         "Character code 300 is above 255 and cannot be exported !\n"},
        {{"MISSING", "FILEDIR"}, 1, "cannot load font file\n"},
        // Usage errors.
        {{}, 2, usage},
        {{"FONT", "OUT", "extra"}, 2, usage},
        {{"--bogus", "FONT", "OUT"}, 2, usage},
        {{"FONT", "DIRECTORY"}, 2, "names a directory"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.args));
        TempDir dir;
        const fs::path plain = dir.Path() / "plain";
        std::ofstream(plain) << "not a directory\n";
        const std::map<std::string, std::string> paths = {
            {"FONT", kTestFont},
            {"OUT", (dir.Path() / "Font.cpp").string()},
            {"MISSING", (dir.Path() / "missing.ttf").string()},
            {"FILEDIR", (plain / "Font.cpp").string()},
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
        EXPECT_EQ(FileNames(dir.Path()), std::set<std::string>{"plain"});
    }
}

TEST(ExportProgram, HelpAndVersionGoToStandardOutput)
{
    const ProgramResult help = RunExporter({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (const char* part : {"Usage:", "--height", "--chars", "FONT", "OUTPUT"})
        EXPECT_NE(help.out.find(part), std::string::npos) << part;

    const ProgramResult version = RunExporter({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.err, "");
    EXPECT_EQ(version.out, "Veltrane Bitmap Font Generator v1.00\n");
}

TEST(ExportProgram, NamesTheFilesLikeTheSaveDialog)
{
    struct Case {
        std::string output; // relative to the working directory
        std::string source, header;
    };
    const Case cases[] = {
        {"Font.cpp", "Font.cpp", "Font.h"}, // no directory: the current one
        {"Font.CPP", "Font.cpp", "Font.h"},
        {"sub/My Font-2.cpp", "sub/My_Font_2.cpp", "sub/My_Font_2.h"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.output);
        TempDir cwd;
        fs::create_directory(cwd.Path() / "sub");
        const ProgramResult run = RunExporter({"--chars", "65", kTestFont, c.output}, cwd.Path().string());
        ASSERT_EQ(run.status, 0) << run.err;
        std::set<std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(cwd.Path())) {
            if (entry.is_regular_file())
                files.insert(fs::relative(entry.path(), cwd.Path()).string());
        }
        EXPECT_EQ(files, (std::set<std::string>{c.source, c.header}));
        const std::string include = "#include <" + fs::path(c.header).filename().string() + ">";
        EXPECT_EQ(ReadFile(cwd.Path() / c.source).find(include), 0u);
    }
}

TEST(ExportProgram, LinksNoWindowLibraries)
{
    const ProgramResult libraries = RunProgram({"ldd", VELTRANE_EXPORT_PROGRAM});
    ASSERT_EQ(libraries.status, 0) << libraries.err;
    EXPECT_NE(libraries.out.find("libfreetype"), std::string::npos) << libraries.out;
    for (const char* windowLibrary : {"libwx_", "libgtk", "libgdk", "libX11"})
        EXPECT_EQ(libraries.out.find(windowLibrary), std::string::npos) << libraries.out;
}

} // namespace
