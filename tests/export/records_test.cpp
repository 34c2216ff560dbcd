#include "export/char_records.h"
#include "export/font_records.h"
#include "export/kerning_tables.h"
#include "export/pixel_arrays.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

namespace {

// The beginning of the source for the list 65, 86 where V before A kerns by -1 and
// A is a 3x2 bitmap with pitch 4, left 1, top 2, advance 5.
const char* const kExampleStart = R"(#include <my_font.h>

static const char char_65_ktp[] = {86, 0};
static const int8_t char_65_ktd[] = {-1, 0};
static const uint8_t char_65_pixels_0[] = {
0x00, 0x80, 0xFF, 
0x10, 0x20, 0x30, 
};

static const uint8_t char_65_pixels_90[] = {
0xFF, 0x30, 
0x80, 0x20, 
0x00, 0x10, 
};

static const uint8_t char_65_pixels_180[] = {
0x30, 0x20, 0x10, 
0xFF, 0x80, 0x00, 
};

static const uint8_t char_65_pixels_270[] = {
0x10, 0x00, 
0x20, 0x80, 
0x30, 0xFF, 
};

static const ds_bitmap_font_char_t char_65_0 = 
{
.w = 3,
.h = 2,
.xoff = 1,
.yoff = 2,
.xadvance = 5,
.kerning_table_prev = char_65_ktp,
.kerning_table_delta = char_65_ktd,
.pixels = char_65_pixels_0
};


)";

std::string Records(const FTGlyph& glyph, bool hasKerning)
{
    return Captured([&](OutputWriter& out) { WriteCharRecords(out, 32, glyph, hasKerning); });
}

std::string FontRecords(FT_Pos height, FT_Pos ascender, FT_Pos descender, const CharTable& table)
{
    return Captured([&](OutputWriter& out) {
        WriteFontRecords(out, "my_font", LineMetrics{height, ascender, descender}, table);
    });
}

std::string Lines(int count, const std::string& line)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += line;
    return text;
}

} // namespace

TEST(RecordsTest, WorkedExampleOfTheSourceStart)
{
    std::vector<unsigned char> pixels = {0x00, 0x80, 0xFF, 0x55, 0x10, 0x20, 0x30, 0x55};
    FT_Bitmap bitmap = GreyBitmap(3, 2, 4, pixels);
    FTGlyph glyph{&bitmap, 1, 2, 5, 0};
    const std::string text = Captured([&](OutputWriter& out) {
        out.Write("#include <my_font.h>\n\n");
        WriteKerningTables(out, 65, {{86, -1}});
        WritePixelArrays(out, 65, bitmap);
        WriteCharRecords(out, 65, glyph, true);
    });
    ASSERT_EQ(text.substr(0, std::string(kExampleStart).size()), kExampleStart);
    // The other three records differ only in their name and pixel array.
    const std::string rest = text.substr(std::string(kExampleStart).size());
    std::string expectedRest;
    for (const char* r : {"90", "180", "270"}) {
        expectedRest += std::string("static const ds_bitmap_font_char_t char_65_") + r +
                        " = \n{\n.w = 3,\n.h = 2,\n.xoff = 1,\n.yoff = 2,\n.xadvance = 5,\n"
                        ".kerning_table_prev = char_65_ktp,\n.kerning_table_delta = char_65_ktd,\n"
                        ".pixels = char_65_pixels_" + r + "\n};\n\n\n";
    }
    EXPECT_EQ(rest, expectedRest);
}

TEST(RecordsTest, GlyphWithoutPixelsOrKerningPointsAtNothing)
{
    FT_Bitmap blank{};
    FTGlyph space{&blank, -1, 0, 5, 0};
    const std::string text = Records(space, false);
    const std::string first = "static const ds_bitmap_font_char_t char_32_0 = \n{\n.w = 0,\n.h = 0,\n.xoff = -1,\n"
                              ".yoff = 0,\n.xadvance = 5,\n.kerning_table_prev = nullptr,\n"
                              ".kerning_table_delta = nullptr,\n.pixels = nullptr\n};\n\n\n";
    ASSERT_EQ(text.size(), 4 * first.size() + 5); // the names of 90, 180, 270 are longer
    EXPECT_EQ(text.substr(0, first.size()), first);
    EXPECT_NE(text.find("char_32_270 = \n"), std::string::npos);
}

TEST(RecordsTest, FontRecordsListEveryCodeInCodeOrder)
{
    CharTable table{};
    table[65] = table[86] = true;
    const std::string text = FontRecords(19 * 64, 15 * 64, -4 * 64, table);
    std::string expected;
    for (const char* r : {"0", "90", "180", "270"}) {
        expected += std::string("\n\nconst ds_bitmap_font_t font_my_font_") + r + " = {\n" +
                    ".height = 19,\n.ascender = 15,\n.descender = -4,\n.chars = {\n" + Lines(65, "nullptr,\n") +
                    "&char_65_" + r + ",\n" + Lines(20, "nullptr,\n") + "&char_86_" + r + ",\n" +
                    Lines(169, "nullptr,\n") + "}\n};\n";
    }
    EXPECT_EQ(text, expected);
}

TEST(RecordsTest, LineMetricsTruncateTowardZero)
{
    struct Case
    {
        FT_Pos height, ascender, descender;
        const char* expected;
    };
    const Case cases[] = {
        {1216, 960, -288, ".height = 19,\n.ascender = 15,\n.descender = -4,\n"}, // -4.5 px
        {1215, 1023, -63, ".height = 18,\n.ascender = 15,\n.descender = 0,\n"},
        {0, 64, -64, ".height = 0,\n.ascender = 1,\n.descender = -1,\n"},
    };
    for (const Case& c : cases) {
        const std::string text = FontRecords(c.height, c.ascender, c.descender, CharTable{});
        EXPECT_NE(text.find(std::string(" = {\n") + c.expected + ".chars"), std::string::npos) << c.expected;
    }
}
