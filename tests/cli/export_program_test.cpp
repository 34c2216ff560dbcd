// veltrane-fontgen-export run as a build script runs it: the files it writes, its messages
// and exit statuses, with the faults a user's machine can throw at it.

#include "cli/program_run.h"
#include "export/export_test_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

namespace {

const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";
const std::string kNotoSans = "/usr/share/fonts/truetype/noto/NotoSans-Regular.ttf";
const std::string kTerminus = "/usr/share/fonts/opentype/terminus/terminus-normal.otb";
const std::string kWriteFailed = "Error writing file !\n";

// Arguments as rows write them: FONT is the test font, "@name" a path in the run's directory.
std::vector<std::string> Arguments(const std::vector<std::string>& args, const fs::path& dir)
{
    std::vector<std::string> resolved;
    for (const std::string& arg : args)
        resolved.push_back(arg == "FONT" ? kTestFont : arg.starts_with("@") ? (dir / arg.substr(1)).string() : arg);
    return resolved;
}

// Every file and directory under `dir`, as paths relative to it.
std::set<std::string> Tree(const fs::path& dir)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(dir))
        names.insert(entry.path().lexically_relative(dir).string());
    return names;
}

// The committed exports are the reviewed output. `make regen-expected` runs this test with
// VELTRANE_REGEN_EXPECTED set, which rewrites them instead; review their diff.
TEST(ExportProgram, GoldenExports)
{
    const struct {
        std::string name;
        std::vector<std::string> args;
    } rows[] = {
        // Every glyph of the test font: a blank one, kerned pairs both ways and a positive
        // kerning, ink left of the pen and below the baseline, an 8-bit code whose kerning
        // the char tables cannot reach, a code the font lacks, and a repeat.
        {"golden_font", {"--chars", "32,65,86,84,46,106,233,66,65", "FONT"}},
        // Cyrillic from a sample text, under its CP1251 bytes.
        {"cp1251_font", {"--height", "12", "--codepage", "cp1251", "--text", "Привет", kNotoSans}},
        // The GPOS pairs, eacute's too; auto takes them, or the legacy table from a font without GPOS.
        {"gpos_font", {"--kerning", "gpos", "--chars", "32,65,86,84,46,106,233,66,65", "FONT"}},
        {"gpos_font", {"--kerning", "auto", "--chars", "32,65,86,84,46,106,233,66,65", "FONT"}},
        {"golden_font", {"--kerning", "auto", "--chars", "32,65,86,84,46,106,233,66,65", VELTRANE_TEST_FONT_DIR "/veltrane-test-legacy-kern.ttf"}},
        {"russian_gpos", {"--height", "11", "--codepage", "CP1251", "--text", "Привет, мир", "--kerning", "gpos", kNotoSans}},
    };
    const fs::path expected = VELTRANE_EXPECTED_DIR;
    const bool regenerate = std::getenv("VELTRANE_REGEN_EXPECTED") != nullptr;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TempDir dir;
        std::vector<std::string> args = Arguments(row.args, dir.Path());
        args.push_back(((regenerate ? expected : dir.Path()) / (row.name + ".cpp")).string());
        const ProgramResult run = RunExporter(args);
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out + run.err, "");
        for (const std::string& file : {row.name + ".cpp", row.name + ".h"}) {
            const std::string golden = ReadFile(expected / file);
            ASSERT_FALSE(golden.empty()) << file << " is missing; run make regen-expected";
            EXPECT_TRUE(regenerate || ReadFile(dir.Path() / file) == golden) << file << " differs from the committed file";
        }
    }
}

