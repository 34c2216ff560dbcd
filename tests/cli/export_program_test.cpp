// veltrane-fontgen-export run as a build script runs it: the files it writes, its messages
// and exit statuses, with the faults a user's machine can throw at it.

#include "charset/number_text.h"
#include "cli/program_run.h"
#include "output_name_cases.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace {

const std::string kNote = "veltrane-fontgen-export: ";
const std::string kUnicodeHint = "or give --format packed: a packed font without --codepage holds any character\n";
const std::string kRunHelp = "Run 'veltrane-fontgen-export --help' for the options.\n";
const std::string kWriteFailed = "Error writing file !\n", kProofFailed = "Error writing the proof image !\n";
const std::string kLoadFailed = "cannot load font file\n" + kNote,
                  kNotAFont = "\" is not a font file FreeType can read\n";
const std::string kSizeRange = "Font size must be in between 6 and 256 !\n", kNoSpace = ": No space left on device\n";
const std::string kGone = "cannot write in \"gone/\": No such file or directory\n";
const std::string kShape = "they are exported as the font's missing-glyph shape\n";
const std::set<std::string> kPair = {"Font.cpp", "Font.h"};

// The process works in `dir` while this lives.
class CurrentDirectory
{
public:
    explicit CurrentDirectory(const fs::path& dir) : previous(fs::current_path()) { fs::current_path(dir); }
    ~CurrentDirectory() { fs::current_path(previous); }

private:
    fs::path previous;
};

// The test font twice over as a collection: both faces share its tables, moved past the header.
std::string TwoFaceCollection()
{
    FontBytes font(kTestFont);
    for (size_t record = 12; record < 12 + 16 * font.U16(4); record += 16) {
        const uint32_t at = font.U32(record + 8) + 20;
        font.Put16(record + 8, uint16_t(at >> 16)), font.Put16(record + 10, uint16_t(at));
    }
    return std::string("ttcf\0\1\0\0\0\0\0\2\0\0\0\x14\0\0\0\x14", 20) + font.bytes;
}

// The exporter run as a user runs it: as root, without the power to override permissions.
ProgramResult RunAsUser(std::vector<std::string> args)
{
    if (geteuid() != 0)
        return RunExporter(args);
    args.insert(args.begin(), {"setpriv", "--bounding-set=-dac_override,-dac_read_search", VELTRANE_EXPORT_PROGRAM});
    return RunProgram(args);
}

// Every file and directory under `dir`, as paths relative to it.
std::set<std::string> Tree(const fs::path& dir)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(dir))
        names.insert(entry.path().lexically_relative(dir).string());
    return names;
}

// The bytes and modification time of every regular file under `dir` (through links).
std::map<std::string, std::pair<std::string, fs::file_time_type>> Snapshot(const fs::path& dir)
{
    std::map<std::string, std::pair<std::string, fs::file_time_type>> files;
    for (const std::string& name : Tree(dir))
        if (fs::is_regular_file(dir / name))
            files[name] = {ReadFile(dir / name), fs::last_write_time(dir / name)};
    return files;
}

// What the run's directory holds before the run; all of it is dated an hour back.
struct Setup
{
    std::vector<std::string> dirs = {};
    std::vector<std::string> files = {};                         // each holding "kept"
    std::vector<std::pair<std::string, std::string>> links = {}; // name, where it leads
    std::map<std::string, std::string> fonts = {};               // name, its bytes
    std::optional<uint32_t> brokenGlyph = {}; // broken.ttf: the test font with this code's glyph unloadable
    std::vector<std::pair<std::string, unsigned>> modes = {}; // name, its permissions
    bool earlierPair = false;                                 // the pair the same run wrote an hour ago
    bool damaged = false; // that pair's source cut short (as a crashed writer leaves it), a byte of its header changed
};

// One run of the exporter in a fresh directory of its own, the current one, and what it must leave.
struct Run
{
    Setup before;
    std::vector<std::string> args;
    int status;
    std::string err;                 // all of standard error; for usage errors (status 2) a part of it
    std::string out = {};            // a part of standard output; nothing at all when empty
    std::set<std::string> left = {}; // the directory afterwards
};

// Makes `setup` in the current directory; returns the earlier pair as the run wrote it, before any damage.
std::pair<std::string, std::string> Make(const Setup& setup, const std::vector<std::string>& args)
{
    for (const std::string& name : setup.dirs)
        fs::create_directory(name);
    for (const std::string& name : setup.files)
        std::ofstream(name) << "kept";
    for (const auto& [name, target] : setup.links)
        fs::create_symlink(target, name);
    for (const auto& [name, bytes] : setup.fonts)
        std::ofstream(name) << bytes;
    if (setup.brokenGlyph)
        FontWithBrokenGlyph(kTestFont, ".", *setup.brokenGlyph);
    std::pair<std::string, std::string> pair;
    if (setup.earlierPair) {
        EXPECT_EQ(RunExporter(args).status, 0);
        pair = {ReadFile("Font.cpp"), ReadFile("Font.h")};
    }
    if (setup.damaged) {
        std::ofstream("Font.cpp") << pair.first.substr(0, pair.first.size() / 2);
        std::string header = pair.second;
        header[header.size() / 2] ^= 1;
        std::ofstream("Font.h") << header;
    }
    for (const auto& [name, mode] : setup.modes)
        fs::permissions(name, fs::perms(mode));
    for (const auto& [name, file] : Snapshot("."))
        fs::last_write_time(name, file.second - std::chrono::hours(1));
    return pair;
}

