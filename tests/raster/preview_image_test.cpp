#include "raster/preview_image.h"

#include "preview_reference.h"
#include "raster/ft_font.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

namespace {

const std::string kTestFont = std::string(VELTRANE_TEST_FONT_DIR) + "/veltrane-test.ttf";
const std::string kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const char* const kTerminus = "/usr/share/fonts/opentype/terminus/terminus-normal.otb";

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

GreyPicture Composed(const std::string& fontPath, const CharCodeList& codes, uint32_t width,
                     uint32_t height)
{
    FTFont font;
    font.LoadFace(fontPath.c_str());
    return GreyOf(PreviewComposer().Compose(font, codes, width, height));
}

GreyPicture TopRows(const GreyPicture& picture, uint32_t height)
{
    return {picture.width, height,
            {picture.grey.begin(), picture.grey.begin() + size_t{picture.width} * height}};
}

bool AllWhite(const GreyPicture& picture)
{
    return std::all_of(picture.grey.begin(), picture.grey.end(), [](uint8_t g) { return g == 255; });
}

// Compares pixel by pixel and names the first difference.
testing::AssertionResult SamePicture(const GreyPicture& actual, const GreyPicture& expected)
{
    if (actual.width != expected.width || actual.height != expected.height)
        return testing::AssertionFailure() << "size " << actual.width << "x" << actual.height
                                           << " instead of " << expected.width << "x" << expected.height;
    for (uint32_t y = 0; y < actual.height; ++y)
        for (uint32_t x = 0; x < actual.width; ++x)
            if (actual.At(x, y) != expected.At(x, y))
                return testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is "
                                                   << int(actual.At(x, y)) << ", expected "
                                                   << int(expected.At(x, y));
    return testing::AssertionSuccess();
}

CharCodeList Range(uint32_t first, uint32_t last)
{
    CharCodeList codes;
    for (uint32_t code = first; code <= last; ++code)
        codes.push_back(code);
    return codes;
}

CharCodeList Repeated(uint32_t code, size_t times)
{
    return CharCodeList(times, code);
}

// Full coverage laid once over white.
constexpr uint8_t kInkOnce = 175;

TEST(PreviewComposer, DejaVuDefaultListFillsNineteenCellsInFiveRows)
{
    ASSERT_EQ(LineHeightAt36(kDejaVuSans), 42u);
    const GreyPicture picture = Composed(kDejaVuSans, Range(32, 126), 800, 600);
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kDejaVuSans, Range(32, 126), 800, 600)));

    // U+2588 FULL BLOCK covers its cell from 34 px above the baseline to 8 below.
    const GreyPicture blocks = Composed(kDejaVuSans, Repeated(0x2588, 95), 800, 600);
    const uint32_t baselines[] = {42, 84, 126, 168, 210};
    for (uint32_t row = 0; row < 5; ++row)
        for (uint32_t column = 0; column < 19; ++column)
            EXPECT_EQ(blocks.At(column * 42 + 5, baselines[row] - 1), kInkOnce)
                << "row " << row << " column " << column;
    for (uint32_t y = 0; y < 600; ++y)
        EXPECT_EQ(blocks.At(799, y), 255) << "beyond the 19th cell, y " << y;
    for (uint32_t y = 219; y < 600; ++y)
        for (uint32_t x = 0; x < 800; ++x)
            ASSERT_EQ(blocks.At(x, y), 255) << "below the fifth row at (" << x << ", " << y << ")";
}

struct WidthCase
{
    uint32_t width;
    uint32_t cellsInFirstRow;
};

class PreviewWidth : public testing::TestWithParam<WidthCase>
{
};

// The test font's 'A' is a square whose pixels 2..19 right of the pen are fully covered
// on the 18 rows above the baseline; its line height at 36 px is 39.
TEST_P(PreviewWidth, HoldsOnlyWholeCells)
{
    const WidthCase& c = GetParam();
    const CharCodeList codes = Repeated('A', 7);
    const GreyPicture picture = Composed(kTestFont, codes, c.width, 200);
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kTestFont, codes, c.width, 200)));
    uint32_t cells = 0;
    for (uint32_t x = 10; x < c.width; x += 39)
        cells += picture.At(x, 38) == kInkOnce;
    EXPECT_EQ(cells, c.cellsInFirstRow);
}

INSTANTIATE_TEST_SUITE_P(PreviewComposer, PreviewWidth,
                         testing::Values(WidthCase{800, 7}, WidthCase{5 * 39, 5},
                                         WidthCase{5 * 39 - 1, 4}, WidthCase{39, 1},
                                         // Narrower than a cell: the first glyph opens the
                                         // second row, the others run on to the right.
                                         WidthCase{38, 0}, WidthCase{1, 0}));

