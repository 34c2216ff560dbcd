#include "raster/ft_font.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

const std::string kTestFont = std::string(VELTRANE_TEST_FONT_DIR) + "/veltrane-test.ttf";
const std::string kNotAFont = std::string(VELTRANE_TEST_FONT_DIR) + "/make_test_font.py";
const char* const kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
const char* const kDejaVuMono = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf";
const char* const kTerminus = "/usr/share/fonts/opentype/terminus/terminus-normal.otb";

using Picture = std::vector<std::string>;

// The bitmap as text rows: '#' full coverage, '.' none, '?' anything between.
Picture PictureOf(const FT_Bitmap& bitmap)
{
    Picture rows;
    for (unsigned r = 0; r < bitmap.rows; ++r) {
        std::string row;
        for (unsigned c = 0; c < bitmap.width; ++c) {
            unsigned char v = bitmap.buffer[r * bitmap.pitch + c];
            row += v == 0xFF ? '#' : v == 0x00 ? '.' : '?';
        }
        rows.push_back(row);
    }
    return rows;
}

Picture Doubled(const Picture& picture)
{
    Picture rows;
    for (const std::string& row : picture) {
        std::string wide;
        for (char c : row)
            wide += std::string(2, c);
        rows.push_back(wide);
        rows.push_back(wide);
    }
    return rows;
}

Picture Repeat(int times, const std::string& row)
{
    return Picture(times, row);
}

Picture Join(std::initializer_list<Picture> parts)
{
    Picture rows;
    for (const Picture& part : parts)
        rows.insert(rows.end(), part.begin(), part.end());
    return rows;
}

const Picture kNotdef = Join({{"######"}, Repeat(8, "#....#"), {"######"}});

struct GlyphCase
{
    const char* name;
    uint32_t code;
    int32_t left, top, advanceX;
    Picture pixels;
};

// Names the case in test output instead of a byte dump.
void PrintTo(const GlyphCase& c, std::ostream* os)
{
    *os << c.name;
}

// The test font's glyphs at 16 px, exact to the pixel (see tests/fonts/make_test_font.py).
const std::vector<GlyphCase> kGlyphsAt16 = {
    {"square A", 'A', 1, 8, 10, Repeat(8, "########")},
    {"two bars V", 'V', 0, 10, 7, Repeat(8, "##..##")},
    {"T", 'T', 0, 11, 9, Join({Repeat(2, "########"), Repeat(9, "...##...")})},
    {"period", '.', 1, 2, 4, Repeat(2, "##")},
    {"negative left bearing j", 'j', -2, 8, 4, Repeat(12, "####")},
    {"e acute above 127", 0xE9, 1, 10, 6, Join({Repeat(2, ".##."), Repeat(2, "...."), Repeat(6, "####")})},
    {"missing B renders notdef", 'B', 1, 10, 8, kNotdef},
    {"missing U+25A0 renders notdef", 0x25A0, 1, 10, 8, kNotdef},
    {"space has no pixels", ' ', 0, 0, 4, {}},
};

class TestFontGlyphs : public testing::TestWithParam<GlyphCase>
{
protected:
    void SetUp() override { font.LoadFace(kTestFont.c_str()); }
    FTFont font;
};

TEST_P(TestFontGlyphs, RendersExactPixelsAt16)
{
    const GlyphCase& expected = GetParam();
    font.SetPixelSize(16);
    FTGlyph glyph;
    font.RenderGlyph(expected.code, glyph);

    ASSERT_NE(glyph.bitmap, nullptr);
    EXPECT_EQ(glyph.bitmap->pixel_mode, FT_PIXEL_MODE_GRAY);
    EXPECT_EQ(PictureOf(*glyph.bitmap), expected.pixels);
    EXPECT_EQ(glyph.left, expected.left);
    EXPECT_EQ(glyph.top, expected.top);
    EXPECT_EQ(glyph.advanceX, expected.advanceX);
    EXPECT_EQ(glyph.advanceY, 0);
}

TEST_P(TestFontGlyphs, DoublesEverythingAt32)
{
    const GlyphCase& expected = GetParam();
    font.SetPixelSize(32);
    FTGlyph glyph;
    font.RenderGlyph(expected.code, glyph);

    EXPECT_EQ(PictureOf(*glyph.bitmap), Doubled(expected.pixels));
    EXPECT_EQ(glyph.left, 2 * expected.left);
    EXPECT_EQ(glyph.top, 2 * expected.top);
    EXPECT_EQ(glyph.advanceX, 2 * expected.advanceX);
}

INSTANTIATE_TEST_SUITE_P(FTFont, TestFontGlyphs, testing::ValuesIn(kGlyphsAt16),
                         [](const testing::TestParamInfo<GlyphCase>& info) {
                             std::string name;
                             for (const char* p = info.param.name; *p; ++p)
                                 name += std::isalnum(static_cast<unsigned char>(*p)) ? *p : '_';
                             return name;
                         });

struct KerningCase
{
    char left, right;
    uint32_t size;
    FT_Pos expected;
};