// A failure leaves every file as it was made, dates included, and a success whole files.
void ExpectRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        SCOPED_TRACE(testing::PrintToString(run.args));
        TempDir dir;
        const CurrentDirectory runDir(dir.Path());
        const auto earlier = Make(run.before, run.args);
        const auto before = Snapshot(".");
        const ProgramResult result = RunAsUser(run.args);
        EXPECT_EQ(result.status, run.status);
        if (run.status == 2) {
            EXPECT_NE(result.err.find(run.err), std::string::npos) << result.err;
            // A few lines, each prefixed, the last pointing to --help.
            EXPECT_TRUE(std::regex_match(result.err, std::regex("(" + kNote + "[^\n]*\n){1,3}"))) << result.err;
            EXPECT_TRUE(result.err.ends_with(kNote + kRunHelp)) << result.err;
        } else {
            EXPECT_EQ(result.err, run.err);
        }
        EXPECT_TRUE(run.out.empty() ? result.out.empty() : result.out.find(run.out) != result.out.npos) << result.out;
        EXPECT_EQ(Tree("."), run.left);
        const bool keepsAll = run.status != 0 || (run.before.earlierPair && !run.before.damaged);
        EXPECT_TRUE(!keepsAll || Snapshot(".") == before) << "files made before the run changed";
        EXPECT_TRUE(!run.before.damaged ||
                    (ReadFile("Font.cpp") == earlier.first && ReadFile("Font.h") == earlier.second))
            << "a damaged earlier pair stays";
        // Whole files, wherever their links lead.
        for (const std::string& name : run.status == 0 ? run.left : std::set<std::string>{}) {
            const char* end = name.ends_with(".h") ? "\n#endif\n" : name.ends_with(".cpp") ? "}\n};\n" : "";
            EXPECT_TRUE(!fs::is_regular_file(name) || ReadFile(name).ends_with(end)) << name;
        }
    }
}

// clang-format off
// The committed exports are the reviewed output. `make regen-expected` runs this test with
// VELTRANE_REGEN_EXPECTED set, which rewrites them instead; review their diff.
TEST(ExportProgram, GoldenExports)
{
    const std::string chars = "32,65,86,84,46,106,233,66,65"; // every glyph of the test font, and a repeat
    const struct {
        std::string name;
        std::vector<std::string> args; // the proof, if any, is written as NAME.png
    } rows[] = {
        // A blank glyph, kerned pairs both ways and a positive kerning, ink left of the pen and
        // below the baseline, an 8-bit code whose kerning the char tables cannot reach, a code
        // the font lacks; its proof.
        {"golden_font",
         {"--chars", chars, "--proof", "golden_font.png", "--proof-text", "AVAT. Tj\nVA.é B", kTestFont}},
        // The GPOS pairs, eacute's too; auto takes them, or the legacy table from a font without GPOS.
        {"gpos_font", {"--kerning", "gpos", "--chars", chars, kTestFont}},
        {"gpos_font", {"--kerning", "auto", "--chars", chars, kTestFont}},
        {"golden_font", {"--kerning", "auto", "--chars", chars, kLegacyKernTestFont}},
        // Under a codepage the legacy table is asked for the characters the bytes stand for: eacute V kerns.
        {"latin1_font", {"--codepage", "ISO-8859-1", "--chars", "86,233,65", kTestFont}},
        // Cyrillic from a sample text under its CP1251 bytes, GPOS kerning; the proof shows each
        // code once, 16 to a line.
        {"cp1251_font", {"--height", "12", "--codepage", "cp1251", "--chars", "46,44", "--text",
                         "Привет, мир! Съешь ещё булок", "--kerning", "gpos", "--proof", "cp1251_font.png", kNotoSans}},
        // A font in its own KOI8-R encoding: under either codepage its glyphs, each under the codepage's byte.
        {"koi8r_font",
         {"--height", "8", "--codepage", "KOI8-R", "--text", "Привет", "--proof", "koi8r_font.png", kKoi8rFont}},
        {"koi8r_cp1251_font", {"--height", "8", "--codepage", "CP1251", "--text", "Привет", "--proof",
                               "koi8r_cp1251_font.png", kKoi8rFont}},
        // Icons under 0x80 and 0x81 kerned together, the "B" the test font lacks from the icons'
        // font as a fallback, kerned with neither font's A; its proof.
        {"merged_font", {"--chars", "65,66,86", "--glyphs", kIconsFont + ":0xE000-0xE001=>0x80", "--fallback",
                         kIconsFont, "--proof", "merged_font.png", "--proof-text", "AVB\uE000\uE001", kTestFont}},
    };
    const fs::path expected = VELTRANE_EXPECTED_DIR;
    const bool regenerate = std::getenv("VELTRANE_REGEN_EXPECTED") != nullptr;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TempDir dir;
        const fs::path written = regenerate ? expected : dir.Path();
        const CurrentDirectory proofDir(written); // the source goes there by its full path
        std::vector<std::string> args = row.args;
        args.push_back((written / (row.name + ".cpp")).string());
        const ProgramResult run = RunExporter(args);
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, "");
        std::vector<std::string> files = {row.name + ".cpp", row.name + ".h"};
        if (std::find(row.args.begin(), row.args.end(), "--proof") != row.args.end())
            files.push_back(row.name + ".png");
        for (const std::string& file : files) {
            const std::string golden = ReadFile(expected / file);
            ASSERT_FALSE(golden.empty()) << file << " is missing; run make regen-expected";
            EXPECT_TRUE(regenerate || ReadFile(dir.Path() / file) == golden) << file << " has changed";
        }
    }
    EXPECT_EQ(ReadFile(expected / "koi8r_font.png"), ReadFile(expected / "koi8r_cp1251_font.png")) << "the same glyphs";
}

