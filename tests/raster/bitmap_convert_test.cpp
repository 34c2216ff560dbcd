#include "raster/bitmap_convert.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
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
};

const std::vector<ConvertCase> kCases = {
    // Ten columns cross a byte; the first byte's bits run from the high end.
    {"mono", FT_PIXEL_MODE_MONO, 2, 10, 2, 2, {0xA0, 0x40, 0xFF, 0xC0},
     {0xFF, 0, 0xFF, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
    {"mono ignores row padding", FT_PIXEL_MODE_MONO, 2, 3, 1, 4, {0x60, 0xFF, 0xFF, 0xFF}, {0, 0xFF, 0xFF}},
    {"gray2 levels", FT_PIXEL_MODE_GRAY2, 4, 5, 1, 2, {0x1B, 0x80}, {0, 85, 170, 255, 170}},
    {"gray4 levels", FT_PIXEL_MODE_GRAY4, 16, 3, 1, 2, {0x0F, 0x70}, {0, 255, 119}},
    {"bgra takes alpha", FT_PIXEL_MODE_BGRA, 256, 2, 1, 8, {10, 20, 30, 0, 1, 2, 3, 200}, {0, 200}},
    // A negative pitch stores the bottom row first.
    {"gray bottom-up", FT_PIXEL_MODE_GRAY, 256, 2, 2, -2, {1, 2, 3, 4}, {3, 4, 1, 2}},
    {"gray with five levels", FT_PIXEL_MODE_GRAY, 5, 3, 1, 3, {0, 2, 4}, {0, 127, 255}},
    {"gray drops padding", FT_PIXEL_MODE_GRAY, 256, 2, 1, 4, {7, 8, 9, 9}, {7, 8}},
};

FT_Bitmap BitmapOf(const ConvertCase& c, std::vector<unsigned char>& stored)
{
    FT_Bitmap bitmap{};
    bitmap.rows = c.rows;
    bitmap.width = c.width;
    bitmap.pitch = c.pitch;
    bitmap.buffer = stored.data();
    bitmap.num_grays = c.grays;
    bitmap.pixel_mode = c.mode;
    return bitmap;
}

TEST(BitmapConvert, GivesEightBitCoverageWithPitchEqualToWidth)
{
    for (const ConvertCase& c : kCases) {
        std::vector<unsigned char> stored = c.stored;
        std::vector<uint8_t> pixels;
        FT_Bitmap converted = ConvertToGrayCoverage(BitmapOf(c, stored), pixels);

        EXPECT_EQ(converted.pixel_mode, FT_PIXEL_MODE_GRAY) << c.name;
        EXPECT_EQ(converted.num_grays, 256) << c.name;
        EXPECT_EQ(converted.width, c.width) << c.name;
        EXPECT_EQ(converted.rows, c.rows) << c.name;
        EXPECT_EQ(converted.pitch, static_cast<int>(c.width)) << c.name;
        EXPECT_EQ(converted.buffer, pixels.data()) << c.name;
        EXPECT_EQ(pixels, c.expected) << c.name;
        EXPECT_TRUE(IsGrayCoverage(converted)) << c.name;
    }
}

TEST(BitmapConvert, OnlyTopDownEightBitGrayNeedsNoConversion)
{
    std::vector<unsigned char> stored(16);
    const std::pair<ConvertCase, bool> cases[] = {
        {{"gray", FT_PIXEL_MODE_GRAY, 256, 2, 2, 4, {}, {}}, true},
        {{"gray bottom-up", FT_PIXEL_MODE_GRAY, 256, 2, 2, -2, {}, {}}, false},
        {{"gray five levels", FT_PIXEL_MODE_GRAY, 5, 2, 2, 2, {}, {}}, false},
        {{"mono", FT_PIXEL_MODE_MONO, 2, 2, 2, 1, {}, {}}, false},
        {{"bgra", FT_PIXEL_MODE_BGRA, 256, 2, 2, 8, {}, {}}, false},
    };
    for (const auto& [c, expected] : cases)
        EXPECT_EQ(IsGrayCoverage(BitmapOf(c, stored)), expected) << c.name;
}

TEST(BitmapConvert, EmptyBitmapStaysEmpty)
{
    FT_Bitmap empty{};
    empty.pixel_mode = FT_PIXEL_MODE_MONO;
    EXPECT_TRUE(IsGrayCoverage(empty)); // no buffer, nothing to read
    std::vector<uint8_t> pixels{1, 2, 3};
    FT_Bitmap converted = ConvertToGrayCoverage(empty, pixels);
    EXPECT_TRUE(pixels.empty());
    EXPECT_EQ(converted.width, 0u);
    EXPECT_EQ(converted.rows, 0u);
    EXPECT_EQ(converted.buffer, nullptr);
}

} // namespace
