#include "export/pixel_arrays.h"

#include "export_test_support.h"

#include <gtest/gtest.h>

namespace {

std::string Arrays(unsigned width, unsigned rows, int pitch, std::vector<unsigned char> pixels)
{
    FT_Bitmap bitmap = GreyBitmap(width, rows, pitch, pixels);
    return Captured([&](OutputWriter& out) { WritePixelArrays(out, 65, bitmap); });
}

std::string Array(unsigned rotation, const std::string& lines)
{
    return "static const uint8_t char_65_pixels_" + std::to_string(rotation) + "[] = {\n" + lines + "};\n\n";
}

} // namespace

TEST(PixelArraysTest, TurnsA3By2GlyphAndSkipsPitchPadding)
{
    // The fourth byte of each row is padding up to the pitch and appears nowhere.
    const std::string text = Arrays(3, 2, 4, {0x00, 0x80, 0xFF, 0xEE, 0x10, 0x20, 0x30, 0xEE});
    EXPECT_EQ(text, Array(0, "0x00, 0x80, 0xFF, \n0x10, 0x20, 0x30, \n") +
                        Array(90, "0xFF, 0x30, \n0x80, 0x20, \n0x00, 0x10, \n") +
                        Array(180, "0x30, 0x20, 0x10, \n0xFF, 0x80, 0x00, \n") +
                        Array(270, "0x10, 0x00, \n0x20, 0x80, \n0x30, 0xFF, \n"));
}

TEST(PixelArraysTest, DegenerateSizes)
{
    struct Case
    {
        unsigned width, rows;
        std::string lines0, lines90; // 180 and 270 have as many lines as 0 and 90
    };
    const Case cases[] = {
        {1, 1, "0xAB, \n", "0xAB, \n"},
        {0, 2, "\n\n", ""},   // empty rows are bare line feeds; no columns, no lines
        {3, 0, "", "\n\n\n"}, // and the other way round
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.width) + "x" + std::to_string(c.rows));
        EXPECT_EQ(Arrays(c.width, c.rows, 4, {0xAB, 0, 0, 0}),
                  Array(0, c.lines0) + Array(90, c.lines90) + Array(180, c.lines0) + Array(270, c.lines90));
    }
}