// The height first, then the codes, the font and the places to write: each row has a later fault too.
TEST(ExportProgram, ChecksHeightThenCodesThenFontThenPlaces)
{
    ExpectRuns({
        {{}, {"--height", "16px", kTestFont, "Font.cpp"}, 1,
         "Invalid font size !\n" + kNote + "--height \"16px\" is not a number\n"},
        {{.files = {"f"}}, {"--height", "5", "--chars", "300", "none.ttf", "f/Font.cpp"}, 1,
         kSizeRange + kNote + "--height \"5\" is not from 6 to 256\n", "", {"f"}},
        {{}, {"--height", "", kTestFont, "Font.cpp"}, 1, kSizeRange + kNote + "--height \"\" is not a number\n"},
        {{}, {"--chars", "65", "--fallback", kIconsFont + "@300", "none.ttf", "Font.cpp"}, 1, kSizeRange + kNote +
         "--fallback \"" + kIconsFont + "@300\": the height \"300\" is not from 6 to 256\n"},
        {{}, {"--chars", "65,300,256", "none.ttf", "Font.cpp"}, 1,
         "Character code 300 is above 255 and cannot be exported !\n"},
        {{}, {"--codepage", "CP1251", "--chars", "65,152", "none.ttf", "Font.cpp"}, 1,
         "Character code 152 has no character in CP1251 !\n"},
        {{}, {"--chars", "65", "--proof", "p.png", "--proof-text", "AB", "none.ttf", "Font.cpp"}, 1,
         "Character \"B\" (U+0042) is not among the exported characters !\n"},
        {{}, {"--proof", "p.png", "--proof-text", "AB\xff", "none.ttf", "Font.cpp"}, 1,
         "The proof text is not valid UTF-8 !\n" + kNote + "--proof-text is not valid UTF-8 at byte 3\n"},
        {{}, {"--proof", "", "none.ttf", "Font.cpp"}, 1, kProofFailed + kNote + "--proof \"\" is not a file name\n"},
        {{}, {"--text", "abc\xe2\x82", "none.ttf", "Font.cpp"}, 1,
         "The sample text is not valid UTF-8 !\n" + kNote + "--text is not valid UTF-8 at byte 4\n"},
        {{}, {"--text", "\t\r\n", "none.ttf", "Font.cpp"}, 1,
         "No characters to export !\n" + kNote + "--text \"\\x09\\x0D\\x0A\" names no character\n"},
        {{}, {"none.ttf", "gone/Font.cpp"}, 1, kLoadFailed + "\"none.ttf\": No such file or directory\n"},
    });
}

// Each usage error: its message, then where the options are told.
TEST(ExportProgram, UsageErrors)
{
    ExpectRuns({
        {{}, {}, 2, "FONT is required\n"},
        {{}, {kTestFont, "Font.cpp", "extra"}, 2, "not expected: extra\n"},
        {{}, {"--bogus", kTestFont, "Font.cpp"}, 2, kNote + "unknown option --bogus\n"},
        {{}, {"--hieght", "12", kTestFont, "X.cpp"}, 2,
         kNote + "unknown option --hieght; did you mean --height?\n" + kNote + kRunHelp},
        {{}, {"--height"}, 2, kNote + "--height needs a value\n"},
        {{}, {kTestFont, "./"}, 2, "\"./\" names a directory"},
        {{.dirs = {"Font.cpp"}}, {kTestFont, "Font.cpp"}, 2, "OUTPUT: \"Font.cpp\" names a directory", "", {"Font.cpp"}},
        {{}, {kTestFont, "sub/.cpp"}, 2, "OUTPUT: \"sub/.cpp\" has no name before .cpp"},
        {{}, {kTestFont, "X.h"}, 2, "OUTPUT: \"X.h\" does not end in .cpp"},
        {{}, {"-h", "12", kTestFont, "X.cpp"}, 2, kNote + "-h is the help; the height is --height\n"},
        {{}, {"--rotations", "0", "--height", "8", "--rotations=90", kTestFont, "X.cpp"}, 2,
         kNote + "--rotations is given twice\n"},
        {{}, {"--codepage", "UTF-8", kTestFont, "Font.cpp"}, 2, "codepage \"UTF-8\" is not an 8-bit encoding"},
        {{}, {"--codepage", "no-such", kTestFont, "Font.cpp"}, 2, "unknown codepage \"no-such\""},
        {{}, {"--face", "-1", kTestFont, "Font.cpp"}, 2, "--face"},
        {{}, {"--proof-text", "A", kTestFont, "Font.cpp"}, 2, "--proof-text requires --proof"},
        {{}, {"--kerning", "gsub", kTestFont, "Font.cpp"}, 2, "--kerning: \"gsub\" is not legacy, gpos, auto or none"},
        {{}, {"--rotations", "0, 45", kTestFont, "Font.cpp"}, 2, "--rotations: \"45\" is not 0, 90, 180 or 270"},
        {{}, {"--rotations", "90,0,90", kTestFont, "Font.cpp"}, 2, "--rotations: 90 is given twice"},
        {{}, {"--glyphs", kIconsFont, kTestFont, "Font.cpp"}, 2, "is not FONT:LIST or FONT:LIST=>CODE"},
        {{}, {"--mono", "--hinting", "Light", kTestFont, "Font.cpp"}, 2,
         "--hinting: light fits outlines for grey pixels and cannot go with --mono"},
        {{}, {"--gamma", "2.2", "--mono", kTestFont, "Font.cpp"}, 2, "--gamma: a --mono render has no grey pixels to correct"},
        {{}, {"--gamma", "4.5", kTestFont, "Font.cpp"}, 2, "--gamma: \"4.5\" is not a number from 0.25 to 4"},
    });
}

