// The writers' texts byte for byte, from synthetic glyphs where a real font cannot give them.

#include "export/char_records.h"
#include "export/font_header.h"
#include "export/font_records.h"
#include "export/kerning_pairs.h"
#include "export/kerning_tables.h"
#include "export/output_writer.h"
#include "export/pixel_arrays.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

namespace {

// What a writer function puts out, as one string.
std::string Captured(const std::function<void(OutputWriter&)>& write)
{
    char* data = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&data, &size);
    {
        OutputWriter out(stream);
        write(out);
        out.Close();
    }
    std::fclose(stream);
    std::string text(data, size);
    std::free(data);
    return text;
}

// An 8-bit grey bitmap over `pixels`, row by row with a pitch of 4.
FT_Bitmap GreyBitmap(unsigned width, unsigned rows, std::vector<unsigned char>& pixels)
{
    return {.rows = rows, .width = width, .pitch = 4, .buffer = pixels.data(), .num_grays = 256,
            .pixel_mode = FT_PIXEL_MODE_GRAY, .palette_mode = 0, .palette = nullptr};
}

std::string Repeated(int count, const std::string& line)
{
    std::string text;
    while (count-- > 0)
        text += line;
    return text;
}

// Character 65 with the list 65, 86, where V before A kerns by -1: a 3x2 bitmap with
// pitch 4 (the fourth byte of a row is padding and appears nowhere), left 1, top 2,
// advance 5. Its four records follow the arrays and differ only in rotation.
const char* const kExampleArrays = R"(#include <my_font.h>

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

)";

} // namespace

TEST(WritersTest, WorkedExampleOfACharacterSection)
{
    std::vector<unsigned char> pixels = {0x00, 0x80, 0xFF, 0x55, 0x10, 0x20, 0x30, 0x55};
    FT_Bitmap bitmap = GreyBitmap(3, 2, pixels);
    const FTGlyph glyph{&bitmap, 1, 2, 5, 0};
    std::string expected = kExampleArrays;
    for (const char* r : {"0", "90", "180", "270"}) {
        expected += std::string("static const ds_bitmap_font_char_t char_65_") + r +
                    " = \n{\n.w = 3,\n.h = 2,\n.xoff = 1,\n.yoff = 2,\n.xadvance = 5,\n"
                    ".kerning_table_prev = char_65_ktp,\n.kerning_table_delta = char_65_ktd,\n"
                    ".pixels = char_65_pixels_" + r + "\n};\n\n\n";
    }
    EXPECT_EQ(Captured([&](OutputWriter& out) {
                  out.Write("#include <my_font.h>\n\n");
                  WriteKerningTables(out, 65, {{86, -1}});
                  TurnedImages images;
                  TurnGlyph(bitmap, images);
                  WritePixelArrays(out, 65, images);
                  WriteCharRecords(out, 65, glyph, true);
              }),
              expected);
}

// A glyph without columns: its rows are bare line feeds, and turned it has no lines.
TEST(WritersTest, EmptyWidthBitmap)
{
    std::vector<unsigned char> pixels(8, 0xAB);
    const FT_Bitmap bitmap = GreyBitmap(0, 2, pixels);
    TurnedImages images;
    TurnGlyph(bitmap, images);
    EXPECT_EQ(Captured([&](OutputWriter& out) { WritePixelArrays(out, 65, images); }),
              "static const uint8_t char_65_pixels_0[] = {\n\n\n};\n\n"
              "static const uint8_t char_65_pixels_90[] = {\n};\n\n"
              "static const uint8_t char_65_pixels_180[] = {\n\n\n};\n\n"
              "static const uint8_t char_65_pixels_270[] = {\n};\n\n");
}

TEST(WritersTest, KerningTables)
{
    // The previous character is written unsigned, the delta signed, over their whole range.
    EXPECT_EQ(Captured([](OutputWriter& out) { WriteKerningTables(out, 7, {{char(200), -128}, {127, 127}}); }),
              "static const char char_7_ktp[] = {200, 127, 0};\n"
              "static const int8_t char_7_ktd[] = {-128, 127, 0};\n");

    // Pairs with every listed code in list order, itself included; beyond the 8-bit delta
    // the kerning is clamped.
    FTFont font;
    font.LoadFace(kDejaVuSans);
    const CharCodeList codes = {86, 65};
    using Pairs = std::vector<std::pair<int, int>>; // (previous as unsigned, delta)
    for (auto [height, expected] :
         {std::pair<unsigned, Pairs>{40, {{86, -3}, {65, 1}}}, {8000, {{86, -128}, {65, 127}}}}) {
        font.SetPixelSize(height);
        Pairs found;
        for (const KerningPair& pair : CollectKerningPairs(&font, &codes, 65))
            found.emplace_back(static_cast<unsigned char>(pair.prev), pair.delta);
        EXPECT_EQ(found, expected) << height << " px";
    }
}

TEST(WritersTest, FontRecords)
{
    // 26.6 metrics divided by 64 toward zero: the descender of -288 (-4.5 px) is -4.
    CharTable table{};
    table[86] = table[65] = true;
    std::string expected;
    for (const char* r : {"0", "90", "180", "270"}) {
        expected += std::string("\n\nconst ds_bitmap_font_t font_my_font_") + r + " = {\n" +
                    ".height = 19,\n.ascender = 15,\n.descender = -4,\n.chars = {\n" + Repeated(65, "nullptr,\n") +
                    "&char_65_" + r + ",\n" + Repeated(20, "nullptr,\n") + "&char_86_" + r + ",\n" +
                    Repeated(169, "nullptr,\n") + "}\n};\n";
    }
    auto records = [](LineMetrics metrics, const CharTable& written) {
        return Captured([&](OutputWriter& out) { WriteFontRecords(out, "my_font", ToRecordMetrics(metrics), written); });
    };
    EXPECT_EQ(records({1216, 960, -288}, table), expected);
    EXPECT_NE(records({1215, 1023, -63}, {}).find(".height = 18,\n.ascender = 15,\n.descender = 0,\n"),
              std::string::npos);
}

TEST(WritersTest, HeaderReplacesWhatWasThere)
{
    TempDir dir;
    const std::string path = dir.Prefix() + "font.h";
    // Written one after the other into the same file, longest first.
    for (auto [name, guard] : {std::pair<std::string, std::string>{"My_Font_2", "MY_FONT_2"},
                               {"my_font", "MY_FONT"},
                               {"8x8", "8X8"},
                               {"", ""}}) {
        ASSERT_TRUE(WriteFontHeader(path, name));
        std::string expected =
            "#ifndef _FONT_" + guard + "_H\n#define _FONT_" + guard + "_H\n\n#include <ds_font.h>\n\n";
        for (const char* r : {"0", "90", "180", "270"})
            expected += "extern const ds_bitmap_font_t font_" + name + "_" + r + ";\n";
        EXPECT_EQ(ReadFile(path), expected + "\n#endif\n");
    }
}
