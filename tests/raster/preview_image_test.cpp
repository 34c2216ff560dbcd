#include "raster/preview_image.h"

#include "preview_reference.h"
#include "raster/ft_font.h"
#include "test_fonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace {

// Grey levels of a composed picture; every pixel must be a grey (red = green = blue).
GreyPicture GreyOf(const PreviewImage& image)
{
    GreyPicture picture{image.width, image.height, {}};
    EXPECT_EQ(image.rgb.size(), size_t{3} * image.width * image.height);
    for (size_t i = 0; i + 2 < image.rgb.size(); i += 3) {
        if (image.rgb[i] != image.rgb[i + 1] || image.rgb[i] != image.rgb[i + 2]) {
            ADD_FAILURE() << "pixel " << i / 3 << " is not grey";
            break;
        }
        picture.grey.push_back(image.rgb[i]);
    }
    return picture;
}

GreyPicture Composed(const std::string& fontPath, const CharCodeList& codes, uint32_t width, uint32_t height)
{
    FTFont font;
    font.LoadFace(fontPath.c_str());
    return GreyOf(PreviewComposer().Compose(font, codes, width, height));
}

// Compares pixel by pixel and names the first difference.
testing::AssertionResult SamePicture(const GreyPicture& actual, const GreyPicture& expected)
{
    if (actual.width != expected.width || actual.height != expected.height)
        return testing::AssertionFailure() << "size " << actual.width << "x" << actual.height << " instead of "
                                           << expected.width << "x" << expected.height;
    for (uint32_t y = 0; y < actual.height; ++y)
        for (uint32_t x = 0; x < actual.width; ++x)
            if (actual.At(x, y) != expected.At(x, y))
                return testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is " << int(actual.At(x, y))
                                                   << ", expected " << int(expected.At(x, y));
    return testing::AssertionSuccess();
}

// A rectangle of the picture that must be all one grey.
struct Patch
{
    uint32_t x, y, width, height;
    uint8_t grey;
};

testing::AssertionResult PatchIs(const GreyPicture& picture, const Patch& p)
{
    for (uint32_t y = p.y; y < p.y + p.height; ++y)
        for (uint32_t x = p.x; x < p.x + p.width; ++x)
            if (picture.At(x, y) != p.grey)
                return testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is " << int(picture.At(x, y))
                                                   << ", expected " << int(p.grey);
    return testing::AssertionSuccess();
}

uint8_t Darkest(const GreyPicture& picture)
{
    return *std::min_element(picture.grey.begin(), picture.grey.end());
}

CharCodeList Range(uint32_t first, uint32_t last)
{
    CharCodeList codes(last - first + 1);
    std::iota(codes.begin(), codes.end(), first);
    return codes;
}

// Full coverage laid once over white; twice gives 175 * 175 / 255 = 120.
constexpr uint8_t kInkOnce = 175;
constexpr uint8_t kInkTwice = 120;

struct ComposeCase
{
    const char* name;
    const std::string& font;
    CharCodeList codes;
    uint32_t width, height;
    uint8_t darkest;
    std::vector<Patch> patches;
};

// Every picture equals the one worked out straight from FreeType. The test font's 'A'
// is a square whose pixels 2..19 right of the pen are fully covered on the 18 rows
// above the baseline; its cells are 39 px (DejaVu Sans: 42 px).
TEST(PreviewComposer, MatchesTheReference)
{
    const ComposeCase cases[] = {
        {"DejaVu Sans default list", kDejaVuSans, Range(32, 126), 800, 600, kInkOnce, {}},
        {"five whole cells fit", kTestFont, CharCodeList(7, 'A'), 5 * 39, 200, kInkOnce, {{166, 38, 1, 1, kInkOnce}}},
        {"the fifth cell would not fit whole", kTestFont, CharCodeList(7, 'A'), 5 * 39 - 1, 200, kInkOnce,
         {{166, 38, 1, 1, 255}, {10, 77, 1, 1, kInkOnce}}},
        // The first glyph opens the second row, the others run on to the right.
        {"narrower than a cell", kTestFont, CharCodeList(7, 'A'), 38, 200, kInkOnce,
         {{0, 0, 38, 60, 255}, {10, 77, 1, 1, kInkOnce}}},
        {"space cell stays white, missing code shows glyph 0", kTestFont, {'A', ' ', 'A', 'B'}, 400, 100, kInkOnce,
         {{39, 0, 39, 100, 255}, {79, 38, 1, 1, 255}, {88, 38, 1, 1, kInkOnce}, {121, 38, 1, 1, kInkOnce}}},
        {"negative left bearing reaches into the cell before", kTestFont, {'A', 'j'}, 400, 100, kInkOnce,
         {{37, 38, 1, 1, kInkOnce}}},
        // U+2031 is 60 px wide, so its right part lies under the next cell's full block.
        {"pixels covered twice darken further", kDejaVuSans, {0x2031, 0x2588}, 400, 100, kInkTwice, {}},
        // The second cell lies right of the area, but U+0488 (a combining mark) starts
        // 37 px left of its pen and so reaches back into it.
        {"ink reaching back from right of the area", kDejaVuSans, {' ', 0x488}, 20, 120, kInkOnce, {}},
        {"empty list", kTestFont, {}, 300, 200, 255, {}},
    };
    for (const ComposeCase& c : cases) {
        const GreyPicture picture = Composed(c.font, c.codes, c.width, c.height);
        EXPECT_TRUE(SamePicture(picture, ReferencePreview(c.font, c.codes, c.width, c.height))) << c.name;
        EXPECT_EQ(Darkest(picture), c.darkest) << c.name;
        for (const Patch& patch : c.patches)
            EXPECT_TRUE(PatchIs(picture, patch)) << c.name;
    }
}