// Places that cannot take the files, and failures after they were opened: the earlier files stay, no temporary.
TEST(ExportProgram, WriteFailuresKeepEarlierFiles)
{
    ExpectRuns({
        {{}, {"--chars", "65", kTestFont, "gone/Font.cpp"}, 1, kWriteFailed + kNote + kGone},
        {{.files = {"f"}}, {"--chars", "65", kTestFont, "f/Font.cpp"}, 1,
         kWriteFailed + kNote + "cannot write in \"f/\": Not a directory\n", "", {"f"}},
        {{.dirs = {"ro"}, .modes = {{"ro", 0555}}}, {"--chars", "65", kTestFont, "ro/Font.cpp"}, 1,
         kWriteFailed + kNote + "cannot write in \"ro/\": Permission denied\n", "", {"ro"}},
        {{.dirs = {"Font.h"}}, {"--chars", "65", kTestFont, "Font.cpp"}, 1,
         kWriteFailed + kNote + "cannot write \"./Font.h\": Is a directory\n", "", {"Font.h"}},
        {{.links = {{"Font.cpp", "/dev/full"}}}, {"--chars", "65", kTestFont, "Font.cpp"}, 1,
         kWriteFailed + kNote + "cannot write \"./Font.cpp\"" + kNoSpace, "", {"Font.cpp"}},
        {{.files = {"Font.cpp"}, .links = {{"Font.h", "/dev/full"}}}, {"--chars", "65", kTestFont, "Font.cpp"}, 1,
         kWriteFailed + kNote + "cannot write \"./Font.h\"" + kNoSpace, "", kPair},
        // A glyph FreeType cannot load, found while writing.
        {{.files = {"Font.cpp", "Font.h"}, .brokenGlyph = 233},
         {"--codepage", "CP437", "--chars", "233,130", "broken.ttf", "Font.cpp"}, 1,
         "cannot load glyph\n" + kNote + "while rendering code 130 (U+00E9) from broken.ttf\n" + kNote +
             "no glyph for 233 \"Θ\" (U+0398); " + kShape, "", {"Font.cpp", "Font.h", "broken.ttf"}},
        // A proof that cannot be written fails the export as a whole.
        {{.files = {"Font.cpp"}, .links = {{"p.png", "/dev/full"}}},
         {"--chars", "65", "--proof", "p.png", kTestFont, "Font.cpp"}, 1,
         kProofFailed + kNote + "cannot write \"p.png\"" + kNoSpace, "", {"Font.cpp", "p.png"}},
        {{}, {"--chars", "65", "--proof", "gone/p.png", kTestFont, "Font.cpp"}, 1, kProofFailed + kNote + kGone},
        {{.files = {"Font.h"}}, {"--proof", "./Font.h", kTestFont, "Font.cpp"}, 1,
         "The proof image would replace an exported file !\n", "", {"Font.h"}},
        {{}, {"--height", "256", "--chars", "65", "--proof", "p.png", "--proof-text", std::string(40, '\n'), kTestFont,
              "Font.cpp"}, 1, "The proof image would be 25776 x 11992 pixels, too large "
                              "(at most 1000000 a side and 268435456 in all) !\n"},
    });
}

// The files are named as the desktop's save dialog names them; a success replaces only what changed
// (the same pair keeps its dates), through a link.
TEST(ExportProgram, OutputNamesAndEarlierFiles)
{
    const std::vector<std::string> args = {"--chars", "65", kTestFont, "Font.cpp"};
    ExpectRuns({
        {{.files = {"Font.cpp", "Font.h"}}, args, 0, "", "", kPair},
        {{.earlierPair = true}, args, 0, "", "", kPair},
        {{.earlierPair = true, .damaged = true}, args, 0, "", "", kPair},
        {{.dirs = {"sub"}, .files = {"sub/real.cpp"}, .links = {{"sub/Font.cpp", "real.cpp"}}},
         {"--chars", "65", kTestFont, "sub/Font.cpp"}, 0, "", "",
         {"sub", "sub/Font.cpp", "sub/Font.h", "sub/real.cpp"}},
        {{.dirs = {"sub"}}, {"--chars", "65", kTestFont, "sub/My Font-2.cpp"}, 0, "", "",
         {"sub", "sub/My_Font_2.cpp", "sub/My_Font_2.h"}},
        {{}, {"--chars", "65", kTestFont, "Font.CPP"}, 0, "", "", kPair},
        {{}, {"none.ttf", "ds-font.cpp"}, 1, "The name ds_font would replace the firmware's ds_font.h !\n" + kNote +
         "the generated files include <ds_font.h>; give OUTPUT another name, e.g. out/MyFont.cpp\n"},
    });
}

