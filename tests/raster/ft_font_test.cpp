#include "raster/ft_font.h"

#include "test_fonts.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using Picture = std::vector<std::string>;

// Runs of equal rows, top row first.
Picture Rows(std::initializer_list<std::pair<int, const char*>> runs)
{
    Picture rows;
    for (auto [count, row] : runs)
        rows.insert(rows.end(), count, row);
    return rows;
}

// The bitmap as text rows: '#' full coverage, '.' none, '?' anything between.
Picture PictureOf(const FT_Bitmap& bitmap)
{
    Picture rows(bitmap.rows);
    for (unsigned r = 0; r < bitmap.rows; ++r)
        for (unsigned c = 0; c < bitmap.width; ++c) {
            const uint8_t v = bitmap.buffer[r * bitmap.pitch + c];
            rows[r] += v == 0xFF ? '#' : v == 0x00 ? '.' : '?';
        }
    return rows;
}

// The message of the FTException that `action` throws.
template <typename Action> std::string ThrownMessage(Action action)
{
    try {
        action();
    } catch (const FTException& e) {
        return e.what();
    }
    return "no exception";
}

struct GlyphCase
{
    const char* name;
    uint32_t code;
    int32_t left, top, advanceX;
    Picture pixels;
};

// The test font is drawn on the 16 px grid (tests/fonts/make_test_font.py), so its
// glyphs are exact to the pixel at 16 px.
TEST(FTFont, TestFontGlyphsAreExactAt16)
{
    const Picture notdef = Rows({{1, "######"}, {8, "#....#"}, {1, "######"}});
    const GlyphCase cases[] = {
        {"square A", 'A', 1, 8, 10, Rows({{8, "########"}})},
        {"two bars V", 'V', 0, 10, 7, Rows({{8, "##..##"}})},
        {"T", 'T', 0, 11, 9, Rows({{2, "########"}, {9, "...##..."}})},
        {"period", '.', 1, 2, 4, Rows({{2, "##"}})},
        {"negative left bearing j", 'j', -2, 8, 4, Rows({{12, "####"}})},
        {"e acute above 127", 0xE9, 1, 10, 6, Rows({{2, ".##."}, {2, "...."}, {6, "####"}})},
        {"missing B renders glyph 0", 'B', 1, 10, 8, notdef},
        {"missing U+25A0 renders glyph 0", 0x25A0, 1, 10, 8, notdef},
        {"space has no pixels", ' ', 0, 0, 4, {}},
    };
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    font.SetPixelSize(16);
    for (const GlyphCase& c : cases) {
        FTGlyph glyph;
        font.RenderGlyph(c.code, glyph);
        ASSERT_NE(glyph.bitmap, nullptr) << c.name;
        EXPECT_EQ(glyph.bitmap->pixel_mode, FT_PIXEL_MODE_GRAY) << c.name;
        EXPECT_EQ(PictureOf(*glyph.bitmap), c.pixels) << c.name;
        EXPECT_EQ(std::vector({glyph.left, glyph.top, glyph.advanceX, glyph.advanceY}),
                  std::vector({c.left, c.top, c.advanceX, 0}))
            << c.name;
    }
}

// Kerning in whole pixels: FreeType's default mode rounds to whole pixels (A T is
// -65/64 px unscaled at 16 px, yet -1, not the -2 a plain floor of -65 would give), then
// the 26.6 value is shifted down. Characters above 127 widen with sign extension, so
// 0xE9 names no glyph although the face kerns U+00E9 before V.
TEST(FTFont, KerningInWholePixels)
{
    struct KerningCase
    {
        const std::string& font;
        char left, right;
        uint32_t size;
        FT_Pos expected;
    };
    const KerningCase cases[] = {
        {kTestFont, 'A', 'V', 16, -1},   {kTestFont, 'V', 'A', 16, -2},   {kTestFont, 'A', 'T', 16, -1},
        {kTestFont, 'V', '.', 16, 1},    {kTestFont, 'A', 'V', 32, -4},   {kTestFont, 'V', 'A', 32, -6},
        {kTestFont, 'A', 'T', 32, -2},   {kTestFont, 'V', '.', 32, 3},    {kTestFont, 'A', 'A', 16, 0},
        {kTestFont, 'T', 'A', 32, 0},    {kTestFont, 'B', 'V', 16, 0},    {kTestFont, char(0xE9), 'V', 16, 0},
        {kDejaVuSans, 'A', 'V', 16, -1}, {kDejaVuSans, 'V', 'A', 36, -2}, {kDejaVuMono, 'A', 'V', 36, 0},
    };
    for (const KerningCase& k : cases) {
        FTFont font;
        font.LoadFace(k.font.c_str());
        font.SetPixelSize(k.size);
        FT_Vector out{99, 99};
        font.GetKerning(k.left, k.right, out);
        EXPECT_EQ(out.x, k.expected) << k.font << ' ' << k.left << k.right << " at " << k.size;
        EXPECT_EQ(out.y, 0) << k.font << ' ' << k.left << k.right << " at " << k.size;
    }
}

