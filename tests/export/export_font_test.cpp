// Whole exports with real faces. The failures of the output place are tested through the
// command-line exporter (tests/cli), which shows their message as well.

#include "export/export_font.h"
#include "raster/ft_exception.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>

namespace fs = std::filesystem;

namespace {

// The font at `fontPath`, or no face at all for a null one, at 16 px.
bool Export(const char* fontPath, const std::string& directory, std::string name, CharCodeList codes)
{
    FTFont font;
    if (fontPath != nullptr)
        font.LoadFace(fontPath);
    return ExportFont(&font, name, directory, 16, &codes);
}

std::string FreeTypeMessage(const std::function<void()>& run)
{
    try {
        run();
    } catch (const FTException& e) {
        return e.what();
    }
    return "no exception";
}

} // namespace

// The committed files are the reviewed output. `make regen-expected` runs this test with
// VELTRANE_REGEN_EXPECTED set, which rewrites them instead, after an intended change of the
// format or of the test font; review their diff.
TEST(ExportFontTest, GoldenExportMatchesCommittedFiles)
{
    const fs::path expectedDir = VELTRANE_EXPECTED_DIR;
    const bool regenerate = std::getenv("VELTRANE_REGEN_EXPECTED") != nullptr;
    TempDir dir;
    // Every glyph of the test font: a blank one, kerned pairs in both orders and a positive
    // kerning, ink left of the pen and below the baseline, an 8-bit code whose kerning the
    // char tables cannot reach, a code the font lacks, and a repeat.
    const std::string directory = regenerate ? expectedDir.string() + "/" : dir.Prefix();
    ASSERT_TRUE(Export(VELTRANE_TEST_FONT_DIR "/veltrane-test.ttf", directory, "golden_font",
                       {32, 65, 86, 84, 46, 106, 233, 66, 65}));
    if (regenerate)
        GTEST_SKIP() << "rewrote " << expectedDir;
    for (const char* file : {"golden_font.cpp", "golden_font.h"}) {
        const std::string expected = ReadFile(expectedDir / file);
        ASSERT_FALSE(expected.empty()) << file << " is missing; run make regen-expected";
        EXPECT_TRUE(ReadFile(dir.Path() / file) == expected) << file << " differs from the committed file";
    }
}

TEST(ExportFontTest, RepeatedCodesAreWrittenOnceAtTheirFirstPlace)
{
    TempDir once, repeated;
    ASSERT_TRUE(Export(kDejaVuSans, once.Prefix(), "f", {86, 65, 84}));
    ASSERT_TRUE(Export(kDejaVuSans, repeated.Prefix(), "f", {86, 65, 86, 84, 65, 65}));
    EXPECT_EQ(ReadFile(repeated.Path() / "f.cpp"), ReadFile(once.Path() / "f.cpp"));
}

TEST(ExportFontTest, NothingIsWrittenForACodeAbove255OrWithoutFace)
{
    TempDir dir;
    std::ofstream(dir.Path() / "Font.cpp") << "kept";
    EXPECT_FALSE(Export(kDejaVuSans, dir.Prefix(), "Font", {65, 256, 86}));
    EXPECT_EQ(FreeTypeMessage([&] { Export(nullptr, dir.Prefix(), "Font", {65}); }), "cannot set char size");
    EXPECT_EQ(ReadFile(dir.Path() / "Font.cpp"), "kept");
    EXPECT_FALSE(fs::exists(dir.Path() / "Font.h"));
}

TEST(ExportFontTest, GlyphFailureLeavesTheSectionsBeforeIt)
{
    TempDir dir;
    const std::string broken = FontWithBrokenGlyph(kDejaVuSans, dir.Path(), 66);
    ASSERT_TRUE(Export(kDejaVuSans, dir.Prefix(), "intact", {65, 67, 66, 68}));
    EXPECT_EQ(FreeTypeMessage([&] { Export(broken.c_str(), dir.Prefix(), "partial", {65, 67, 66, 68}); }),
              "cannot load glyph");
    // Apart from the include line, the partial source is the intact one cut right after
    // the last record of the character before the broken one.
    std::string partial = ReadFile(dir.Path() / "partial.cpp");
    std::string intact = ReadFile(dir.Path() / "intact.cpp");
    partial.erase(0, partial.find('\n'));
    intact.erase(0, intact.find('\n'));
    const std::string lastRecordEnd = ".pixels = char_67_pixels_270\n};\n\n\n";
    ASSERT_GE(partial.size(), lastRecordEnd.size());
    EXPECT_EQ(partial.substr(partial.size() - lastRecordEnd.size()), lastRecordEnd);
    EXPECT_EQ(intact.substr(0, partial.size()), partial);
    EXPECT_FALSE(fs::exists(dir.Path() / "partial.h"));
}
