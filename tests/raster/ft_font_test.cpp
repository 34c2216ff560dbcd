#include "raster/ft_font.h"

#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// The bitmap as one text: '#' full coverage, '.' none, '?' anything between, '/' per row.
std::string PictureOf(const FT_Bitmap& bitmap)
{
    std::string picture;
    for (unsigned r = 0; r < bitmap.rows; ++r, picture += '/')
        for (unsigned c = 0; c < bitmap.width; ++c) {
            const uint8_t v = bitmap.buffer[r * bitmap.pitch + c];
            picture += v == 0xFF ? '#' : v == 0x00 ? '.' : '?';
        }
    return picture;
}

std::string Repeated(int count, const std::string& row)
{
    std::string rows;
    while (count-- > 0)
        rows += row + "/";
    return rows;
}

template <typename Action> std::string ThrownMessage(Action action)
{
    try {
        action();
    } catch (const FTException& e) {
        return e.what();
    }
    return "no exception";
}

// The test font is drawn on the 16 px grid (tests/fonts/make_test_font.py): exact pixels.
// Terminus's 1-bit strike comes out as 8-bit coverage.
TEST(FTFont, RendersGlyphs)
{
    const struct {
        const std::string& font;
        uint32_t code;
        int32_t left, top, advanceX;
        std::string pixels;
    } rows[] = {
        {kTestFont, 'T', 0, 11, 9, Repeated(2, "########") + Repeated(9, "...##...")},
        {kTestFont, 'j', -2, 8, 4, Repeated(12, "####")},
        {kTestFont, 0xE9, 1, 10, 6, Repeated(2, ".##.") + Repeated(2, "....") + Repeated(6, "####")},
        {kTestFont, 'B', 1, 10, 8, Repeated(1, "######") + Repeated(8, "#....#") + Repeated(1, "######")}, // glyph 0
        {kTestFont, ' ', 0, 0, 4, ""},
        {kTerminus, '-', 0, 12, 8, Repeated(7, "........") + Repeated(1, ".######.") + Repeated(8, "........")},
    };
    for (const auto& row : rows) {
        FTFont font;
        font.LoadFace(row.font.c_str());
        font.SetPixelSize(16);
        FTGlyph glyph;
        font.RenderGlyph(row.code, glyph);
        EXPECT_EQ(PictureOf(*glyph.bitmap), row.pixels) << row.code;
        EXPECT_EQ(std::vector({glyph.left, glyph.top, glyph.advanceX, glyph.advanceY}),
                  std::vector({row.left, row.top, row.advanceX, 0}))
            << row.code;
    }
}

// FreeType's default mode grid-fits (A T is -65/64 px unscaled at 16 px, yet -1 rather than
// the -2 a plain floor would give); characters above 127 passed as char name no glyph.
TEST(FTFont, KerningInWholePixels)
{
    const struct {
        const std::string& font;
        uint32_t left, right, size;
        FT_Pos expected;
    } rows[] = {
        {kTestFont, 'A', 'V', 16, -1}, {kTestFont, 'V', 'A', 16, -2}, {kTestFont, 'A', 'T', 16, -1},
        {kTestFont, 'V', '.', 16, 1},  {kTestFont, 'V', 'A', 32, -6}, {kTestFont, 'T', 'A', 16, 0},
        {kTestFont, 0xE9, 'V', 16, 0}, {kDejaVuSans, 'V', 'A', 36, -2},
    };
    for (const auto& row : rows) {
        FTFont font;
        font.LoadFace(row.font.c_str());
        font.SetPixelSize(row.size);
        FT_Vector out{99, 99}, full{99, 99};
        font.GetKerning(static_cast<char>(row.left), static_cast<char>(row.right), out);
        font.GetCharKerning(row.left, row.right, full);
        EXPECT_EQ(std::vector({out.x, out.y}), std::vector<FT_Pos>({row.expected, 0})) << row.left << " " << row.right;
        EXPECT_EQ(full.x, row.left == 0xE9 ? -1 : row.expected) << "looked up as Unicode";
    }
}