// Default mode scales below 25 ppem and rounds to whole pixels: A T is -65/64 px
// unscaled at 16 px, yet -1 (not the -2 a plain floor of -65 would give).
const std::vector<KerningCase> kTestFontKerning = {
    {'A', 'V', 16, -1}, {'V', 'A', 16, -2}, {'A', 'T', 16, -1}, {'V', '.', 16, 1},
    {'A', 'V', 32, -4}, {'V', 'A', 32, -6}, {'A', 'T', 32, -2}, {'V', '.', 32, 3},
    {'A', 'A', 16, 0},  {'T', 'A', 32, 0},  {'B', 'V', 16, 0},
};

TEST(FTFontKerning, TestFontPairsInWholePixels)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    for (const KerningCase& k : kTestFontKerning) {
        font.SetPixelSize(k.size);
        FT_Vector out{99, 99};
        font.GetKerning(k.left, k.right, out);
        EXPECT_EQ(out.x, k.expected) << k.left << k.right << " at " << k.size;
        EXPECT_EQ(out.y, 0) << k.left << k.right << " at " << k.size;
    }
}

TEST(FTFontKerning, CharacterAbove127IsSignExtendedAndFindsNoPair)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    font.SetPixelSize(16);
    // The face does kern U+00E9 before V ...
    FT_Vector direct{};
    FT_Get_Kerning(font.Face(), FT_Get_Char_Index(font.Face(), 0xE9), FT_Get_Char_Index(font.Face(), 'V'),
                   FT_KERNING_DEFAULT, &direct);
    ASSERT_EQ(direct.x, -64);
    // ... but 0xE9 as a char widens to a code with every high bit set.
    FT_Vector out{99, 99};
    font.GetKerning(static_cast<char>(0xE9), 'V', out);
    EXPECT_EQ(out.x, 0);
    EXPECT_EQ(out.y, 0);
}

TEST(FTFontKerning, DejaVuSansMovesAVCloserAndMonoHasNone)
{
    FTFont font;
    font.LoadFace(kDejaVuSans);
    for (uint32_t size : {16u, 36u}) {
        font.SetPixelSize(size);
        FT_Vector av{}, va{};
        font.GetKerning('A', 'V', av);
        font.GetKerning('V', 'A', va);
        EXPECT_LT(av.x, 0) << size;
        EXPECT_LT(va.x, 0) << size;
    }

    font.LoadFace(kDejaVuMono);
    font.SetPixelSize(36);
    FT_Vector out{99, 99};
    font.GetKerning('A', 'V', out);
    EXPECT_EQ(out.x, 0);
    EXPECT_EQ(out.y, 0);
}

TEST(FTFontLineHeight, FollowsThePixelSize)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    const std::pair<uint32_t, int64_t> cases[] = {{16, 18}, {32, 35}, {36, 39}, {12, 13}};
    for (auto [size, height] : cases) {
        font.SetPixelSize(size);
        EXPECT_EQ(font.GetLineHeight(), height) << size;
    }
}

TEST(FTFontWithoutFace, ReportsNothingAndThrowsFixedMessages)
{
    FTFont font;
    EXPECT_FALSE(font.HasFace());
    EXPECT_EQ(font.GetLineHeight(), 0);

    try {
        font.SetPixelSize(16);
        FAIL() << "SetPixelSize did not throw";
    } catch (const FTException& e) {
        EXPECT_STREQ(e.what(), "cannot set char size");
    }

    FTGlyph glyph;
    glyph.left = 7;
    try {
        font.RenderGlyph('A', glyph);
        FAIL() << "RenderGlyph did not throw";
    } catch (const FTException& e) {
        EXPECT_STREQ(e.what(), "cannot load glyph");
    }
    EXPECT_EQ(glyph.bitmap, nullptr);
    EXPECT_EQ(glyph.left, 7);

    FT_Vector out{12345, -12345};
    font.GetKerning('A', 'V', out);
    EXPECT_EQ(out.x, 0);
    EXPECT_EQ(out.y, 0);
}

TEST(FTFontFaces, UnloadReturnsToNoFace)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    font.SetPixelSize(16);
    ASSERT_TRUE(font.HasFace());
    font.UnloadFace();
    EXPECT_FALSE(font.HasFace());
    EXPECT_EQ(font.GetLineHeight(), 0);
    font.UnloadFace(); // a second time is harmless
}

TEST(FTFontFaces, FileThatIsNotAFontKeepsTheEarlierFace)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    FT_Face before = font.Face();
    for (const std::string& path : {kNotAFont, std::string("/nonexistent/font.ttf")}) {
        try {
            font.LoadFace(path.c_str());
            FAIL() << path << " loaded";
        } catch (const FTException& e) {
            EXPECT_STREQ(e.what(), "cannot load font file");
        }
        EXPECT_EQ(font.Face(), before);
    }
    font.SetPixelSize(16);
    FTGlyph glyph;
    font.RenderGlyph('A', glyph);
    EXPECT_EQ(PictureOf(*glyph.bitmap), Repeat(8, "########"));
}