TEST(FTFont, LineHeightFollowsThePixelSize)
{
    FTFont font;
    font.LoadFace(kTestFont.c_str());
    for (auto [size, height] : {std::pair<uint32_t, int64_t>{16, 18}, {32, 35}, {36, 39}, {12, 13}}) {
        font.SetPixelSize(size);
        EXPECT_EQ(font.GetLineHeight(), height) << size;
    }
}

TEST(FTFont, WithoutFaceReportsNothingAndThrowsFixedMessages)
{
    for (bool unloaded : {false, true}) {
        FTFont font;
        if (unloaded) {
            font.LoadFace(kTestFont.c_str());
            font.SetPixelSize(16);
            font.UnloadFace();
        }
        EXPECT_FALSE(font.HasFace());
        EXPECT_EQ(font.GetLineHeight(), 0);
        EXPECT_EQ(ThrownMessage([&] { font.SetPixelSize(16); }), "cannot set char size");

        FTGlyph glyph;
        glyph.left = 7;
        EXPECT_EQ(ThrownMessage([&] { font.RenderGlyph('A', glyph); }), "cannot load glyph");
        EXPECT_EQ(glyph.bitmap, nullptr);
        EXPECT_EQ(glyph.left, 7);

        FT_Vector out{12345, -12345}; // cleared even though FreeType leaves it alone
        font.GetKerning('A', 'V', out);
        EXPECT_EQ(out.x, 0);
        EXPECT_EQ(out.y, 0);
    }
}

TEST(FTFont, NewFaceReplacesTheOldOneAndAFileThatIsNoFontKeepsIt)
{
    FTFont font;
    font.LoadFace(kDejaVuSans.c_str());
    font.LoadFace(kTestFont.c_str());
    ASSERT_STREQ(font.Face()->family_name, "Veltrane Test");
    const FT_Face current = font.Face();
    for (const std::string& path : {std::string(VELTRANE_TEST_FONT_DIR) + "/make_test_font.py",
                                    std::string("/nonexistent/font.ttf")}) {
        EXPECT_EQ(ThrownMessage([&] { font.LoadFace(path.c_str()); }), "cannot load font file") << path;
        EXPECT_EQ(font.Face(), current) << path;
    }
    font.SetPixelSize(16);
    FTGlyph glyph;
    font.RenderGlyph('A', glyph);
    EXPECT_EQ(PictureOf(*glyph.bitmap), Rows({{8, "########"}}));
}

TEST(FTFont, OneBitStrikesBecomeEightBitCoverage)
{
    FTFont font;
    font.LoadFace(kTerminus.c_str());
    EXPECT_EQ(ThrownMessage([&] { font.SetPixelSize(15); }), "cannot set char size"); // no such strike
    font.SetPixelSize(16);
    for (uint32_t code : {0x41u, 0x6Au, 0xE9u}) { // A j é
        FTGlyph glyph;
        font.RenderGlyph(code, glyph);
        ASSERT_EQ(glyph.bitmap->pixel_mode, FT_PIXEL_MODE_GRAY) << code;
        ASSERT_GE(glyph.bitmap->pitch, static_cast<int>(glyph.bitmap->width)) << code;
        std::set<char> values;
        for (const std::string& row : PictureOf(*glyph.bitmap))
            values.insert(row.begin(), row.end());
        EXPECT_EQ(values, std::set<char>({'#', '.'})) << code;
    }
}

// A face whose 'A' measures dozens of ems (the test font with 16 units per em instead
// of 1024) is broken; rendering it at 256 px would take gigabytes.
TEST(FTFont, RefusesGlyphsOutOfAllProportionToTheSize)
{
    TestFontBytes bytes;
    bytes.Put16(bytes.Table("head") + 18, 16);
    FTFont broken, real;
    broken.LoadFace(bytes.SaveAs("veltrane-upem-16.ttf").c_str());
    real.LoadFace(kDejaVuSans.c_str());
    for (uint32_t height : {6u, 16u, 256u}) {
        broken.SetPixelSize(height);
        FTGlyph glyph;
        EXPECT_EQ(ThrownMessage([&] { broken.RenderGlyph('A', glyph); }), "cannot render glyph") << height;
        EXPECT_EQ(glyph.bitmap, nullptr);
        // The widest glyph of DejaVu Sans (U+2031, 1.64 em) is fine.
        real.SetPixelSize(height);
        real.RenderGlyph(0x2031, glyph);
        EXPECT_GT(glyph.bitmap->width, height * 3 / 2) << height;
    }
}

} // namespace