// X11 bitmap fonts without a Unicode charmap find a character under its code in their own
// encoding; an encoding iconv does not know, and a Unicode font, stay as they were.
TEST(FTFont, LooksUpInOwnEncoding)
{
    const std::string misc = "/usr/share/fonts/X11/misc/";
    const struct {
        std::string font;
        char32_t character;
        FT_ULong code; // in the font's encoding; 0: no glyph
        std::string unknown;
    } rows[] = {
        {misc + "5x8-ISO8859-7.pcf.gz", U'Ω', 0xD9, ""}, {misc + "5x8-KOI8-R.pcf.gz", U'П', 0xF0, ""},
        {misc + "5x8-ISO8859-15.pcf.gz", U'€', 0xA4, ""}, {misc + "5x8-ISO8859-15.pcf.gz", U'¤', 0, ""},
        {misc + "8x16rk.pcf.gz", U'A', 0, "JISX0201.1976-0"}, {kTestFont, U'é', 0xE9, ""},
    };
    for (const auto& row : rows) {
        FTFont font;
        font.LoadFace(row.font.c_str());
        EXPECT_EQ(font.LookUpInOwnEncoding().value_or(""), row.unknown) << row.font;
        const FT_UInt index = font.GlyphIndex(row.character);
        EXPECT_EQ(index, row.code ? FT_Get_Char_Index(font.Face(), row.code) : 0) << row.font;
        EXPECT_EQ(index != 0, row.code != 0) << row.font;
    }
}

TEST(FTFont, FaceStates)
{
    FTFont font;
    font.LoadFace(kDejaVuSans.c_str());
    font.LoadFace(kTestFont.c_str());
    font.SetPixelSize(32);
    EXPECT_EQ(font.GetLineHeight(), 35);
    // A file that is no font keeps the face; unloading leaves none.
    const FT_Face current = font.Face();
    EXPECT_EQ(ThrownMessage([&] { font.LoadFace(VELTRANE_TEST_FONT_DIR "/make_test_font.py"); }), "cannot load font file");
    EXPECT_EQ(font.Face(), current);
    EXPECT_STREQ(font.Face()->family_name, "Veltrane Test");
    font.UnloadFace();
    EXPECT_FALSE(font.HasFace());
    EXPECT_EQ(font.GetLineHeight(), 0);
    EXPECT_EQ(ThrownMessage([&] { font.SetPixelSize(16); }), "cannot set char size");
    FTGlyph glyph;
    glyph.left = 7;
    EXPECT_EQ(ThrownMessage([&] { font.RenderGlyph('A', glyph); }), "cannot load glyph");
    EXPECT_EQ(glyph.left, 7) << "a failed render leaves the glyph alone";
    FT_Vector out{12345, -12345};
    font.GetKerning('A', 'V', out);
    EXPECT_EQ(std::vector({out.x, out.y}), std::vector<FT_Pos>({0, 0}));
}

// A face whose 'A' measures dozens of ems (16 units per em instead of 1024) is broken;
// rendering it at 256 px would take gigabytes. The widest DejaVu Sans glyph (1.64 em) is fine.
TEST(FTFont, RefusesGlyphsOutOfAllProportionToTheSize)
{
    TempDir dir;
    FontBytes bytes(kTestFont);
    bytes.Put16(bytes.Table("head") + 18, 16);
    FTFont broken, real;
    broken.LoadFace(bytes.SaveAs(dir.Path() / "upem16.ttf").c_str());
    real.LoadFace(kDejaVuSans.c_str());
    for (uint32_t height : {6u, 256u}) {
        broken.SetPixelSize(height);
        real.SetPixelSize(height);
        FTGlyph glyph;
        EXPECT_EQ(ThrownMessage([&] { broken.RenderGlyph('A', glyph); }), "cannot render glyph") << height;
        real.RenderGlyph(0x2031, glyph);
        EXPECT_GT(glyph.bitmap->width, height * 3 / 2) << height;
    }
}

} // namespace
