// veltrane-fontgen-export run as a build script runs it: the files it writes, its messages
// and exit statuses, with the faults a user's machine can throw at it.

#include "cli/program_run.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace fs = std::filesystem;

namespace {

const std::string kTestFont = VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf";
const std::string kNotoSans = "/usr/share/fonts/truetype/noto/NotoSans-Regular.ttf";
const std::string kTerminus = "/usr/share/fonts/opentype/terminus/terminus-normal.otb";
const std::string kKoi8rFont = "/usr/share/fonts/X11/misc/5x8-KOI8-R.pcf.gz";
const std::string kWriteFailed = "Error writing file !\n";

// Arguments as rows write them: FONT is the test font, "@name" a path in the run's directory.
std::vector<std::string> Arguments(const std::vector<std::string>& args, const fs::path& dir)
{
    std::vector<std::string> resolved;
    for (const std::string& arg : args)
        resolved.push_back(arg == "FONT" ? kTestFont : arg.starts_with("@") ? (dir / arg.substr(1)).string() : arg);
    return resolved;
}

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
        // the char tables cannot reach, a code the font lacks, and a repeat; its proof.
        {"golden_font",
         {"--chars", "32,65,86,84,46,106,233,66,65", "--proof", "@golden_font.png", "--proof-text", "AVAT. Tj\nVA.é B", "FONT"}},
        // The GPOS pairs, eacute's too; auto takes them, or the legacy table from a font without GPOS.
        {"gpos_font", {"--kerning", "gpos", "--chars", "32,65,86,84,46,106,233,66,65", "FONT"}},
        {"gpos_font", {"--kerning", "auto", "--chars", "32,65,86,84,46,106,233,66,65", "FONT"}},
        {"golden_font", {"--kerning", "auto", "--chars", "32,65,86,84,46,106,233,66,65", VELTRANE_TEST_FONT_DIR "/veltrane-test-legacy-kern.ttf"}},
        // Under a codepage the legacy table is asked for the characters the bytes stand for: eacute V kerns.
        {"latin1_font", {"--codepage", "ISO-8859-1", "--chars", "86,233,65", "FONT"}},
        // Cyrillic from a sample text under its CP1251 bytes, GPOS kerning; the proof shows each code once, 16 to a line.
        {"cp1251_font", {"--height", "12", "--codepage", "cp1251", "--chars", "46,44", "--text", "Привет, мир! Съешь ещё булок",
                         "--kerning", "gpos", "--proof", "@cp1251_font.png", kNotoSans}},
        // A font in its own KOI8-R encoding: under either codepage its glyphs, each under the codepage's byte.
        {"koi8r_font", {"--height", "8", "--codepage", "KOI8-R", "--text", "Привет", "--proof", "@koi8r_font.png", kKoi8rFont}},
        {"koi8r_cp1251_font", {"--height", "8", "--codepage", "CP1251", "--text", "Привет", "--proof", "@koi8r_cp1251_font.png", kKoi8rFont}},
    };
    const fs::path expected = VELTRANE_EXPECTED_DIR;
    const bool regenerate = std::getenv("VELTRANE_REGEN_EXPECTED") != nullptr;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TempDir dir;
        const fs::path written = regenerate ? expected : dir.Path();
        std::vector<std::string> args = Arguments(row.args, written);
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
            EXPECT_TRUE(regenerate || ReadFile(dir.Path() / file) == golden) << file << " differs from the committed file";
        }
    }
    EXPECT_EQ(ReadFile(expected / "koi8r_font.png"), ReadFile(expected / "koi8r_cp1251_font.png")) << "the same glyphs";
}

