#include "raster/preview_image.h"

#include "raster/ft_font.h"
#include "test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// A picture's grey levels; every pixel must be a grey (red = green = blue).
std::string GreyOf(const PreviewImage& image)
{
    std::string grey;
    for (size_t i = 0; i + 2 < image.rgb.size(); i += 3) {
        EXPECT_TRUE(image.rgb[i] == image.rgb[i + 1] && image.rgb[i] == image.rgb[i + 2]) << "pixel " << i / 3;
        grey.push_back(static_cast<char>(image.rgb[i]));
    }
    return grey;
}

std::string Composed(const std::string* fontPath, const CharCodeList& codes, uint32_t width, uint32_t height)
{
    FTFont font;
    if (fontPath)
        font.LoadFace(fontPath->c_str());
    return GreyOf(PreviewComposer().Compose(font, codes, width, height));
}

uint8_t Darkest(const std::string& grey)
{
    return static_cast<uint8_t>(
        *std::min_element(grey.begin(), grey.end(), [](char a, char b) { return uint8_t(a) < uint8_t(b); }));
}

// The committed pictures (binary PGM) are the reviewed output; `make regen-expected` rewrites them.
TEST(PreviewComposer, MatchesCommittedPictures)
{
    const struct
    {
        const char* name;
        const std::string& font;
        CharCodeList codes;
        uint32_t width, height;
        uint8_t darkest; // full coverage laid over white once: 175; twice: 120
    } rows[] = {
        // 19 cells of 42 px a row, baselines 42 px apart.
        {"dejavu_default_list", kDejaVuSans, CodeRange(32, 126), 800, 220, 175},
        // Test-font cells are 39 px: five fit in 195 px, four in 194; 'j' reaches into the cell
        // before it, 'B' shows glyph 0 and the space cell stays white.
        {"five_cells", kTestFont, {'A', 'j', ' ', 'B', 'A', 'A'}, 195, 90, 175},
        {"four_cells", kTestFont, {'A', 'j', ' ', 'B', 'A', 'A'}, 194, 90, 175},
        // Narrower than a cell: the first glyph opens the second row, the others follow it.
        {"narrow", kTestFont, {'A', 'A', 'A'}, 38, 90, 175},
        // U+2031 runs under the full block of the next cell.
        {"overlap", kDejaVuSans, {0x2031, 0x2588}, 100, 50, 120},
        // U+0488 starts 37 px left of its pen, reaching back from right of the area.
        {"reach_back", kDejaVuSans, {' ', 0x488}, 20, 60, 175},
    };
    const bool regenerate = std::getenv("VELTRANE_REGEN_EXPECTED") != nullptr;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string grey = Composed(&row.font, row.codes, row.width, row.height);
        const std::string pgm = "P5 " + std::to_string(row.width) + " " + std::to_string(row.height) + " 255\n" + grey;
        const fs::path path = fs::path(VELTRANE_EXPECTED_DIR) / (std::string(row.name) + ".pgm");
        if (regenerate)
            std::ofstream(path, std::ios::binary) << pgm;
        EXPECT_TRUE(ReadFile(path) == pgm) << path << " differs; run make regen-expected and review";
        EXPECT_EQ(Darkest(grey), row.darkest);
    }
}

TEST(PreviewComposer, FacesThatCannotDrawLeaveTheAreaWhite)
{
    const std::string white(300 * 200, '\xFF');
    EXPECT_TRUE(Composed(nullptr, CodeRange(32, 126), 300, 200) == white) << "no face";
    EXPECT_TRUE(Composed(&kTerminus, CodeRange(32, 126), 300, 200) == white) << "no strike at 36 px";
    EXPECT_TRUE(Composed(&kTestFont, {}, 300, 200) == white) << "empty list";
    // A glyph that cannot be loaded leaves its cell empty.
    TempDir dir;
    const std::string broken = FontWithBrokenGlyph(kTestFont, dir.Path(), 'A');
    EXPECT_TRUE(Composed(&broken, {'T', 'A', 'V'}, 300, 100) == Composed(&kTestFont, {'T', ' ', 'V'}, 300, 100));
}

// The composer keeps rendered glyphs only while the face stays the same.
TEST(PreviewComposer, KeptGlyphsFollowTheFace)
{
    FTFont font;
    PreviewComposer kept;
    const CharCodeList codes = {'A', 'T', 'j', 'V'};
    for (const std::string* path : {&kTestFont, &kDejaVuSans, static_cast<const std::string*>(nullptr), &kTestFont}) {
        path ? font.LoadFace(path->c_str()) : font.UnloadFace();
        EXPECT_TRUE(GreyOf(kept.Compose(font, codes, 300, 100)) ==
                    GreyOf(PreviewComposer().Compose(font, codes, 300, 100)))
            << (path ? *path : "no face");
    }
}

// Cells that cannot show are skipped; what does show equals the top of an area tall
// enough for every row. Row 2's U+01D7 rises 38 px above its baseline at 84.
TEST(PreviewComposer, SkippingCellsOutsideTheAreaChangesNoPixel)
{
    CharCodeList codes(19, 'A');
    codes.insert(codes.end(), 19, 0x1D7);
    const CharCodeList more = CodeRange(32, 1999);
    codes.insert(codes.end(), more.begin(), more.end());
    for (auto [width, height] : {std::pair<uint32_t, uint32_t>{800, 50}, {800, 211}, {41, 90}, {20, 85}, {0, 100}}) {
        const uint32_t allRows = (uint32_t(codes.size()) / std::max(width / 42, 1u) + 3) * 42;
        const std::string whole = Composed(&kDejaVuSans, codes, width, allRows);
        EXPECT_TRUE(Composed(&kDejaVuSans, codes, width, height) == whole.substr(0, size_t{width} * height))
            << width << "x" << height;
    }
}

} // namespace
