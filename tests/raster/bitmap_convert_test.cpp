#include "raster/bitmap_convert.h"

#include <gtest/gtest.h>

#include <vector>

TEST(BitmapConvert, GivesEightBitCoverageWithPitchEqualToWidth)
{
    // clang-format off
    const struct {
        const char* name;
        unsigned char mode;
        unsigned short grays;
        unsigned width, rows;
        int pitch;
        std::vector<unsigned char> stored;
        std::vector<uint8_t> expected; // rows top-down, no padding
        bool readableAsIs;
    } rows[] = {
        // Ten columns cross a byte; the first byte's bits run from the high end; padding ignored.
        {"mono", FT_PIXEL_MODE_MONO, 2, 10, 2, 3, {0xA0, 0x40, 0xFF, 0xFF, 0xC0, 0xFF},
         {0xFF, 0, 0xFF, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, false},
        {"gray2", FT_PIXEL_MODE_GRAY2, 4, 5, 1, 2, {0x1B, 0x80}, {0, 85, 170, 255, 170}, false},
        {"gray4", FT_PIXEL_MODE_GRAY4, 16, 3, 1, 2, {0x0F, 0x70}, {0, 255, 119}, false},
        {"bgra takes alpha", FT_PIXEL_MODE_BGRA, 256, 2, 1, 8, {10, 20, 30, 0, 1, 2, 3, 200}, {0, 200}, false},
        {"gray bottom-up", FT_PIXEL_MODE_GRAY, 256, 2, 2, -2, {1, 2, 3, 4}, {3, 4, 1, 2}, false},
        {"gray with five levels", FT_PIXEL_MODE_GRAY, 5, 3, 1, 3, {0, 2, 4}, {0, 127, 255}, false},
        {"gray drops padding", FT_PIXEL_MODE_GRAY, 256, 2, 1, 4, {7, 8, 9, 9}, {7, 8}, true},
    };
    // clang-format on
    for (const auto& row : rows) {
        std::vector<unsigned char> stored = row.stored;
        FT_Bitmap source{};
        source.rows = row.rows;
        source.width = row.width;
        source.pitch = row.pitch;
        source.buffer = stored.data();
        source.num_grays = row.grays;
        source.pixel_mode = row.mode;
        EXPECT_EQ(IsGrayCoverage(source), row.readableAsIs) << row.name;

        std::vector<uint8_t> pixels{1, 2, 3};
        const FT_Bitmap converted = ConvertToGrayCoverage(source, pixels);
        EXPECT_EQ(pixels, row.expected) << row.name;
        EXPECT_EQ(converted.buffer, pixels.data()) << row.name;
        EXPECT_EQ(std::vector<int>({converted.pixel_mode, converted.num_grays, int(converted.width),
                                    int(converted.rows), converted.pitch}),
                  std::vector<int>({FT_PIXEL_MODE_GRAY, 256, int(row.width), int(row.rows), int(row.width)}))
            << row.name;
    }
}
