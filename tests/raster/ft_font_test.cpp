#include "raster/ft_font.h"

#include "test_support.h"

#include <gtest/gtest.h>

#include <cmath>

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

template <typename Action>
std::string ThrownMessage(Action action)
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
    const struct
    {
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

// The rows of a render as coverage bytes, FreeType's 1-bit pixels as 0x00/0xFF; the
// gamma, when not 1, applied as round(255 * (v / 255)^(1 / gamma)).
std::vector<std::string> CoverageRows(const FT_Bitmap& bitmap, double gamma = 1)
{
    std::vector<std::string> rows;
    for (unsigned r = 0; r < bitmap.rows; ++r) {
        const unsigned char* row = bitmap.buffer + r * bitmap.pitch;
        std::string bytes;
        for (unsigned c = 0; c < bitmap.width; ++c) {
            const bool mono = bitmap.pixel_mode == FT_PIXEL_MODE_MONO;
            const double v = mono ? (row[c / 8] & (0x80 >> c % 8) ? 255 : 0) : row[c];
            bytes += static_cast<char>(std::lround(255 * std::pow(v / 255, 1 / gamma)));
        }
        rows.push_back(bytes);
    }
    return rows;
}

// Every choice renders as FreeType does with its flags, over hinted outlines, the test font
// off its grid and Terminus's 1-bit strikes, which no choice changes.
TEST(FTFont, RendersWithTheChosenOptions)
{
    const struct
    {
        RenderOptions options;
        FT_Int32 flags;
        FT_Render_Mode mode;
    } rows[] = {
        {{}, FT_LOAD_DEFAULT, FT_RENDER_MODE_NORMAL},
        {{Hinting::Light}, FT_LOAD_TARGET_LIGHT, FT_RENDER_MODE_NORMAL},
        {{Hinting::Auto}, FT_LOAD_FORCE_AUTOHINT, FT_RENDER_MODE_NORMAL},
        {{Hinting::None}, FT_LOAD_NO_HINTING, FT_RENDER_MODE_NORMAL},
        {{Hinting::Native, true}, FT_LOAD_TARGET_MONO, FT_RENDER_MODE_MONO},
        {{Hinting::Auto, true}, FT_LOAD_FORCE_AUTOHINT | FT_LOAD_TARGET_MONO, FT_RENDER_MODE_MONO},
        {{Hinting::None, true}, FT_LOAD_NO_HINTING | FT_LOAD_TARGET_MONO, FT_RENDER_MODE_MONO},
        {{Hinting::Auto, false, 2.2}, FT_LOAD_FORCE_AUTOHINT, FT_RENDER_MODE_NORMAL},
        {{Hinting::Native, false, 0.25}, FT_LOAD_DEFAULT, FT_RENDER_MODE_NORMAL},
    };
    const struct
    {
        const std::string& font;
        std::vector<uint32_t> heights;
    } fonts[] = {{kDejaVuSans, {8, 12, 16}}, {kTestFont, {12}}, {kTerminus, {12, 16}}};
    FT_Library library = nullptr;
    ASSERT_EQ(FT_Init_FreeType(&library), 0);
    for (const auto& [path, heights] : fonts) {
        FTFont font;
        font.LoadFace(path.c_str());
        FT_Face face = nullptr;
        ASSERT_EQ(FT_New_Face(library, path.c_str(), 0, &face), 0);
        for (uint32_t height : heights) {
            font.SetPixelSize(height);
            FT_Set_Pixel_Sizes(face, 0, height);
            for (const auto& row : rows)
                for (char32_t code : std::u32string_view(U"AVeg&j%\u00E9")) {
                    SCOPED_TRACE(path + " " + std::to_string(height) + " px, flags " + std::to_string(row.flags) +
                                 ", code " + std::to_string(code) + ", gamma " + std::to_string(row.options.gamma));
                    FTGlyph glyph;
                    font.RenderGlyph(code, glyph, row.options);
                    ASSERT_EQ(FT_Load_Glyph(face, FT_Get_Char_Index(face, code), row.flags), 0);
                    const bool strike = face->glyph->format == FT_GLYPH_FORMAT_BITMAP;
                    ASSERT_EQ(FT_Render_Glyph(face->glyph, row.mode), 0);
                    EXPECT_EQ(CoverageRows(*glyph.bitmap),
                              CoverageRows(face->glyph->bitmap, strike ? 1 : row.options.gamma));
                    EXPECT_EQ(std::vector({glyph.left, glyph.top, glyph.advanceX}),
                              std::vector({face->glyph->bitmap_left, face->glyph->bitmap_top,
                                           static_cast<FT_Int>(face->glyph->advance.x >> 6)}));
                }
        }
        FT_Done_Face(face);
    }
    FT_Done_FreeType(library);
}

// FreeType's default mode grid-fits (A T is -65/64 px unscaled at 16 px, yet -1 rather than
// the -2 a plain floor would give); characters above 127 passed as char name no glyph.
TEST(FTFont, KerningInWholePixels)
{
    const struct
    {
        const std::string& font;
        uint32_t left, right, size;
        FT_Pos expected;
    } rows[] = {
        {kTestFont, 'A', 'V', 16, -1}, {kTestFont, 'V', 'A', 16, -2},   {kTestFont, 'A', 'T', 16, -1},
        {kTestFont, 'V', '.', 16, 1},  {kTestFont, 'V', 'A', 32, -6},   {kTestFont, 'T', 'A', 16, 0},
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
    const struct
    {
        std::string font;
        char32_t character;
        FT_ULong code; // in the font's encoding; 0: no glyph
        std::string unknown;
    } rows[] = {
        {misc + "5x8-ISO8859-7.pcf.gz", U'Ω', 0xD9, ""},      {misc + "5x8-KOI8-R.pcf.gz", U'П', 0xF0, ""},
        {misc + "5x8-ISO8859-15.pcf.gz", U'€', 0xA4, ""},     {misc + "5x8-ISO8859-15.pcf.gz", U'¤', 0, ""},
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
    EXPECT_EQ(ThrownMessage([&] { font.LoadFace(VELTRANE_TEST_FONT_DIR "/make_test_font.py"); }),
              "cannot load font file");
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