TEST(PreviewComposer, SpaceKeepsItsCellWhiteAndMissingCodeShowsTheMissingGlyph)
{
    const CharCodeList codes = {'A', ' ', 'A', 'B'};
    const GreyPicture picture = Composed(kTestFont, codes, 400, 100);
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kTestFont, codes, 400, 100)));
    for (uint32_t y = 0; y < 100; ++y)
        for (uint32_t x = 39; x < 78; ++x)
            ASSERT_EQ(picture.At(x, y), 255) << "space cell at (" << x << ", " << y << ")";
    EXPECT_EQ(picture.At(79, 38), 255) << "'A' leaves its cell's first two columns white";
    EXPECT_EQ(picture.At(78 + 10, 38), kInkOnce) << "'A' after the space";
    EXPECT_EQ(picture.At(117 + 4, 38), kInkOnce) << "missing glyph's left side";
}

TEST(PreviewComposer, NegativeLeftBearingReachesIntoThePreviousCell)
{
    const CharCodeList codes = {'A', 'j'};
    const GreyPicture picture = Composed(kTestFont, codes, 400, 100);
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kTestFont, codes, 400, 100)));
    EXPECT_EQ(picture.At(37, 38), kInkOnce) << "'j' starts 4.5 px left of its cell";
}

TEST(PreviewComposer, PixelCoveredTwiceDarkensFurther)
{
    // U+2031 is 60 px wide, so its right part lies under the next cell's full block.
    const CharCodeList codes = {0x2031, 0x2588};
    const GreyPicture picture = Composed(kDejaVuSans, codes, 400, 100);
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kDejaVuSans, codes, 400, 100)));
    EXPECT_EQ(*std::min_element(picture.grey.begin(), picture.grey.end()), 120)
        << "full coverage twice: 175 * 175 / 255";
}

TEST(PreviewComposer, EmptyListIsWhiteAndLeavesTheFaceAt36)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    font.SetPixelSize(16);
    EXPECT_TRUE(AllWhite(GreyOf(PreviewComposer().Compose(font, {}, 300, 200))));
    EXPECT_EQ(font.GetLineHeight(), 39);
}

TEST(PreviewComposer, NoFaceIsWhite)
{
    FTFont font;
    const GreyPicture picture = GreyOf(PreviewComposer().Compose(font, Range(32, 126), 300, 200));
    EXPECT_EQ(picture.grey.size(), 300u * 200u);
    EXPECT_TRUE(AllWhite(picture));
}

TEST(PreviewComposer, FaceWithoutA36PixelStrikeLeavesTheAreaWhite)
{
    FTFont font;
    font.LoadFace(kTerminus);
    PreviewImage image(0, 0);
    ASSERT_NO_THROW(image = PreviewComposer().Compose(font, Range(32, 126), 300, 200));
    EXPECT_TRUE(AllWhite(GreyOf(image)));
}

// A copy of the test font in which glyph `index`'s last contour claims far more points
// than its data holds, so that FreeType refuses to load that glyph.
std::string FontWithBrokenGlyph(uint16_t index)
{
    std::ifstream in(kTestFont, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    auto u16 = [&](size_t at) { return uint32_t(uint8_t(bytes[at])) << 8 | uint8_t(bytes[at + 1]); };
    auto u32 = [&](size_t at) { return u16(at) << 16 | u16(at + 2); };
    auto table = [&](const char* tag) {
        for (size_t record = 12; record < 12 + 16 * u16(4); record += 16)
            if (bytes.compare(record, 4, tag) == 0)
                return size_t{u32(record + 8)};
        ADD_FAILURE() << "no table " << tag;
        return size_t{0};
    };
    const size_t loca = table("loca");
    const size_t glyph = table("glyf") + (u16(table("head") + 50) == 0 ? 2 * u16(loca + 2 * index)
                                                                        : u32(loca + 4 * index));
    const size_t lastEndPoint = glyph + 10 + 2 * (u16(glyph) - 1);
    bytes[lastEndPoint] = 0x7F;
    bytes[lastEndPoint + 1] = char(0xFF);

    const std::string path = testing::TempDir() + "preview-broken-glyph.ttf";
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

TEST(PreviewComposer, GlyphThatCannotBeLoadedLeavesItsCellEmpty)
{
    FTFont font;
    font.LoadFace(FontWithBrokenGlyph(3).c_str()); // 'A'
    font.SetPixelSize(36);
    FTGlyph glyph;
    ASSERT_THROW(font.RenderGlyph('A', glyph), FTException);

    GreyPicture picture;
    ASSERT_NO_THROW(picture = GreyOf(PreviewComposer().Compose(font, {'T', 'A', 'V'}, 300, 100)));
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kTestFont, {'T', ' ', 'V'}, 300, 100)));
}