TEST(ExportProgram, Faults)
{
    const std::string range = "Font size must be in between 6 and 256 !\n", load = "cannot load font file\n",
                      proofFailed = "Error writing the proof image !\n";
    const std::string kNote = "veltrane-fontgen-export: ", kShape = "they are exported as the font's missing-glyph shape\n",
                      kRunHelp = "Run 'veltrane-fontgen-export --help' for the options.\n";
    const std::string notFont = "\" is not a font file FreeType can read\n", gone = "cannot write in \"@gone/\": No such file or directory\n",
                      isDir = ": Is a directory\n", full = ": No space left on device\n";
    const std::string kStatsTable = "characters                            2\n"
                                    "pixel bytes per rotation            112\n"
                                    "pixel bytes in all                  448\n"
                                    "kerning pairs                         2\n"
                                    "kerning table bytes                   8\n"
                                    "Font.cpp bytes                    14684\n"
                                    "Font.h bytes                        250\n";
    const struct {
        std::vector<std::string> made; // before the run: "name/" a directory, "name@" a link to /dev/full,
                                       // "name>to" a link to "to", "name=N" the test font's first N bytes,
                                       // "name*" a collection of two faces, "...%MODE" then chmod MODE,
                                       // "!C" broken.ttf, the test font whose glyph for C cannot load,
                                       // "+" the files of a run with the same arguments an hour ago,
                                       // "name" a file holding "kept"; a failure leaves every file as made
        std::vector<std::string> args;
        int status;
        std::string err;           // all of standard error ("@" the run's directory); for status 2 a part of it
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
        {{}, {"--text", "ab\n€", "@none.ttf", "@Font.cpp"}, 1, "Character \"€\" (U+20AC) is not in ISO-8859-1 !\n" + kNote +
         "give --codepage CP1252, CP1250, CP1251, CP1253, CP1254, CP1255, CP1256, CP1257, CP1258, ISO-8859-7, ISO-8859-15 or ISO-8859-16\n"},
        {{}, {"--codepage", "koi8-u", "--text", "€", "@none.ttf", "@Font.cpp"}, 1,
         "Character \"€\" (U+20AC) is not in KOI8-U !\n"},
        {{}, {"--chars", "65", "--proof", "@p.png", "--proof-text", "AB", "@none.ttf", "@Font.cpp"}, 1,
         "Character \"B\" (U+0042) is not among the exported characters !\n"},
        {{}, {"--proof", "@p.png", "--proof-text", "\xff", "@none.ttf", "@Font.cpp"}, 1, "The proof text is not valid UTF-8 !\n"},
        {{}, {"@none.ttf", "@Font.cpp"}, 1, load + kNote + "\"@none.ttf\": No such file or directory\n"},
        {{"f"}, {"@f", "@Font.cpp"}, 1, load + kNote + "\"@f" + notFont, "", {"f"}},
        {{"d/"}, {"@d", "@Font.cpp"}, 1, load + kNote + "\"@d\" is a directory\n", "", {"d"}},
        {{"cut.ttf=100"}, {"@cut.ttf", "@Font.cpp"}, 1, load + kNote + "\"@cut.ttf" + notFont, "", {"cut.ttf"}},
        {{}, {"--face", "1", "FONT", "@Font.cpp"}, 1, load + kNote + "\"" + kTestFont + "\" has no face 1: the file has 1 face, 0\n"},
        {{}, {"--height", "15", kTerminus, "@Font.cpp"}, 1,
         "cannot set char size\n" + kNote + "the font has bitmaps at 12, 14, 16, 18, 20, 22, 24, 28, 32 px\n"},
        {{}, {"--text", "\t\r\n", "@none.ttf", "@Font.cpp"}, 1, "No characters to export !\n"},
        {{}, {"@none.ttf", "@ds-font.cpp"}, 1, "The name ds_font would replace the firmware's ds_font.h !\n" + kNote +
         "the generated files include <ds_font.h>; give OUTPUT another name, e.g. out/MyFont.cpp\n"},
        // A failure leaves the earlier pair as it was, and no temporary file.
        {{"Font.cpp", "Font.h", "!233"}, {"--codepage", "CP437", "--chars", "233,130", "@broken.ttf", "@Font.cpp"}, 1,
         "cannot load glyph\n" + kNote + "while rendering code 130 (U+00E9) from @broken.ttf\n" + kNote + "no glyph for 233; " + kShape,
         "", {"Font.cpp", "Font.h", "broken.ttf"}},
        // Places that cannot take the files.
        {{}, {"--chars", "65", "FONT", "@gone/Font.cpp"}, 1, kWriteFailed + kNote + gone},
        {{"f"}, {"--chars", "65", "FONT", "@f/Font.cpp"}, 1, kWriteFailed + kNote + "cannot write in \"@f/\": Not a directory\n", "", {"f"}},
        {{"Font.cpp/"}, {"--chars", "65", "FONT", "@Font.cpp"}, 1, kWriteFailed + kNote + "cannot write \"@Font.cpp\"" + isDir, "", {"Font.cpp"}},
        {{"Font.h/"}, {"--chars", "65", "FONT", "@Font.cpp"}, 1, kWriteFailed + kNote + "cannot write \"@Font.h\"" + isDir, "", {"Font.h"}},
        {{"Font.cpp@"}, {"--chars", "65", "FONT", "@Font.cpp"}, 1, kWriteFailed + kNote + "cannot write \"@Font.cpp\"" + full, "", {"Font.cpp"}},
        {{"Font.cpp", "Font.h@"}, {"--chars", "65", "FONT", "@Font.cpp"}, 1, kWriteFailed + kNote + "cannot write \"@Font.h\"" + full, "",
         {"Font.cpp", "Font.h"}},
        // A proof that cannot be written fails the export as a whole.
        {{"Font.cpp", "p.png@"}, {"--chars", "65", "--proof", "@p.png", "FONT", "@Font.cpp"}, 1,
         proofFailed + kNote + "cannot write \"@p.png\"" + full, "", {"Font.cpp", "p.png"}},
        {{}, {"--chars", "65", "--proof", "@gone/p.png", "FONT", "@Font.cpp"}, 1, proofFailed + kNote + gone},
        {{"Font.h"}, {"--proof", "@./Font.h", "FONT", "@Font.cpp"}, 1, "The proof image would replace an exported file !\n", "", {"Font.h"}},
        {{}, {"--height", "256", "--chars", "65", "--proof", "@p.png", "--proof-text", std::string(40, '\n'), "FONT", "@Font.cpp"},
         1, "The proof image would be 25776 x 11992 pixels, too large (at most 1000000 a side and 268435456 in all) !\n"},
        // Usage errors: the message, then where the options are told (see the shape below).
        {{}, {}, 2, "FONT is required\n"},
        {{}, {"FONT", "@Font.cpp", "extra"}, 2, "not expected: extra\n"},
        {{}, {"--bogus", "FONT", "@Font.cpp"}, 2, kNote + "unknown option --bogus\n"},
        {{}, {"--hieght", "12", "FONT", "@X.cpp"}, 2, kNote + "unknown option --hieght; did you mean --height?\n" + kNote + kRunHelp},
        {{}, {"--height"}, 2, kNote + "--height needs a value\n"},
        {{}, {"FONT", "@"}, 2, "names a directory"},
        {{}, {"--codepage", "UTF-8", "FONT", "@Font.cpp"}, 2, "codepage \"UTF-8\" is not an 8-bit encoding"},
        {{}, {"--codepage", "no-such", "FONT", "@Font.cpp"}, 2, "unknown codepage \"no-such\""},
        {{}, {"--face", "-1", "FONT", "@Font.cpp"}, 2, "--face"},
        {{}, {"--proof-text", "A", "FONT", "@Font.cpp"}, 2, "--proof-text requires --proof"},
        {{}, {"--kerning", "gsub", "FONT", "@Font.cpp"}, 2, "--kerning: \"gsub\" is not legacy, gpos, auto or none"},
        {{}, {"--mono", "--hinting", "Light", "FONT", "@Font.cpp"}, 2, "--hinting: light fits outlines for grey pixels and cannot go with --mono"},
        {{}, {"--gamma", "1", "--mono", "FONT", "@Font.cpp"}, 2, "--gamma: a --mono render has no grey pixels to correct"},
        {{}, {"--gamma", "4.5", "FONT", "@Font.cpp"}, 2, "--gamma: \"4.5\" is not a number from 0.25 to 4"},
        // Why a failure happened: the font file, the place to write, the --chars pieces, the glyphs; kerning left in GPOS.
        {{"e.ttf=0"}, {"@e.ttf", "@Font.cpp"}, 1, load + kNote + "\"@e.ttf" + notFont, "", {"e.ttf"}},
        {{}, {VELTRANE_EXPECTED_DIR "/golden_font.png", "@Font.cpp"}, 1, load + kNote + "\"" VELTRANE_EXPECTED_DIR "/golden_font.png" + notFont},
        {{"f.ttf%0"}, {"@f.ttf", "@Font.cpp"}, 1, load + kNote + "\"@f.ttf\": Permission denied\n", "", {"f.ttf"}},
        {{"two.ttc*"}, {"--face", "2", "@two.ttc", "@Font.cpp"}, 1,
         load + kNote + "\"@two.ttc\" has no face 2: the file has 2 faces, 0 to 1\n", "", {"two.ttc"}},
        {{"ro/%555"}, {"--chars", "65", "FONT", "@ro/Font.cpp"}, 1, kWriteFailed + kNote + "cannot write in \"@ro/\": Permission denied\n", "", {"ro"}},
        {{}, {"--chars", "9, A-Z ,OxFF,126-32,1-2-3,65-, ,,0-4000000000,a\"\tb,65,300", "@none.ttf", "@Font.cpp"}, 1,
         "Invalid character codes !\n" + kNote + "\"A-Z\" in --chars is not a range of two numbers\n" + kNote +
         "\"OxFF\" in --chars is not a number\n" + kNote + "\"126-32\" in --chars runs backwards\n" + kNote +
         "\"1-2-3\" in --chars has more than one \"-\"\n" + kNote + "\"65-\" in --chars is a range without its last code\n" +
         kNote + "\"0-4000000000\" in --chars goes above 255\n" + kNote + "\"a\\\"\\x09b\" in --chars is not a number\n"},
        {{}, {"--chars", "66-70,200", "FONT", "@Font.cpp"}, 1,
         "No glyph for any of the characters !\n" + kNote + "\"" + kTestFont + "\" has no glyph for any of 66-70, 200\n"},
        {{}, {"--chars", "65,86,84", kNotoSans, "@Font.cpp"}, 0,
         kNote + "the font kerns only through its GPOS table; --kerning auto gives 4 pairs\n", "", {"Font.cpp", "Font.h"}},
        {{}, {"--kerning", "Auto", "--stats", "--chars", "65,86,84", kNotoSans, "@Font.cpp"}, 0, "", "kerning pairs                         4\n",
         {"Font.cpp", "Font.h"}},
        {{}, {"--kerning", "legacy", "--chars", "65,86,84", kNotoSans, "@Font.cpp"}, 0, "", "", {"Font.cpp", "Font.h"}},
        // Texts are read composed (и and a combining breve are CP1251's й), or as typed when only
        // that fits (CP1258 holds â and the grave apart); a text Latin-1 cannot hold names the
        // codepages that would; marks and controls are named printably.
        {{}, {"--codepage", "CP1251", "--chars", "65", "--text", "и\u0306", "--proof", "@p.png", "--proof-text", "и\u0306", "FONT", "@Font.cpp"},
         0, kNote + "no glyph for 233; " + kShape, "", {"Font.cpp", "Font.h", "p.png"}},
        {{}, {"--codepage", "CP1258", "--chars", "65", "--text", "â\u0300", "FONT", "@Font.cpp"}, 0, kNote + "no glyph for 204, 226; " + kShape,
         "", {"Font.cpp", "Font.h"}},
        {{}, {"--text", "Привет", "@none.ttf", "@Font.cpp"}, 1,
         "Character \"П\" (U+041F) is not in ISO-8859-1 !\n" + kNote + "give --codepage CP1251, ISO-8859-5, KOI8-R, KOI8-U or CP866\n"},
        {{}, {"--text", "q\u0306", "@none.ttf", "@Font.cpp"}, 1,
         "Character \"\u25CC\u0306\" (U+0306) is not in ISO-8859-1 !\n" + kNote + "no common 8-bit codepage holds every character of the text\n"},
        {{}, {"--codepage", "CP1251", "--text", "a\u0085", "@none.ttf", "@Font.cpp"}, 1, "Character U+0085 is not in CP1251 !\n"},
        // Successes: the files named as the save dialog would; help and version on standard output.
        {{"sub/"}, {"--chars", "65", "FONT", "@sub/My Font-2.cpp"}, 0, "", "", {"sub", "sub/My_Font_2.cpp", "sub/My_Font_2.h"}},
        {{}, {"--chars", "65", "FONT", "@Font.CPP"}, 0, "", "", {"Font.cpp", "Font.h"}},
        {{}, {"--codepage", "CP1251", "--chars", "65", "--text", "Пр", "--proof", "@p.png", "--proof-text", "р\nП", "FONT", "@Font.cpp"},
         0, kNote + "no glyph for 207, 240; " + kShape, "", {"Font.cpp", "Font.h", "p.png"}},
        {{"Font.cpp", "Font.h"}, {"--chars", "65", "FONT", "@Font.cpp"}, 0, "", "", {"Font.cpp", "Font.h"}},
        {{"+"}, {"--chars", "65", "FONT", "@Font.cpp"}, 0, "", "", {"Font.cpp", "Font.h"}}, // untouched
        {{"real.cpp", "Font.cpp>real.cpp"}, {"--chars", "65", "FONT", "@Font.cpp"}, 0, "", "", {"Font.cpp", "Font.h", "real.cpp"}},
        // Warnings; the table of --stats.
        {{}, {"--chars", "9, ,,0-2,65", "FONT", "@Font.cpp"}, 0, kNote + "no glyph for 0-2, 9; " + kShape, "", {"Font.cpp", "Font.h"}},
        {{}, {"--height", "8", "--chars", "65,176,191", kKoi8rFont, "@Font.cpp"}, 0,
         kNote + "no glyph for 191 (the font is encoded in KOI8-R); " + kShape, "", {"Font.cpp", "Font.h"}},
        {{}, {"--stats", "--chars", "65,86", "FONT", "@Font.cpp"}, 0, "", kStatsTable, {"Font.cpp", "Font.h"}},
        {{}, {"--help"}, 0, "", "\n  --face N  "}, // its value's name alone, without type, range or default
        {{}, {"--version"}, 0, "", "Veltrane Bitmap Font Generator v1.00\n"},
    };
    const std::string font = ReadFile(kTestFont);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.args));
        TempDir dir;
        for (std::string made : row.made) {
            const size_t percent = made.find('%');
            const std::string mode = percent == made.npos ? "" : made.substr(percent + 1);
            made = made.substr(0, percent);
            const fs::path path = dir.Path() / made.substr(0, made.find_first_of("/@=>*"));
            if (made.ends_with("/"))
                fs::create_directory(path);
            else if (made.ends_with("@"))
                fs::create_symlink("/dev/full", path);
            else if (made.find('>') != made.npos)
                fs::create_symlink(made.substr(made.find('>') + 1), path);
            else if (made.starts_with("!"))
                FontWithBrokenGlyph(kTestFont, dir.Path(), std::stoul(made.substr(1)));
            else if (made == "+")
                ASSERT_EQ(RunExporter(Arguments(row.args, dir.Path())).status, 0);
            else if (made.ends_with("*"))
                std::ofstream(path) << TwoFaceCollection();
            else
                std::ofstream(path) << (made.find('=') != made.npos ? font.substr(0, std::stoul(made.substr(made.find('=') + 1))) : "kept");
            if (!mode.empty())
                fs::permissions(path, fs::perms(std::stoul(mode, nullptr, 8)));
        }
        for (const auto& [name, file] : Snapshot(dir.Path()))
            fs::last_write_time(dir.Path() / name, file.second - std::chrono::hours(1));
        const auto before = Snapshot(dir.Path());
        const ProgramResult run = RunAsUser(Arguments(row.args, dir.Path()));
        EXPECT_EQ(run.status, row.status);
        std::string err = row.err;
        for (size_t at = err.find('@'); at != err.npos; at = err.find('@', at + 1))
            err.replace(at, 1, dir.Path().string() + "/");
        if (row.status == 2) {
            EXPECT_NE(run.err.find(err), std::string::npos) << run.err;
            // A few lines, each prefixed, the last pointing to --help.
            std::istringstream lines(run.err);
            int count = 0;
            for (std::string line; std::getline(lines, line); ++count)
                EXPECT_TRUE(line.starts_with(kNote)) << run.err;
            EXPECT_LE(count, 3);
            EXPECT_TRUE(run.err.ends_with(kNote + kRunHelp)) << run.err;
        } else {
            EXPECT_EQ(run.err, err);
        }
        if (row.out.empty()) {
            EXPECT_EQ(run.out, "");
        } else {
            EXPECT_NE(run.out.find(row.out), std::string::npos) << run.out;
        }
        EXPECT_EQ(Tree(dir.Path()), row.left);
        if (row.status != 0 || row.made == std::vector<std::string>{"+"}) {
            EXPECT_TRUE(Snapshot(dir.Path()) == before) << "files made before the run changed";
        }
        // A success leaves whole files, wherever their links lead.
        for (const std::string& name : row.status == 0 ? row.left : std::set<std::string>{}) {
            if (fs::is_regular_file(dir.Path() / name) && (name.ends_with(".cpp") || name.ends_with(".h"))) {
                EXPECT_TRUE(ReadFile(dir.Path() / name).ends_with(name.ends_with(".h") ? "\n#endif\n" : "}\n};\n")) << name;
            }
        }
    }
}

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
    const ProgramResult run = RunProgram({"sh", "-c", killWhenTempExists, "sh", VELTRANE_EXPORT_PROGRAM, kTestFont,
                                          (dir.Path() / "Font.cpp").string()});
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
    EXPECT_EQ(run.err, kWriteFailed + "veltrane-fontgen-export: cannot write \"" + (disk / "Font.cpp").string() + "\": No space left on device\n");
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
    ASSERT_EQ(RunExporter({"--kerning", "none", "--chars", chars, kTestFont, dir.Prefix() + "none/Font.cpp"}).status, 0);
    ASSERT_EQ(RunExporter({"--chars", chars, plain, dir.Prefix() + "Font.cpp"}).status, 0);
    EXPECT_TRUE(ReadFile(dir.Path() / "none/Font.cpp") == ReadFile(dir.Path() / "Font.cpp"));
}

TEST(ExportProgram, LinksNoWindowLibraries)
{
    const ProgramResult libraries = RunProgram({"ldd", VELTRANE_EXPORT_PROGRAM});
    ASSERT_EQ(libraries.status, 0) << libraries.err;
    for (const char* windowLibrary : {"libwx_", "libgtk", "libgdk", "libX11"})
        EXPECT_EQ(libraries.out.find(windowLibrary), std::string::npos) << libraries.out;
}

} // namespace