// The command line names the pair as the desktop's save dialog does (see kOutputNameCases),
// in either format, and refuses a name the format's source cannot have.
TEST(ExportProgram, OutputNamesAsTheDesktop)
{
    std::vector<struct Run> runs;
    for (const OutputNameCase& row : kOutputNameCases) {
        if (row.directory != "./")
            continue;
        std::vector<std::string> args = {"--chars", "65", kTestFont, row.path};
        if (row.format == FontFormat::Packed)
            args.insert(args.begin(), {"--format", "packed"});
        if (row.commandLineTakes)
            runs.push_back({{}, args, 0, "", "", {row.sanitized + SourceExtension(row.format), row.sanitized + ".h"}});
        else
            runs.push_back({{}, args, 2, "OUTPUT: "});
    }
    ExpectRuns(runs);
}

// Why a font fails: the file itself, its face, its sizes, the --chars pieces, its glyphs; a text the
// codepage cannot hold names the codepages that would; marks and controls are named printably.
TEST(ExportProgram, FontAndTextFailuresSayWhy)
{
    ExpectRuns({
        {{}, {"none.ttf", "Font.cpp"}, 1, kLoadFailed + "\"none.ttf\": No such file or directory\n"},
        {{.files = {"f"}}, {"f", "Font.cpp"}, 1, kLoadFailed + "\"f" + kNotAFont, "", {"f"}},
        {{.dirs = {"d"}}, {"d", "Font.cpp"}, 1, kLoadFailed + "\"d\" is a directory\n", "", {"d"}},
        {{.fonts = {{"cut.ttf", ReadFile(kTestFont).substr(0, 100)}}}, {"cut.ttf", "Font.cpp"}, 1,
         kLoadFailed + "\"cut.ttf" + kNotAFont, "", {"cut.ttf"}},
        {{.fonts = {{"e.ttf", ""}}}, {"e.ttf", "Font.cpp"}, 1, kLoadFailed + "\"e.ttf" + kNotAFont, "", {"e.ttf"}},
        {{}, {VELTRANE_EXPECTED_DIR "/golden_font.png", "Font.cpp"}, 1,
         kLoadFailed + "\"" VELTRANE_EXPECTED_DIR "/golden_font.png" + kNotAFont},
        {{.files = {"f.ttf"}, .modes = {{"f.ttf", 0}}}, {"f.ttf", "Font.cpp"}, 1,
         kLoadFailed + "\"f.ttf\": Permission denied\n", "", {"f.ttf"}},
        {{}, {"--face", "1", kTestFont, "Font.cpp"}, 1,
         kLoadFailed + "\"" + kTestFont + "\" has no face 1: the file has 1 face, 0\n"},
        {{.fonts = {{"two.ttc", TwoFaceCollection()}}}, {"--face", "2", "two.ttc", "Font.cpp"}, 1,
         kLoadFailed + "\"two.ttc\" has no face 2: the file has 2 faces, 0 to 1\n", "", {"two.ttc"}},
        {{}, {"--height", "15", kTerminus, "Font.cpp"}, 1,
         "cannot set char size\n" + kNote + "the font has bitmaps at 12, 14, 16, 18, 20, 22, 24, 28, 32 px\n" + kNote +
         "give --height 12, --height 14, --height 16, --height 18, --height 20, --height 22, --height 24, --height 28 or "
         "--height 32\n"},
        {{}, {"--chars", "65", "--fallback", kTerminus + "@15", kTestFont, "Font.cpp"}, 1, "cannot set char size\n" +
         kNote + "the size cannot be set in \"" + kTerminus + "\"\n" + kNote +
         "the font has bitmaps at 12, 14, 16, 18, 20, 22, 24, 28, 32 px\n" + kNote +
         "give it one as FONT@PX, e.g. " + kTerminus + "@12\n"},
        {{}, {"--chars", "9, A-Z ,OxFF,126-32,1-2-3,65-, ,,0-4000000000,a\"\tb,65,300", "none.ttf", "Font.cpp"}, 1,
         "Invalid character codes !\n" + kNote + "\"A-Z\" in --chars is not a range of two numbers\n" + kNote +
         "\"OxFF\" in --chars is not a number\n" + kNote + "\"126-32\" in --chars runs backwards\n" + kNote +
         "\"1-2-3\" in --chars has more than one \"-\"\n" + kNote +
         "\"65-\" in --chars is a range without its last code\n" + kNote +
         "\"0-4000000000\" in --chars goes above 255\n" + kNote + "\"a\\\"\\x09b\" in --chars is not a number\n"},
        {{}, {"--chars", "66-75,200", kTestFont, "Font.cpp"}, 1, "No glyph for any of the characters !\n" + kNote +
         "\"" + kTestFont + "\" has no glyph for any of 66-75, 200\n"},
        {{}, {"--chars", "67", "--fallback", kIconsFont, kTestFont, "Font.cpp"}, 1, "No glyph for any of the characters !\n" +
         kNote + "\"" + kTestFont + "\" or \"" + kIconsFont + "\" have no glyph for any of 67 \"C\" (U+0043)\n"},
        // Glyphs from another font: each set's codes, bytes and glyphs.
        {{}, {"--chars", "65-66", "--glyphs", kIconsFont + ":0xE000-0xE001=>0x42", kTestFont, "Font.cpp"}, 1,
         "Character code 66 is given twice !\n" + kNote + "by --chars/--text and by --glyphs \"" + kIconsFont +
             ":0xE000-0xE001=>0x42\"\n"},
        {{}, {"--glyphs", "a.ttf:0xE000=>0x80", "--glyphs", "b.ttf:0x41,0xE001=>127", "none.ttf", "Font.cpp"}, 1,
         "Character code 128 is given twice !\n" + kNote +
             "by --glyphs \"a.ttf:0xE000=>0x80\" and by --glyphs \"b.ttf:0x41,0xE001=>127\"\n"},
        {{}, {"--glyphs", "a.ttf:0xE000-0xE001=>0xFF", "none.ttf", "Font.cpp"}, 1,
         "Character code 256 is above 255 and cannot be exported !\n" + kNote +
             "--glyphs \"a.ttf:0xE000-0xE001=>0xFF\" places 2 characters from byte 255 on\n"},
        {{}, {"--glyphs", "a.ttf:0xE000,0xE00G=>0x80", "none.ttf", "Font.cpp"}, 1,
         "Invalid character codes !\n" + kNote + "\"0xE00G\" in --glyphs is not a number\n"},
        // Typos that would place glyphs where no string reaches them, or twice.
        {{}, {"--glyphs", "a.ttf:0xE000-0xE001=> ", "none.ttf", "Font.cpp"}, 1, "Invalid character codes !\n" + kNote +
         "\"=> \" in --glyphs \"a.ttf:0xE000-0xE001=> \" has no byte after \"=>\", e.g. =>0x80\n"},
        {{}, {"--glyphs", "a.ttf:0xE000=>0x0", "none.ttf", "Font.cpp"}, 1, "Invalid character codes !\n" + kNote +
         "\"=>0x0\" in --glyphs \"a.ttf:0xE000=>0x0\" places a glyph under byte 0, which ends a C string; "
         "start from 1 or above\n"},
        {{}, {"--glyphs", "a.ttf:0", "none.ttf", "Font.cpp"}, 1, "Invalid character codes !\n" + kNote +
         "--glyphs \"a.ttf:0\" places U+0000 under byte 0, which ends a C string; give it a byte from 1 on with =>BYTE\n"},
        {{}, {"--glyphs", "a.ttf: ,=>0x80", "none.ttf", "Font.cpp"}, 1, "Invalid character codes !\n" + kNote +
         "--glyphs \"a.ttf: ,=>0x80\" names no characters before \"=>\" or after \":\"\n"},
        {{}, {"--glyphs", "a.ttf:0x41-0x43,0x42=>0x80", "none.ttf", "Font.cpp"}, 1, "Invalid character codes !\n" +
         kNote + "\"B\" (U+0042) is listed twice in --glyphs \"a.ttf:0x41-0x43,0x42=>0x80\"\n"},
        {{}, {"--glyphs", "a.ttf@12:0x2600=", "none.ttf", "Font.cpp"}, 1, "Invalid character codes !\n" + kNote +
         "\"0x2600=\" in --glyphs is not a number\n" + kNote + "quote the whole argument, e.g. --glyphs "
         "'a.ttf@12:0x2600=>0x80': unquoted, the shell takes \">\" as a redirection\n"},
        {{}, {"--chars", "48", "--glyphs", "a.ttf:0x41,0x20AC", "none.ttf", "Font.cpp"}, 1,
         "Character \"€\" (U+20AC) is not in ISO-8859-1 !\n" + kNote +
             "give --glyphs \"a.ttf:0x41,0x20AC\" a byte to start from, e.g. a.ttf:0x41,0x20AC=>0x80\n"},
        {{}, {"--chars", "65", "--glyphs", kIconsFont + ":0xE000,0x43=>0x80", kTestFont, "Font.cpp"}, 1,
         "No glyph for a character of --glyphs !\n" + kNote + "\"" + kIconsFont + "\" has no glyph for \"C\" (U+0043)\n"},
        {{}, {"--chars", "65", "--fallback", "none.ttf", kTestFont, "Font.cpp"}, 1,
         kLoadFailed + "\"none.ttf\": No such file or directory\n"},
        {{}, {"--text", "ab\n€", "none.ttf", "Font.cpp"}, 1, "Character \"€\" (U+20AC) is not in ISO-8859-1 !\n" +
         kNote + "give --codepage CP1252, CP1250, CP1251, CP1253, CP1254, CP1255, CP1256, CP1257, CP1258, "
                 "ISO-8859-7, ISO-8859-15 or ISO-8859-16\n" + kNote + kUnicodeHint},
        {{}, {"--text", "Привет", "none.ttf", "Font.cpp"}, 1, "Character \"П\" (U+041F) is not in ISO-8859-1 !\n" +
         kNote + "give --codepage CP1251, ISO-8859-5, KOI8-R, KOI8-U or CP866\n" + kNote + kUnicodeHint},
        {{}, {"--codepage", "koi8-u", "--text", "€", "none.ttf", "Font.cpp"}, 1,
         "Character \"€\" (U+20AC) is not in KOI8-U !\n"},
        {{}, {"--text", "q\u0306", "none.ttf", "Font.cpp"}, 1, "Character \"\u25CC\u0306\" (U+0306) is not in "
         "ISO-8859-1 !\n" + kNote + "no common 8-bit codepage holds every character of the text\n" + kNote +
             kUnicodeHint},
        {{}, {"--codepage", "CP1251", "--text", "a\u0085", "none.ttf", "Font.cpp"}, 1,
         "Character U+0085 is not in CP1251 !\n"},
    });
}

