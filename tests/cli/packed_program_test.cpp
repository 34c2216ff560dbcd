// --format packed from the command line: its usage errors, files that compile wherever
// firmware is built, its proof and its --stats.

#include "cli/program_run.h"
#include "export/packed/packed_font.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

const std::string kPrefix = "veltrane-fontgen-export: ";

// Runs the exporter in `dir`, its OUTPUT and --proof paths relative to it.
ProgramResult ExportIn(const TempDir& dir, std::vector<std::string> args)
{
    for (std::string& arg : args)
        if (arg.ends_with(".c") || arg.ends_with(".cpp") || arg.ends_with(".png"))
            arg = dir.Prefix() + arg;
    return RunExporter(std::move(args));
}

TEST(PackedProgram, UsageErrorsWriteNothing)
{
    const struct
    {
        std::vector<std::string> args;
        std::string message;
    } rows[] = {
        {{"--format", "packed", "--bpp", "3"}, "--bpp: \"3\" is not 1, 2, 4 or 8"},
        {{"--format", "packed", "--bpp", ""}, "--bpp: \"\" is not 1, 2, 4 or 8"},
        {{"--bpp", "2"}, "--bpp: only packed fonts take it; add --format packed"},
        {{"--format", "ds", "--compress", "none"}, "--compress: only packed fonts take it; add --format packed"},
        {{"--format", "packed", "--compress", "zip"}, "--compress: \"zip\" is not auto, runs or none"},
        {{"--format", "packed", "--rotations", "90"}, "--rotations: a packed font stores each glyph once"},
        {{"--format", "bdf"}, "--format: \"bdf\" is not ds or packed"},
        {{"--format", "packed", "--mono", "--bpp", "4"}, "--bpp: --mono renders 1 bit a pixel"},
    };
    for (const auto& row : rows) {
        TempDir dir;
        std::vector<std::string> args = row.args;
        args.insert(args.end(), {kTestFont, "Font.c"});
        const ProgramResult result = ExportIn(dir, args);
        EXPECT_EQ(result.status, 2) << testing::PrintToString(row.args);
        EXPECT_TRUE(result.err.starts_with(kPrefix + row.message)) << result.err;
        EXPECT_TRUE(fs::is_empty(dir.Path())) << testing::PrintToString(row.args);
    }
}

// The pair compiles as C99 and as C++ either way char is signed, for a Cortex-M0+ too,
// with every warning an error; each run of --bpp and --compress, kerning in pairs or in
// classes.
TEST(PackedProgram, PairCompilesAsCAndCppAndForCortexM)
{
    const std::string warnings = "-Wall -Wextra -Werror -pedantic";
    const std::vector<std::string> compilers = {
        std::string(VELTRANE_C_COMPILER) + " -std=c99 " + warnings,
        std::string(VELTRANE_CXX_COMPILER) + " -x c++ -std=c++20 -fsigned-char " + warnings,
        std::string(VELTRANE_CXX_COMPILER) + " -x c++ -std=c++20 -funsigned-char " + warnings,
        std::string(VELTRANE_ARM_C_COMPILER) + " -std=c99 -Os -mcpu=cortex-m0plus -mthumb " + warnings,
    };
    const std::vector<std::vector<std::string>> exports = {
        {"--bpp", "1", "--chars", "32-126", kDejaVuSans},
        {"--bpp", "8", "--compress", "none", "--codepage", "CP1251", "--chars", "32-126,0xC0-0xFF", kNotoSans},
        {"--mono", "--chars", "65-90", kLegacyKernTestFont},
        // Unicode: Chinese kerned through GPOS; Cyrillic with Chinese from a collection's face
        {"--face", "2", "--chars", "32-126,0x3000-0x3003,0x4E00-0x4E40", "--kerning", "auto", kNotoSansCjk},
        {"--text", "Привет, 世界", "--fallback", kNotoSansCjk + "#3", kNotoSans},
    };
    // --stats counts the font record as the runtime's vt_font_t takes it on a 32-bit target.
    const std::string recordSize =
        std::string(VELTRANE_ARM_C_COMPILER) + " -std=c99 -mcpu=cortex-m0plus -mthumb -I" +
        VELTRANE_SOURCE_DIR "/runtime -fsyntax-only -x c - <<'EOF'\n" +
        "#include <veltrane_font.h>\n_Static_assert(sizeof(vt_font_t) == " + std::to_string(kPackedFontRecordBytes) +
        ", \"\");\nEOF";
    EXPECT_EQ(RunProgram({"/bin/sh", "-c", recordSize}).status, 0) << recordSize;
    for (const std::vector<std::string>& options : exports) {
        TempDir dir;
        std::vector<std::string> args = {"--format", "packed"};
        args.insert(args.end(), options.begin(), options.end());
        args.push_back("My Font.c");
        ASSERT_EQ(ExportIn(dir, args).status, 0) << testing::PrintToString(args);
        ASSERT_TRUE(fs::exists(dir.Path() / "My_Font.c") && fs::exists(dir.Path() / "My_Font.h"));
        EXPECT_NE(ReadFile(dir.Path() / "My_Font.h").find("extern const vt_font_t font_My_Font;"), std::string::npos);
        for (const std::string& compiler : compilers) {
            const std::string command = compiler + " -I" + dir.Prefix() + " -I" VELTRANE_SOURCE_DIR "/runtime -c " +
                                        dir.Prefix() + "My_Font.c -o " + dir.Prefix() + "font.o";
            EXPECT_EQ(RunProgram({"/bin/sh", "-c", command + " 2>&1"}).status, 0) << command;
        }
    }
}

// At 8 bits a pixel the packed font keeps every value: its proof is the ds export's. At
// 1 bit it is not; --stats then tells the flash bytes part by part.
TEST(PackedProgram, ProofShowsTheStoredPixelsAndStatsTheFlash)
{
    TempDir dir;
    const std::vector<std::string> common = {"--chars", "65-90", "--proof-text", "AVATAR"};
    auto run = [&](std::vector<std::string> args) {
        args.insert(args.begin(), common.begin(), common.end());
        args.insert(args.end(), {kDejaVuSans, "Font.cpp"});
        const ProgramResult result = ExportIn(dir, args);
        EXPECT_EQ(result.status, 0) << result.err;
        return result;
    };
    run({"--proof", "ds.png"});
    run({"--format", "packed", "--bpp", "8", "--proof", "eight.png"});
    const ProgramResult one = run({"--format", "packed", "--bpp", "1", "--stats", "--proof", "one.png"});
    EXPECT_EQ(ReadFile(dir.Path() / "eight.png"), ReadFile(dir.Path() / "ds.png"));
    EXPECT_NE(ReadFile(dir.Path() / "one.png"), ReadFile(dir.Path() / "ds.png"));
    // A .cpp OUTPUT of a packed font names a .c file.
    EXPECT_TRUE(fs::exists(dir.Path() / "Font.c"));
    for (const std::string row :
         {"bits a pixel                          1\n", "flash bytes, font record             96\n",
          "flash bytes, code lookup              2\n", "Font.c bytes"})
        EXPECT_NE(one.out.find(row), std::string::npos) << one.out;
}

} // namespace
