#include "export/pixel_arrays.h"

namespace {

void WriteArrayStart(OutputWriter& out, unsigned int code, unsigned int rotation)
{
    out.Write("static const uint8_t char_");
    out.WriteUnsigned(code);
    out.Write("_pixels_");
    out.WriteUnsigned(rotation);
    out.Write("[] = {\n");
}

} // namespace

void WritePixelArrays(OutputWriter& out, unsigned int code, const FT_Bitmap& bitmap)
{
    // The turned images are read straight from the glyph's buffer; nothing is copied.
    const unsigned rows = bitmap.rows;
    const unsigned width = bitmap.width;
    const size_t pitch = static_cast<size_t>(bitmap.pitch);
    const unsigned char* pixels = bitmap.buffer;
    auto at = [&](unsigned r, unsigned c) { return pixels[r * pitch + c]; };

    WriteArrayStart(out, code, 0);
    for (unsigned r = 0; r < rows; ++r) {
        const unsigned char* row = pixels + r * pitch;
        for (unsigned c = 0; c < width; ++c)
            out.WriteHexByte(row[c]);
        out.WriteChar('\n');
    }
    out.Write("};\n\n");

    // Quarter turn anticlockwise: the rightmost column becomes the top line.
    WriteArrayStart(out, code, 90);
    for (unsigned c = width; c-- > 0;) {
        for (unsigned r = 0; r < rows; ++r)
            out.WriteHexByte(at(r, c));
        out.WriteChar('\n');
    }
    out.Write("};\n\n");

    WriteArrayStart(out, code, 180);
    for (unsigned r = rows; r-- > 0;) {
        const unsigned char* row = pixels + r * pitch;
        for (unsigned c = width; c-- > 0;)
            out.WriteHexByte(row[c]);
        out.WriteChar('\n');
    }
    out.Write("};\n\n");

    // Quarter turn clockwise: the leftmost column, read bottom-up, becomes the top line.
    WriteArrayStart(out, code, 270);
    for (unsigned c = 0; c < width; ++c) {
        for (unsigned r = rows; r-- > 0;)
            out.WriteHexByte(at(r, c));
        out.WriteChar('\n');
    }
    out.Write("};\n\n");
}