// Warnings that do not stop the export; --stats; help and version on standard output. Texts are read
// composed (и and a combining breve are CP1251's й), or as typed when only that fits (CP1258 holds â
// and the grave apart).
TEST(ExportProgram, WarningsAndStats)
{
    const std::string stats = "characters                            2\n"
                              "rotations                  0,90,180,270\n"
                              "pixel bytes per rotation            112\n"
                              "pixel bytes in all                  448\n"
                              "kerning pairs                         2\n"
                              "kerning table bytes                   8\n"
                              "Font.cpp bytes                    14684\n"
                              "Font.h bytes                        250\n";
    ExpectRuns({
        {{}, {"--chars", "65,86,84", kNotoSans, "Font.cpp"}, 0,
         kNote + "the font kerns only through its GPOS table; --kerning auto gives 4 pairs\n", "", kPair},
        {{}, {"--kerning", "Auto", "--stats", "--chars", "65,86,84", kNotoSans, "Font.cpp"}, 0, "",
         "kerning pairs                         4\n", kPair},
        {{}, {"--kerning", "legacy", "--chars", "65,86,84", kNotoSans, "Font.cpp"}, 0, "", "", kPair},
        {{}, {"--chars", "9, ,,0-2,65,66-70", kTestFont, "Font.cpp"}, 0, kNote + "no glyph for 0-2, 9, 66-70; " + kShape,
         "", kPair},
        {{}, {"--height", "8", "--chars", "65,176,191", kKoi8rFont, "Font.cpp"}, 0,
         kNote + "no glyph for 191 \"¿\" (U+00BF) (the font is encoded in KOI8-R; give --codepage KOI8-R); " + kShape,
         "", kPair},
        // Choices that change nothing: the default gamma with --mono, a bitmap font's rendering.
        {{}, {"--mono", "--gamma", "1", "--chars", "65", kTestFont, "Font.cpp"}, 0, "", "", kPair},
        {{}, {"--height", "12", "--chars", "65", "--gamma", "2", kTerminus, "Font.cpp"}, 0,
         kNote + "--gamma does not apply to the bitmap font \"" + kTerminus + "\", which keeps its pixels\n", "", kPair},
        {{}, {"--chars", "65", kTestFont, "_Font.cpp"}, 0, kNote + "the name gives the identifier font__Font_0, which C++ "
         "reserves as it holds \"__\"; give OUTPUT a name of letters, digits and single \"_\"\n", "",
         {"_Font.cpp", "_Font.h"}},
        {{}, {"--stats", "--chars", "65,86", kTestFont, "Font.cpp"}, 0, "", stats, kPair},
        // A fallback's glyphs are not missing; each font's count, the column right of the longest name.
        {{}, {"--stats", "--chars", "65-67", "--fallback", kIconsFont, kTestFont, "Font.cpp"}, 0,
         kNote + "no glyph in \"" + kTestFont + "\" or \"" + kIconsFont + "\" for 67 \"C\" (U+0043); " + kShape,
         "characters                                3\n"
         "  from veltrane-test.ttf                  2\n"
         "  from veltrane-test-icons.ttf            1\n",
         kPair},
        // A fallback drawn at a height of its own: its B 4 x 12 pixels at 24 px rather than 2 x 8.
        {{}, {"--stats", "--chars", "66", "--fallback", kIconsFont + "@24", kTestFont, "Font.cpp"}, 0, "",
         "pixel bytes per rotation                 48\n", kPair},
        {{}, {"--codepage", "CP1251", "--chars", "65", "--text", "и\u0306", "--proof", "p.png", "--proof-text",
              "и\u0306", kTestFont, "Font.cpp"}, 0, kNote + "no glyph for 233 \"й\" (U+0439); " + kShape, "",
         {"Font.cpp", "Font.h", "p.png"}},
        {{}, {"--codepage", "CP1258", "--chars", "65", "--text", "â\u0300", kTestFont, "Font.cpp"}, 0,
         kNote + "no glyph for 204 \"\u25CC\u0300\" (U+0300), 226 \"â\" (U+00E2); " + kShape, "", kPair},
        {{}, {"--codepage", "CP1251", "--chars", "65", "--text", "Пр", "--proof", "p.png", "--proof-text", "р\nП",
              kTestFont, "Font.cpp"}, 0, kNote + "no glyph for 207 \"П\" (U+041F), 240 \"р\" (U+0440); " + kShape, "",
         {"Font.cpp", "Font.h", "p.png"}},
        {{}, {"--help"}, 0, "", "\n  --face N  "}, // its value's name alone, without type, range or default
        {{}, {"--version"}, 0, "", "Veltrane Bitmap Font Generator v1.00\n"},
    });
}

