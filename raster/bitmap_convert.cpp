#include "raster/bitmap_convert.h"

namespace {

// Reads pixel (row, column) of a packed bitmap and returns its coverage 0..255.
uint8_t CoverageAt(const FT_Bitmap& bitmap, const unsigned char* row, unsigned column)
{
    switch (bitmap.pixel_mode) {
    case FT_PIXEL_MODE_MONO:
        return (row[column >> 3] & (0x80 >> (column & 7))) ? 0xFF : 0x00;
    case FT_PIXEL_MODE_GRAY2: {
        unsigned level = (row[column >> 2] >> (6 - 2 * (column & 3))) & 0x3;
        return static_cast<uint8_t>(level * 255 / 3);
    }
    case FT_PIXEL_MODE_GRAY4: {
        unsigned level = (row[column >> 1] >> (4 - 4 * (column & 1))) & 0xF;
        return static_cast<uint8_t>(level * 255 / 15);
    }
    case FT_PIXEL_MODE_GRAY: {
        unsigned levels = bitmap.num_grays > 1 ? bitmap.num_grays - 1 : 255;
        unsigned value = row[column] > levels ? levels : row[column];
        return static_cast<uint8_t>(value * 255 / levels);
    }
    case FT_PIXEL_MODE_BGRA:
        return row[column * 4 + 3];
    default:
        return 0;
    }
}

} // namespace

bool IsGrayCoverage(const FT_Bitmap& bitmap)
{
    return bitmap.buffer == nullptr ||
           (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY && bitmap.num_grays == 256 && bitmap.pitch > 0);
}

FT_Bitmap ConvertToGrayCoverage(const FT_Bitmap& source, std::vector<uint8_t>& pixels)
{
    FT_Bitmap target = source;
    target.pixel_mode = FT_PIXEL_MODE_GRAY;
    target.num_grays = 256;
    target.pitch = static_cast<int>(source.width);
    pixels.assign(static_cast<size_t>(source.rows) * source.width, 0);
    // A zero-sized bitmap keeps its (never read) source buffer, so "has a buffer" is kept.
    target.buffer = pixels.empty() ? source.buffer : pixels.data();

    // A negative pitch means the rows are stored bottom-up, starting at the buffer.
    const int pitch = source.pitch;
    const unsigned magnitude = static_cast<unsigned>(pitch < 0 ? -pitch : pitch);
    for (unsigned r = 0; r < source.rows; ++r) {
        unsigned stored = pitch < 0 ? source.rows - 1 - r : r;
        const unsigned char* row = source.buffer + static_cast<size_t>(stored) * magnitude;
        uint8_t* out = pixels.data() + static_cast<size_t>(r) * source.width;
        for (unsigned c = 0; c < source.width; ++c)
            out[c] = CoverageAt(source, row, c);
    }
    return target;
}