TEST(ExportProgram, Faults)
{
    const std::string range = "Font size must be in between 6 and 256 !\n", load = "cannot load font file\n";
    const struct {
        std::vector<std::string> made; // before the run: "name/" a directory, "name@" a link to /dev/full,
                                       // "name=N" the test font's first N bytes, "name" a file holding "kept"
        std::vector<std::string> args;
        int status;
        std::string err;           // all of standard error; for status 2 a part of it
        std::string out = {};      // a part of standard output; nothing at all when empty
        std::set<std::string> left = {}; // the run's directory afterwards
    } rows[] = {
        // Checked in this order: height, codes, font, writing.
        {{}, {"--height", "16px", "FONT", "@Font.cpp"}, 1, "Invalid font size !\n"},
        {{"f"}, {"--height", "5", "--chars", "300", "@none.ttf", "@f/Font.cpp"}, 1, range, "", {"f"}},
        {{}, {"--height", "-16", "FONT", "@Font.cpp"}, 1, range},
        {{}, {"--chars", "65,300,256", "@none.ttf", "@Font.cpp"}, 1,
         "Character code 300 is above 255 and cannot be exported !\n"},
        {{}, {"--codepage", "CP1251", "--chars", "65,152", "@none.ttf", "@Font.cpp"}, 1,
         "Character code 152 has no character in CP1251 !\n"},
        {{}, {"--text", "ab\n€", "@none.ttf", "@Font.cpp"}, 1, "Character \"€\" (U+20AC) is not in ISO-8859-1 !\n"},
        {{}, {"--codepage", "koi8-u", "--text", "€", "@none.ttf", "@Font.cpp"}, 1,
         "Character \"€\" (U+20AC) is not in KOI8-U !\n"},
        {{}, {"@none.ttf", "@Font.cpp"}, 1, load},
        {{"f"}, {"@f", "@Font.cpp"}, 1, load, "", {"f"}},
        {{"d/"}, {"@d", "@Font.cpp"}, 1, load, "", {"d"}},
        {{"cut.ttf=100"}, {"@cut.ttf", "@Font.cpp"}, 1, load, "", {"cut.ttf"}},
        {{}, {"--face", "1", "FONT", "@Font.cpp"}, 1, load},
        {{}, {"--height", "15", kTerminus, "@Font.cpp"}, 1, "cannot set char size\n"},
        // Places that cannot take the files.
        {{}, {"FONT", "@gone/Font.cpp"}, 1, kWriteFailed},
        {{"f"}, {"FONT", "@f/Font.cpp"}, 1, kWriteFailed, "", {"f"}},
        {{"Font.cpp/"}, {"FONT", "@Font.cpp"}, 1, kWriteFailed, "", {"Font.cpp"}},
        {{"Font.h/"}, {"FONT", "@Font.cpp"}, 1, kWriteFailed, "", {"Font.cpp", "Font.h"}},
        {{"Font.cpp@"}, {"FONT", "@Font.cpp"}, 1, kWriteFailed, "", {"Font.cpp"}},
        {{"Font.h@"}, {"FONT", "@Font.cpp"}, 1, kWriteFailed, "", {"Font.cpp", "Font.h"}},
        // Usage errors.
        {{}, {}, 2, "Usage:"},
        {{}, {"FONT", "@Font.cpp", "extra"}, 2, "Usage:"},
        {{}, {"--bogus", "FONT", "@Font.cpp"}, 2, "Usage:"},
        {{}, {"FONT", "@"}, 2, "names a directory"},
        {{}, {"--codepage", "UTF-8", "FONT", "@Font.cpp"}, 2, "codepage \"UTF-8\" is not an 8-bit encoding"},
        {{}, {"--codepage", "no-such", "FONT", "@Font.cpp"}, 2, "unknown codepage \"no-such\""},
        {{}, {"--face", "-1", "FONT", "@Font.cpp"}, 2, "--face"},
        {{}, {"--kerning", "GPOS", "FONT", "@Font.cpp"}, 2, "--kerning: \"GPOS\" is not legacy, gpos or auto"},
        // Successes: the files named as the save dialog would; help and version on standard output.
        {{"sub/"}, {"--chars", "65", "FONT", "@sub/My Font-2.cpp"}, 0, "", "", {"sub", "sub/My_Font_2.cpp", "sub/My_Font_2.h"}},
        {{}, {"--chars", "65", "FONT", "@Font.CPP"}, 0, "", "", {"Font.cpp", "Font.h"}},
        {{}, {"--help"}, 0, "", "--codepage NAME"},
        {{}, {"--version"}, 0, "", "Veltrane Bitmap Font Generator v1.00\n"},
    };
    const std::string font = ReadFile(kTestFont);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.args));
        TempDir dir;
        for (const std::string& made : row.made) {
            const fs::path path = dir.Path() / made.substr(0, made.find_first_of("/@="));
            if (made.ends_with("/"))
                fs::create_directory(path);
            else if (made.ends_with("@"))
                fs::create_symlink("/dev/full", path);
            else
                std::ofstream(path) << (made.find('=') != made.npos ? font.substr(0, std::stoul(made.substr(made.find('=') + 1))) : "kept");
        }
        const ProgramResult run = RunExporter(Arguments(row.args, dir.Path()));
        EXPECT_EQ(run.status, row.status);
        if (row.status == 2)
            EXPECT_NE(run.err.find(row.err), std::string::npos) << run.err;
        else
            EXPECT_EQ(run.err, row.err);
        if (row.out.empty())
            EXPECT_EQ(run.out, "");
        else
            EXPECT_NE(run.out.find(row.out), std::string::npos) << run.out;
        EXPECT_EQ(Tree(dir.Path()), row.left);
    }
}

TEST(ExportProgram, LinksNoWindowLibraries)
{
    const ProgramResult libraries = RunProgram({"ldd", VELTRANE_EXPORT_PROGRAM});
    ASSERT_EQ(libraries.status, 0) << libraries.err;
    for (const char* windowLibrary : {"libwx_", "libgtk", "libgdk", "libX11"})
        EXPECT_EQ(libraries.out.find(windowLibrary), std::string::npos) << libraries.out;
}

} // namespace