TEST(FTFontFaces, SecondFaceReplacesTheFirst)
{
    FTFont font;
    font.LoadFace(kDejaVuSans);
    FT_Face first = font.Face();
    font.LoadFace(kTestFont.c_str());
    EXPECT_NE(font.Face(), first);
    EXPECT_STREQ(font.Face()->family_name, "Veltrane Test");

    font.SetPixelSize(16);
    FTGlyph glyph;
    font.RenderGlyph('A', glyph);
    EXPECT_EQ(PictureOf(*glyph.bitmap), Repeat(8, "########"));
}

TEST(FTFontRender, SecondRenderReusesTheGlyphSlot)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    font.SetPixelSize(16);
    FTGlyph first, second;
    font.RenderGlyph('A', first);
    font.RenderGlyph('V', second);

    EXPECT_EQ(first.bitmap, second.bitmap);
    EXPECT_EQ(PictureOf(*first.bitmap), Repeat(8, "##..##"));
    EXPECT_EQ(first.left, 1);
    EXPECT_EQ(first.top, 8);
    EXPECT_EQ(first.advanceX, 10);
    EXPECT_EQ(second.top, 10);
}

TEST(FTFontRender, OneBitStrikesBecomeEightBitCoverage)
{
    FTFont font;
    font.LoadFace(kTerminus);
    font.SetPixelSize(16);
    for (uint32_t code : {0x41u, 0x56u, 0x6Au, 0x2Eu, 0xE9u}) { // A V j . é
        FTGlyph glyph;
        font.RenderGlyph(code, glyph);
        const FT_Bitmap& bitmap = *glyph.bitmap;
        ASSERT_EQ(bitmap.pixel_mode, FT_PIXEL_MODE_GRAY) << code;
        ASSERT_GT(bitmap.width, 0u) << code;
        ASSERT_GE(bitmap.pitch, static_cast<int>(bitmap.width)) << code;
        Picture picture = PictureOf(bitmap);
        std::string all;
        for (const std::string& row : picture)
            all += row;
        EXPECT_EQ(all.find('?'), std::string::npos) << code;
        EXPECT_NE(all.find('#'), std::string::npos) << code;
        EXPECT_NE(all.find('.'), std::string::npos) << code;
    }
}

// The test font with its units-per-em field set to `unitsPerEm`: its outlines, drawn for
// 1024 units per em, then come out that many times larger or smaller.
std::string TestFontWithUnitsPerEm(uint16_t unitsPerEm)
{
    std::ifstream in(kTestFont, std::ios::binary);
    std::string data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    auto u16 = [&](size_t at) { return static_cast<size_t>(uint8_t(data[at]) << 8 | uint8_t(data[at + 1])); };
    for (size_t entry = 12; entry < 12 + 16 * u16(4); entry += 16) {
        if (data.compare(entry, 4, "head") == 0) {
            const size_t field = (u16(entry + 8) << 16 | u16(entry + 10)) + 18;
            data[field] = static_cast<char>(unitsPerEm >> 8);
            data[field + 1] = static_cast<char>(unitsPerEm & 0xFF);
        }
    }
    const std::string path = testing::TempDir() + "veltrane-upem-" + std::to_string(unitsPerEm) + ".ttf";
    std::ofstream(path, std::ios::binary) << data;
    return path;
}

TEST(FTFontRender, RefusesGlyphsOutOfAllProportionToTheSize)
{
    // Out of a broken face: 'A' measures dozens of ems at a units-per-em of 16.
    FTFont broken;
    broken.LoadFace(TestFontWithUnitsPerEm(16).c_str());
    for (uint32_t height : {6u, 16u, 256u}) {
        broken.SetPixelSize(height);
        FTGlyph glyph;
        try {
            broken.RenderGlyph('A', glyph);
            FAIL() << "no exception at " << height;
        } catch (const FTException& e) {
            EXPECT_STREQ(e.what(), "cannot render glyph");
        }
        EXPECT_EQ(glyph.bitmap, nullptr);
        FTGlyph space;
        broken.RenderGlyph(' ', space); // a glyph without an outline still renders
    }

    // The widest glyph of DejaVu Sans (U+2031, 1.64 em) at the largest and smallest size.
    FTFont real;
    real.LoadFace(kDejaVuSans);
    for (uint32_t height : {6u, 256u}) {
        real.SetPixelSize(height);
        FTGlyph glyph;
        real.RenderGlyph(0x2031, glyph);
        EXPECT_GT(glyph.bitmap->width, height * 3 / 2);
    }
}

TEST(FTFontRender, BitmapFontRejectsSizeWithoutStrike)
{
    FTFont font;
    font.LoadFace(kTerminus);
    EXPECT_THROW(font.SetPixelSize(15), FTException);
    EXPECT_NO_THROW(font.SetPixelSize(16));
}

TEST(FTExceptionTest, CopyOwnsItsMessage)
{
    auto* original = new FTException("cannot render glyph");
    FTException copy(*original);
    EXPECT_NE(copy.what(), original->what());
    delete original;
    EXPECT_STREQ(copy.what(), "cannot render glyph");

    try {
        throw FTException("cannot load glyph");
    } catch (const std::exception& e) {
        EXPECT_STREQ(e.what(), "cannot load glyph");
    }
}

} // namespace