// clang-format on

// SIGTERM while the export waits for a reader of its header, a pipe written in place: the
// temporary source goes with the program, the earlier source stays.
TEST(ExportProgram, SignalLeavesEarlierFiles)
{
    TempDir dir;
    std::ofstream(dir.Path() / "Font.cpp") << "kept";
    ASSERT_EQ(mkfifo((dir.Path() / "Font.h").c_str(), 0600), 0);
    const char* const killWhenTempExists = R"("$@" & pid=$!
for i in $(seq 200); do ls -a "${3%/*}" | grep -q '^\.Font\.cpp\.' && break; sleep 0.05; done
kill -TERM $pid; wait $pid; echo $?)";
    const ProgramResult run = RunProgram(
        {"sh", "-c", killWhenTempExists, "sh", VELTRANE_EXPORT_PROGRAM, kTestFont, (dir.Path() / "Font.cpp").string()});
    EXPECT_EQ(run.out, "143\n") << run.err;
    EXPECT_EQ(Tree(dir.Path()), (std::set<std::string>{"Font.cpp", "Font.h"}));
    EXPECT_EQ(ReadFile(dir.Path() / "Font.cpp"), "kept");
}

// The disk fills up in the middle of the source: an export of its own on a small tmpfs (in
// a mount namespace of its own, so nothing outlives the run) leaves the earlier pair whole.
TEST(ExportProgram, FullDiskLeavesEarlierFiles)
{
    TempDir probe, root;
    if (RunProgram({"unshare", "-m", "mount", "-t", "tmpfs", "tmpfs", probe.Path().string()}).status != 0)
        GTEST_SKIP() << "needs root and mount namespaces (unshare -m) for a small tmpfs";
    const char* const exportTwice = R"(set -e
mount -t tmpfs -o size=384k tmpfs "$1"
"$2" --chars 65 "$3" "$1/Font.cpp"
status=0
"$2" --chars 32-126,160-255 "$4" "$1/Font.cpp" || status=$?
cp -a "$1"/. "$5"/
exit $status)";
    const fs::path disk = root.Path() / "disk", keep = root.Path() / "keep";
    fs::create_directory(disk);
    fs::create_directory(keep);
    const ProgramResult run = RunProgram({"unshare", "-m", "sh", "-c", exportTwice, "sh", disk.string(),
                                          VELTRANE_EXPORT_PROGRAM, kTestFont, kDejaVuSans, keep.string()});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, kWriteFailed + "veltrane-fontgen-export: cannot write \"" + (disk / "Font.cpp").string() +
                           "\": No space left on device\n");
    ASSERT_EQ(Tree(keep), (std::set<std::string>{"Font.cpp", "Font.h"}));
    ASSERT_EQ(RunExporter({"--chars", "65", kTestFont, (root.Path() / "Font.cpp").string()}).status, 0);
    EXPECT_TRUE(ReadFile(keep / "Font.cpp") == ReadFile(root.Path() / "Font.cpp"));
}

