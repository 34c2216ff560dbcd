#include "raster/bitmap_convert.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct ConvertCase
{
    std::string name;
    unsigned char mode;
    unsigned short grays;
    unsigned width, rows;
    int pitch;
    std::vector<unsigned char> stored;
    std::vector<uint8_t> expected; // rows top-down, no padding
    bool readableAsIs;
};

TEST(BitmapConvert, GivesEightBitCoverageWithPitchEqualToWidth)
{
    const ConvertCase cases[] = {
        // Ten columns cross a byte; the first byte's bits run from the high end.
        {"mono", FT_PIXEL_MODE_MONO, 2, 10, 2, 2, {0xA0, 0x40, 0xFF, 0xC0},
         {0xFF, 0, 0xFF, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, false},
        {"mono ignores row padding", FT_PIXEL_MODE_MONO, 2, 3, 1, 4, {0x60, 0xFF, 0xFF, 0xFF}, {0, 0xFF, 0xFF}, false},
        {"gray2 levels", FT_PIXEL_MODE_GRAY2, 4, 5, 1, 2, {0x1B, 0x80}, {0, 85, 170, 255, 170}, false},
        {"gray4 levels", FT_PIXEL_MODE_GRAY4, 16, 3, 1, 2, {0x0F, 0x70}, {0, 255, 119}, false},
        {"bgra takes alpha", FT_PIXEL_MODE_BGRA, 256, 2, 1, 8, {10, 20, 30, 0, 1, 2, 3, 200}, {0, 200}, false},
        // A negative pitch stores the bottom row first.
        {"gray bottom-up", FT_PIXEL_MODE_GRAY, 256, 2, 2, -2, {1, 2, 3, 4}, {3, 4, 1, 2}, false},
        {"gray with five levels", FT_PIXEL_MODE_GRAY, 5, 3, 1, 3, {0, 2, 4}, {0, 127, 255}, false},
        {"gray drops padding", FT_PIXEL_MODE_GRAY, 256, 2, 1, 4, {7, 8, 9, 9}, {7, 8}, true},
        {"gray", FT_PIXEL_MODE_GRAY, 256, 2, 1, 2, {7, 8}, {7, 8}, true},
        {"empty", FT_PIXEL_MODE_MONO, 2, 0, 0, 0, {}, {}, true},
    };
    for (const ConvertCase& c : cases) {
        std::vector<unsigned char> stored = c.stored;
        FT_Bitmap source{};
        source.rows = c.rows;
        source.width = c.width;
        source.pitch = c.pitch;
        source.buffer = stored.empty() ? nullptr : stored.data();
        source.num_grays = c.grays;
        source.pixel_mode = c.mode;
        EXPECT_EQ(IsGrayCoverage(source), c.readableAsIs) << c.name;

        std::vector<uint8_t> pixels{1, 2, 3};
        const FT_Bitmap converted = ConvertToGrayCoverage(source, pixels);
        EXPECT_EQ(pixels, c.expected) << c.name;
        EXPECT_EQ(converted.buffer, c.expected.empty() ? nullptr : pixels.data()) << c.name;
        EXPECT_EQ(converted.pixel_mode, FT_PIXEL_MODE_GRAY) << c.name;
        EXPECT_EQ(converted.num_grays, 256) << c.name;
        EXPECT_EQ(converted.width, c.width) << c.name;
        EXPECT_EQ(converted.rows, c.rows) << c.name;
        EXPECT_EQ(converted.pitch, static_cast<int>(c.width)) << c.name;
    }
}

} // namespace
