// The writers' texts from synthetic glyphs, where a real font cannot give the values.

#include "export/ds/char_records.h"
#include "export/ds/font_records.h"
#include "export/ds/kerning_tables.h"
#include "export/ds/pixel_arrays.h"
#include "export/files/in_place_file.h"
#include "export/files/output_writer.h"
#include "export/kerning/legacy_kerning.h"

#include "test_support.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

// What a writer function puts out, as one string.
std::string Captured(const std::function<void(OutputWriter&)>& write)
{
    TempDir dir;
    InPlaceFile file(dir.Prefix() + "captured");
    file.Open();
    {
        OutputWriter out(file);
        write(out);
    }
    file.Close();
    return ReadFile(dir.Path() / "captured");
}

// Character 65 of the list 65, 86, where V before A kerns by -1: a 3x2 bitmap with pitch 4
// (the fourth byte of a row is padding and appears nowhere), left 1, top 2, advance 5.
TEST(WritersTest, WorkedExampleOfACharacterSection)
{
    std::vector<unsigned char> pixels = {0x00, 0x80, 0xFF, 0x55, 0x10, 0x20, 0x30, 0x55};
    const FT_Bitmap bitmap{.rows = 2,
                           .width = 3,
                           .pitch = 4,
                           .buffer = pixels.data(),
                           .num_grays = 256,
                           .pixel_mode = FT_PIXEL_MODE_GRAY,
                           .palette_mode = 0,
                           .palette = nullptr};
    const FTGlyph glyph{&bitmap, 1, 2, 5, 0};
    EXPECT_EQ(Captured([&](OutputWriter& out) {
                  out.Write("#include <my_font.h>\n\n");
                  WriteKerningTables(out, 65, {{86, -1}});
                  WritePixelArrays(out, 65, bitmap);
                  WriteCharRecords(out, 65, glyph, true);
              }),
              ReadFile(VELTRANE_EXPECTED_DIR "/worked_example.cpp"));
}

TEST(WritersTest, KerningTables)
{
    // The previous character is written unsigned (or, portably, as a literal from 128 on),
    // the delta signed, over their whole range.
    const std::vector<KerningPair> edges = {{200, -128}, {127, 127}, {128, 0}, {255, 1}};
    EXPECT_EQ(Captured([&](OutputWriter& out) { WriteKerningTables(out, 7, edges); }),
              "static const char char_7_ktp[] = {200, 127, 128, 255, 0};\n"
              "static const int8_t char_7_ktd[] = {-128, 127, 0, 1, 0};\n");
    EXPECT_EQ(Captured([&](OutputWriter& out) { WriteKerningTables(out, 7, edges, PrevCharStyle::CharLiteral); }),
              "static const char char_7_ktp[] = {'\\xC8', 127, '\\x80', '\\xFF', 0};\n"
              "static const int8_t char_7_ktd[] = {-128, 127, 0, 1, 0};\n");

    // Pairs with every listed code in list order, itself included; beyond the 8-bit delta
    // the kerning is clamped.
    FTFont font;
    font.LoadFace(kDejaVuSans.c_str());
    const CharCodeList codes = {86, 65};
    using Pairs = std::vector<std::pair<int, int>>; // (previous as unsigned, delta)
    for (auto [height, expected] :
         {std::pair<unsigned, Pairs>{40, {{86, -3}, {65, 1}}}, {8000, {{86, -128}, {65, 127}}}}) {
        font.SetPixelSize(height);
        Pairs found;
        for (const KerningPair& pair : CollectKerningPairs(&font, &codes, 65))
            found.emplace_back(pair.prev, pair.delta);
        EXPECT_EQ(found, expected) << height << " px";
    }
}

// 26.6 metrics divided by 64 toward zero: a descender of -288 (-4.5 px) is -4, not -5.
TEST(WritersTest, FontRecordMetrics)
{
    const FontRecordMetrics metrics = ToRecordMetrics({1216, 1023, -288});
    EXPECT_EQ(std::vector<long>({long(metrics.height), metrics.ascender, metrics.descender}),
              std::vector<long>({19, 15, -4}));
}

} // namespace