// Full blocks (U+2588, from 34 px above the baseline to 8 below) show the grid itself.
TEST(PreviewComposer, NineteenCellsPerRowWithBaselinesEvery42Pixels)
{
    ASSERT_EQ(LineHeightAt36(kDejaVuSans), 42u);
    const GreyPicture blocks = Composed(kDejaVuSans, CharCodeList(95, 0x2588), 800, 600);
    for (uint32_t row = 0; row < 5; ++row)
        for (uint32_t column = 0; column < 19; ++column)
            EXPECT_EQ(blocks.At(column * 42 + 5, 42 * (row + 1) - 1), kInkOnce) << "row " << row << " column " << column;
    EXPECT_TRUE(PatchIs(blocks, {799, 0, 1, 600, 255})) << "beyond the 19th cell";
    EXPECT_TRUE(PatchIs(blocks, {0, 219, 800, 381, 255})) << "below the fifth row";
}

TEST(PreviewComposer, NoFaceOrNoStrikeAt36LeavesTheAreaWhite)
{
    for (const std::string* path : {static_cast<const std::string*>(nullptr), &kTerminus}) {
        FTFont font;
        if (path)
            font.LoadFace(path->c_str());
        PreviewImage image(0, 0);
        ASSERT_NO_THROW(image = PreviewComposer().Compose(font, Range(32, 126), 300, 200));
        const GreyPicture picture = GreyOf(image);
        EXPECT_TRUE(PatchIs(picture, {0, 0, 300, 200, 255})) << (path ? *path : "no face");
    }
}

TEST(PreviewComposer, GlyphThatCannotBeLoadedLeavesItsCellEmpty)
{
    // Glyph 3 ('A') with a last contour that claims far more points than its data holds.
    TestFontBytes bytes;
    const size_t loca = bytes.Table("loca");
    const size_t glyph = bytes.Table("glyf") + (bytes.U16(bytes.Table("head") + 50) == 0 ? 2 * bytes.U16(loca + 6)
                                                                                         : bytes.U32(loca + 12));
    bytes.Put16(glyph + 10 + 2 * (bytes.U16(glyph) - 1), 0x7FFF);
    FTFont font;
    font.LoadFace(bytes.SaveAs("preview-broken-glyph.ttf").c_str());
    font.SetPixelSize(36);
    FTGlyph rendered;
    ASSERT_THROW(font.RenderGlyph('A', rendered), FTException);

    GreyPicture picture;
    ASSERT_NO_THROW(picture = GreyOf(PreviewComposer().Compose(font, {'T', 'A', 'V'}, 300, 100)));
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kTestFont, {'T', ' ', 'V'}, 300, 100)));
}

// The composer keeps rendered glyphs; a new face may sit where an old one was.
TEST(PreviewComposer, KeptGlyphsFollowTheFace)
{
    FTFont font;
    PreviewComposer composer;
    const CharCodeList codes = {'A', 'T', 'j', 'V'};
    for (const std::string* path : {&kTestFont, &kDejaVuSans, static_cast<const std::string*>(nullptr), &kTestFont,
                                    static_cast<const std::string*>(nullptr), &kDejaVuSans}) {
        path ? font.LoadFace(path->c_str()) : font.UnloadFace();
        const GreyPicture picture = GreyOf(composer.Compose(font, codes, 300, 100));
        const GreyPicture expected = path ? ReferencePreview(*path, codes, 300, 100)
                                          : GreyPicture{300, 100, std::vector<uint8_t>(300 * 100, 255)};
        EXPECT_TRUE(SamePicture(picture, expected)) << (path ? *path : "no face");
    }
}

// Cells that cannot show are skipped; the rows that do show must come out exactly as
// the top of an area tall enough to hold every row.
TEST(PreviewComposer, SkippingCellsOutsideTheAreaChangesNoPixel)
{
    // Row 2: U+01D7 rises 38 px above its baseline at 84, into an area 50 px high.
    CharCodeList codes(19, 'A');
    codes.insert(codes.end(), 19, 0x1D7);
    const CharCodeList more = Range(32, 1999);
    codes.insert(codes.end(), more.begin(), more.end());

    const std::pair<uint32_t, std::vector<uint32_t>> areas[] = {
        {800, {0, 1, 42, 50, 211, 600}}, {41, {90}}, {20, {85}}, {0, {100}}};
    for (const auto& [width, heights] : areas) {
        const uint32_t allRows = (uint32_t(codes.size()) / std::max(width / 42, 1u) + 3) * 42;
        const GreyPicture whole = Composed(kDejaVuSans, codes, width, allRows);
        for (uint32_t height : heights) {
            const GreyPicture visible = Composed(kDejaVuSans, codes, width, height);
            const GreyPicture top{width, height, {whole.grey.begin(), whole.grey.begin() + size_t{width} * height}};
            EXPECT_TRUE(SamePicture(visible, top)) << width << "x" << height;
            if (width == 800 && height == 50) {
                EXPECT_LT(Darkest({width, 1, {visible.grey.end() - width, visible.grey.end()}}), 255)
                    << "the second row's accents show on the bottom line";
            }
        }
    }
}

} // namespace
