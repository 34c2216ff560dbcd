#include "export/pixel_arrays.h"

#include <cstddef>

namespace {

// How one turned image is read from the glyph's buffer: the offset of its first value,
// the step to the next value of a line and to the first value of the next line.
struct Traversal
{
    unsigned rotation;
    ptrdiff_t start;
    unsigned lines;
    unsigned valuesPerLine;
    ptrdiff_t valueStep;
    ptrdiff_t lineStep;
};

void WriteArray(OutputWriter& out, unsigned int code, const unsigned char* pixels, const Traversal& t)
{
    out.Write("static const uint8_t char_");
    out.WriteUnsigned(code);
    out.Write("_pixels_");
    out.WriteUnsigned(t.rotation);
    out.Write("[] = {\n");

    ptrdiff_t lineStart = t.start;
    for (unsigned line = 0; line < t.lines; ++line, lineStart += t.lineStep) {
        ptrdiff_t at = lineStart;
        // A whole line is formatted in place; only a line longer than the writer's
        // buffer goes value by value.
        if (char* p = out.Reserve(t.valuesPerLine * OutputWriter::kHexText + 1)) {
            for (unsigned i = 0; i < t.valuesPerLine; ++i, at += t.valueStep)
                p = OutputWriter::PutHex(p, pixels[at]);
            *p++ = '\n';
            out.Commit(p);
        } else {
            for (unsigned i = 0; i < t.valuesPerLine; ++i, at += t.valueStep)
                out.WriteHexByte(pixels[at]);
            out.WriteChar('\n');
        }
    }
    out.Write("};\n\n");
}

} // namespace

void WritePixelArrays(OutputWriter& out, unsigned int code, const FT_Bitmap& bitmap)
{
    // The turned images are read straight from the glyph's buffer; nothing is copied.
    const ptrdiff_t rows = bitmap.rows;
    const ptrdiff_t width = bitmap.width;
    const ptrdiff_t pitch = bitmap.pitch;
    const ptrdiff_t lastRow = (rows - 1) * pitch;
    const Traversal traversals[] = {
        // As rendered: rows top-down, each left to right.
        {0, 0, bitmap.rows, bitmap.width, 1, pitch},
        // Quarter turn anticlockwise: columns right to left, each top-down.
        {90, width - 1, bitmap.width, bitmap.rows, pitch, -1},
        // Half turn: rows bottom-up, each right to left.
        {180, lastRow + width - 1, bitmap.rows, bitmap.width, -1, -pitch},
        // Quarter turn clockwise: columns left to right, each bottom-up.
        {270, lastRow, bitmap.width, bitmap.rows, -pitch, 1},
    };
    for (const Traversal& t : traversals)
        WriteArray(out, code, bitmap.buffer, t);
}