// --kerning none writes exactly what the font gives without its kerning tables.
TEST(ExportProgram, KerningNoneIsAFontWithoutKerning)
{
    TempDir dir;
    FontBytes font(kTestFont);
    for (size_t record = 12; record < 12 + 16 * font.U16(4); record += 16)
        if (font.bytes.compare(record, 4, "kern") == 0 || font.bytes.compare(record, 4, "GPOS") == 0)
            font.bytes[record] = 'x'; // a table nobody reads
    const std::string plain = font.SaveAs(dir.Path() / "plain.ttf"), chars = "32,65,86,84,46,106,233,66";
    fs::create_directory(dir.Path() / "none");
    ASSERT_EQ(RunExporter({"--kerning", "none", "--chars", chars, kTestFont, dir.Prefix() + "none/Font.cpp"}).status,
              0);
    ASSERT_EQ(RunExporter({"--chars", chars, plain, dir.Prefix() + "Font.cpp"}).status, 0);
    EXPECT_TRUE(ReadFile(dir.Path() / "none/Font.cpp") == ReadFile(dir.Path() / "Font.cpp"));
}

// The manual page sets the help's examples on lines of their own from a copy, which must
// not drift from the help.
TEST(ExportProgram, ManualPageHasTheHelpsExamples)
{
    const std::string help = RunExporter({"--help"}).out;
    std::string fromHelp, fromPage;
    for (size_t at = help.find("\n  ", help.find("Examples:")); at != help.npos; at = help.find("\n  ", at + 1))
        fromHelp += std::string(TrimSpace(help.substr(at, help.find('\n', at + 1) - at))) + "\n";
    std::istringstream page(ReadFile(VELTRANE_SOURCE_DIR "/cli/veltrane-fontgen-export.h2m"));
    bool inExample = false;
    for (std::string line; std::getline(page, line);) {
        inExample = line == ".nf" || (inExample && line != ".fi");
        for (const auto& [escaped, plain] : {std::pair{"\\-", "-"}, {"\\e", "\\"}})
            for (size_t at; (at = line.find(escaped)) != line.npos;)
                line.replace(at, 2, plain);
        if (inExample && line != ".nf")
            fromPage += std::string(TrimSpace(line)) + "\n";
    }
    EXPECT_NE(fromHelp, "");
    EXPECT_EQ(fromPage, fromHelp);
}

TEST(ExportProgram, LinksNoWindowLibraries)
{
    const ProgramResult libraries = RunProgram({"ldd", VELTRANE_EXPORT_PROGRAM});
    ASSERT_EQ(libraries.status, 0) << libraries.err;
    for (const char* windowLibrary : {"libwx_", "libgtk", "libgdk", "libX11"})
        EXPECT_EQ(libraries.out.find(windowLibrary), std::string::npos) << libraries.out;
}

} // namespace