TEST(PreviewComposer, NarrowAreaShowsInkReachingBackFromTheCellRightOfIt)
{
    // Narrower than a cell, the second cell lies right of the area; U+0488 (a combining
    // mark) starts 37 px left of its pen and so reaches back into the area.
    const CharCodeList codes = {'A', 0x488};
    const GreyPicture picture = Composed(kDejaVuSans, codes, 20, 120);
    EXPECT_TRUE(SamePicture(picture, ReferencePreview(kDejaVuSans, codes, 20, 120)));
    const GreyPicture markAlone = Composed(kDejaVuSans, {' ', 0x488}, 20, 120);
    EXPECT_FALSE(AllWhite(markAlone));
}

TEST(PreviewComposer, KeptGlyphsFollowTheFace)
{
    // The faces come and go in the same FTFont, so a new face may sit where an old one was.
    FTFont font;
    PreviewComposer composer;
    const CharCodeList codes = {'A', 'T', 'j', 'V'};
    auto compose = [&] { return GreyOf(composer.Compose(font, codes, 300, 100)); };
    const GreyPicture testFont = ReferencePreview(kTestFont, codes, 300, 100);
    const GreyPicture dejaVu = ReferencePreview(kDejaVuSans, codes, 300, 100);

    font.LoadFace(kTestFont.c_str());
    EXPECT_TRUE(SamePicture(compose(), testFont));
    font.LoadFace(kDejaVuSans.c_str());
    EXPECT_TRUE(SamePicture(compose(), dejaVu));
    font.UnloadFace();
    EXPECT_TRUE(AllWhite(compose()));
    font.LoadFace(kTestFont.c_str());
    EXPECT_TRUE(SamePicture(compose(), testFont));
    font.UnloadFace();
    font.LoadFace(kDejaVuSans.c_str());
    EXPECT_TRUE(SamePicture(compose(), dejaVu));
}

struct VisibleArea
{
    uint32_t width;
    uint32_t height;
};

class PreviewSkipping : public testing::TestWithParam<VisibleArea>
{
};

// Cells that cannot show are skipped; the rows that do show must come out exactly as
// the top of an area tall enough to hold every row.
TEST_P(PreviewSkipping, ChangesNoPixel)
{
    const VisibleArea& area = GetParam();
    CharCodeList codes = Repeated('A', 19);
    // Row 2: U+01D7 rises 38 px above its baseline, into an area 50 px high.
    codes.insert(codes.end(), 19, 0x1D7);
    const CharCodeList more = Range(32, 1999);
    codes.insert(codes.end(), more.begin(), more.end());
    const uint32_t cellsPerRow = std::max(area.width / 42, 1u);
    const uint32_t allRows = (uint32_t(codes.size()) / cellsPerRow + 3) * 42;

    const GreyPicture whole = Composed(kDejaVuSans, codes, area.width, allRows);
    const GreyPicture visible = Composed(kDejaVuSans, codes, area.width, area.height);
    EXPECT_TRUE(SamePicture(visible, TopRows(whole, area.height)));
}

INSTANTIATE_TEST_SUITE_P(PreviewComposer, PreviewSkipping,
                         testing::Values(VisibleArea{800, 0}, VisibleArea{800, 1},
                                         VisibleArea{800, 42}, VisibleArea{800, 50},
                                         VisibleArea{800, 211}, VisibleArea{800, 600},
                                         VisibleArea{41, 90}, VisibleArea{20, 85},
                                         VisibleArea{0, 100}));

TEST(PreviewComposer, RowBelowTheAreaStillShowsItsTallGlyphs)
{
    CharCodeList codes = Repeated('A', 19);
    codes.insert(codes.end(), 19, 0x1D7);
    const GreyPicture picture = Composed(kDejaVuSans, codes, 800, 50);
    bool inkFromRowTwo = false;
    for (uint32_t x = 0; x < 800; ++x)
        inkFromRowTwo |= picture.At(x, 49) != 255;
    EXPECT_TRUE(inkFromRowTwo) << "the second row's baseline is at 84, its accents at 46";
}

} // namespace
